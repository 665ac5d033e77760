// What the dialogs of all kinds of connections do alike: test, preview, check and store.

#include "pages/frmConnection.h"

#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/modConnections.h"

namespace LF2000 {

namespace {

/// "0.2 s"
std::string SecondsText(std::int64_t milliseconds) {
  const std::int64_t tenths = (milliseconds + 50) / 100;
  if (tenths == 0) return "less than 0.1 s";
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
}

}  // namespace

frmConnection::frmConnection(std::string name, std::string caption,
                             std::shared_ptr<clsPresentation> presentation,
                             std::shared_ptr<clsConnection> edited, Stored stored)
    : frmPage(std::move(name), std::move(caption), Forms::Placement::Dialog, std::move(presentation),
              Forms::Width::Wide),
      txtDescription_(Add<Forms::TextBox>("txtDescription")),
      edited_(std::move(edited)),
      stored_(std::move(stored)) {
  AddRow("&Description", {&txtDescription_});
  txtDescription_.Change = [this] { hasOwnDescription_ = true; };
  if (!edited_) return;
  hasOwnDescription_ = true;
  txtDescription_.Text(edited_->ConnectionDescription());
  Subject(edited_->ConnectionTagNumber() + " " + edited_->ConnectionDescription());
}

void frmConnection::OpenAndLook(bool isFilledIn) {
  Show(Forms::Placement::Dialog, [this](Forms::Result) {
    Abandon(test_);
    EndTrials();
  });
  if (isFilledIn) Focus(*Find("cmdOK"));
  Update([this] { Look(); });
}

void frmConnection::Abandon(std::shared_ptr<ConnectionTrial>& trial) {
  if (trial) trial->Abandon();
  trial.reset();
}

void frmConnection::AddPreview() {
  cmdTest_ = &Add<Forms::CommandButton>("cmdTest", "&Test");
  lblTest_ = &Add<Forms::Label>("lblTest");
  grdPreview_ = &Add<Forms::Grid>("grdPreview");
  cmdTest_->Click = [this] { Test(); };
  AddRow("", {cmdTest_, lblTest_});
  AddRow("", {grdPreview_});
  AddOKCancel();
}

std::shared_ptr<clsConnection> frmConnection::Described() const {
  auto connection = std::make_shared<clsConnection>();
  connection->ActivePresentationName(Presentation()->ActivePresentation()->FullName());
  connection->ConnectionDescription(std::string(basic::Trim(txtDescription_.Text())));
  Describe(*connection);
  return connection;
}

void frmConnection::NoteChange() {
  if (!isResultCurrent_) return;
  isResultCurrent_ = false;
  lblTest_->Text(lblTest_->Text() + " (settings changed since)");
  grdPreview_->Enabled(false, "The settings have changed since.");
}

void frmConnection::ShowRows(const TrialResult& result, const std::vector<std::string>& notes) {
  Forms::Items columns;
  for (std::size_t i = 0; i < result.Columns.size(); ++i) {
    columns.push_back({result.Columns[i], i < notes.size() ? notes[i] : std::string()});
  }
  grdPreview_->Columns(std::move(columns));
  grdPreview_->Rows({1, result.Rows});
  grdPreview_->Total(result.RowCount);
  grdPreview_->Enabled(true);
}

void frmConnection::ClearRows() {
  grdPreview_->Columns({});
  grdPreview_->Rows({});
  grdPreview_->Total(0);
}

std::shared_ptr<ConnectionTrial> frmConnection::NewTrial() {
  return std::make_shared<ConnectionTrial>(Described());
}

void frmConnection::StartTrial(const std::shared_ptr<ConnectionTrial>& trial,
                               std::function<void(const TrialResult&)> ended) {
  trial->Start([this, weak = weak_from_this(), ended = std::move(ended)](const TrialResult& result) {
    const auto form = weak.lock();
    if (form && IsShown()) Update([&] { ended(result); });
  });
}

void frmConnection::Test() {
  if (test_ && test_->IsRunning()) return test_->Cancel();
  if (!CheckForTest()) return;
  const auto test = NewTrial();
  test_ = test;
  isResultCurrent_ = false;
  lblTest_->Text("");
  cmdTest_->Caption("Cancel");
  test->Progress([this, weak = weak_from_this()](const std::string& text) {
    if (const auto form = weak.lock()) lblTest_->Text(text);
  });
  StartTrial(test, [this](const TrialResult& result) { ShowTestResult(result); });
}

void frmConnection::ShowTestResult(const TrialResult& result) {
  cmdTest_->Caption("&Test");
  isResultCurrent_ = true;
  if (!result.Failure.empty()) {
    ClearRows();
    return lblTest_->Text(result.Failure, Forms::Severity::Error);
  }
  ShowRows(result);
  std::string text =
      "Read " + RowsText(result) + ", " + ColumnsText(result) + " in " + SecondsText(result.Milliseconds);
  std::vector<std::string> missing;
  if (edited_) {
    const auto uses = modConnections::UsesOf(*Presentation(), edited_->ConnectionTagNumber());
    missing = modConnections::MissingColumns(uses, test_->Connection());
  }
  for (const std::string& column : missing)
    text += "\nThere is no column '" + column + "', which shapes show.";
  for (const std::string& remark : result.Remarks) text += "\n" + remark;
  lblTest_->Text(text, missing.empty() ? Forms::Severity::Ok : Forms::Severity::Warning);
}

void frmConnection::SuggestDescription(std::string_view name) {
  if (!hasOwnDescription_) txtDescription_.Text(basic::Replace(name, "\t", " "));
}

void frmConnection::SuggestFileDescription(std::string_view path) {
  const std::size_t name = path.find_last_of("/\\") + 1;
  const std::size_t dot = path.rfind('.');
  SuggestDescription(
      path.substr(name, dot == std::string_view::npos || dot <= name ? std::string_view::npos : dot - name));
}

bool frmConnection::Require(Forms::Control& control, const std::string& text,
                            std::string_view whatIsMissing) {
  if (basic::Trim(text).empty()) {
    Complain(control, whatIsMissing);
  } else if (text.find('\t') != std::string::npos) {
    Complain(control, "What is stored in a presentation cannot hold a TAB.");
  } else {
    return true;
  }
  Focus(control);
  return false;
}

bool frmConnection::CheckDescription() {
  return Require(txtDescription_, txtDescription_.Text(), "Give the connection a description.");
}

bool frmConnection::CheckFile(Forms::TextBox& control) {
  if (!Require(control, control.Text(), "Say which file holds the data.")) return false;
  const auto described = Described();
  if (control.Text() == missingFile_) return true;
  try {
    static_cast<void>(host::Current().files->FileDateTime(described->ResolvedFile()));
    return true;
  } catch (const basic::Error& error) {
    missingFile_ = control.Text();
    const std::string why = modErrors::ForEverybody(error.description);
    Complain(control, why + (why.ends_with('.') ? "" : ".") +
                          " Mend the path, or press OK again to keep it all the same.");
    Focus(control);
    return false;
  }
}

void frmConnection::Browse(Forms::TextBox& control, std::string_view title,
                           const std::vector<Forms::FileKind>& kinds) {
  View().ChooseFile(
      *this, title, kinds, [this, &control, weak = weak_from_this()](const std::optional<std::string>& path) {
        const auto form = weak.lock();
        if (!form || !IsShown() || !path) return;
        Raise(Forms::Event{
            control.Name(), Forms::EventKind::Change,
            modGlobalFunctions::ShortenPath(*path, Presentation()->ActivePresentation()->FullName())});
      });
}

bool frmConnection::Apply() {
  if (!CheckDescription() || !Check()) return false;
  const auto described = Described();
  std::string number;
  if (edited_) {
    number = edited_->ConnectionTagNumber();
    modConnections::Change(*Presentation(), number, described);
  } else {
    number = modConnections::Add(*Presentation(), described);
  }
  if (stored_) stored_(number);
  return true;
}

}  // namespace LF2000
