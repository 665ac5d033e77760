// The files that a column names: which ones result, and which are not there.

#include "pages/frmDataObject.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modJobs.h"
#include "basic/Counted.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "connections/DisplayTypes.h"
#include "model/modLinkedFiles.h"

namespace LF2000 {

namespace {

constexpr std::array Extensions = {"png", "jpg", "jpeg", "svg", "gif", "bmp", "tif", "emf", "wmf"};
/// More rows than these are not looked through.
constexpr std::int64_t MostRowsLookedAt = 1000;
constexpr std::size_t MostListed = 100;
/// Enough to tell of which kind the files are.
constexpr std::int64_t MostRowsTried = 20;

std::string NameIn(clsConnection& connection, double row, const std::string& column,
                   const std::string& folder, const std::string& extension) {
  bool noValue = true;
  std::string name = connection.GetValueObject(row, column, folder, extension, DisplayValue,
                                               /*showMarkers=*/false, noValue);
  return noValue ? std::string() : name;
}

/// What lies in the presentation's folder is named from there, so that both can be moved.
std::string FromPresentation(const std::string& folder, const std::string& presentation) {
  const std::size_t end = presentation.find_last_of("/\\");
  if (end == std::string::npos) return folder;
  const std::string own = presentation.substr(0, end + 1);
  return basic::StartsWith(folder, own) ? folder.substr(own.size()) : folder;
}

}  // namespace

frmDataObject::frmDataObject(Forms::Placement placement, std::shared_ptr<clsPresentation> presentation,
                             modSelected::Selected selected)
    : frmValuePage("frmDataObject", "Picture or object", placement, std::move(presentation),
                   std::move(selected), SourceType::LinkedObject),
      txtFolder_(Add<Forms::TextBox>("txtFolder")),
      cmdBrowse_(Add<Forms::CommandButton>("cmdBrowse", "Bro&wse…")),
      cmbExtension_(Add<Forms::ComboBox>("cmbExtension", true)),
      picNow_(Add<Forms::Picture>("picNow")),
      lblFile_(Add<Forms::Label>("lblFile")),
      lblMissing_(Add<Forms::Label>("lblMissing")),
      grdFiles_(Add<Forms::Grid>("grdFiles")) {
  txtFolder_.Placeholder("beside the presentation");
  txtFolder_.Change = [this] { txtFolder_Change(); };
  cmdBrowse_.Click = [this] { cmdBrowse_Click(); };
  cmbExtension_.Change = [this] { cmbExtension_Change(); };
  cmbExtension_.LostFocus = [this] { ShowAll(nullptr); };
  ShowExtensions({});
  grdFiles_.Columns({{"Row"}, {"File"}});

  AddSourceRows();
  AddRow("&Folder", {&txtFolder_, &cmdBrowse_});
  AddRow("&Extension", {&cmbExtension_});
  AddRow("File", {&lblFile_});
  AddRow("", {&picNow_});
  AddRow("", {&lblMissing_});
  AddRow("", {&grdFiles_});
  AddStateRows();
  AddOKCancel();
  Look();
}

void frmDataObject::ShowAll(const Forms::Control* typing) {
  frmValuePage::ShowAll(typing);
  if (&txtFolder_ != typing && txtFolder_.Problem().empty()) txtFolder_.Text(Common(&Draft::Folder));
  if (&cmbExtension_ != typing && cmbExtension_.Problem().empty()) {
    cmbExtension_.Text(Common(&Draft::Extension));
  }
}

void frmDataObject::FindExtensions(Answer& answer, clsConnection& connection, const Draft& draft,
                                   const std::string& presentation, const bool& isCancelled) {
  for (std::int64_t row = 1; row <= std::min(answer.Rows, MostRowsTried) && !isCancelled; ++row) {
    for (const char* extension : Extensions) {
      modGlobalFunctions::IgnoreErrors([&] {  // most are not there
        const std::string name =
            NameIn(connection, static_cast<double>(row), draft.Column, draft.Folder, extension);
        if (name.empty()) return;
        static_cast<void>(modLinkedFiles::FindFile(name, draft.Folder, presentation));
        ++answer.Extensions[extension];
      });
    }
  }
}

/// Those of the files that are there first, the commonest of them before the others.
void frmDataObject::ShowExtensions(const std::map<std::string, int>& found) {
  std::vector<std::pair<std::string, int>> there(found.begin(), found.end());
  std::stable_sort(there.begin(), there.end(),
                   [](const auto& one, const auto& other) { return one.second > other.second; });
  Forms::Items items;
  for (const auto& [extension, count] : there) items.push_back({extension, basic::Counted(count, "file")});
  for (const char* extension : Extensions) {
    if (!found.contains(extension)) items.push_back({extension});
  }
  cmbExtension_.Items(std::move(items));
}

void frmDataObject::ShowNow() {
  frmValuePage::ShowNow();
  AskForFiles();
}

void frmDataObject::txtFolder_Change() {
  if (txtFolder_.Text() == Various) return;
  if (txtFolder_.Text().find('\t') != std::string::npos) {
    return Complain(txtFolder_, "A folder's name holds no tab.");
  }
  for (Draft& draft : Drafts()) draft.Folder = txtFolder_.Text();
  Changed("Folder of " + ShapesName(), txtFolder_);
}

void frmDataObject::cmbExtension_Change() {
  const std::string& text = cmbExtension_.Text();
  if (text == Various) return;
  if (text.find_first_of("/\\\t") != std::string::npos) {
    return Complain(cmbExtension_, "An extension is what stands behind the point, such as jpg.");
  }
  // The point comes of itself.
  const std::string extension = text.substr(std::min(text.find_first_not_of('.'), text.size()));
  for (Draft& draft : Drafts()) draft.Extension = extension;
  Changed("Extension of " + ShapesName(), cmbExtension_);
}

void frmDataObject::cmdBrowse_Click() {
  View().ChooseFolder(
      *this, "Select a folder where the file can be found.",
      [weak = weak_from_this(), this](const std::optional<std::string>& folder) {
        const auto alive = weak.lock();
        if (!alive || !IsShown() || !folder) return;
        Update([&] {
          txtFolder_.Text(FromPresentation(*folder, Presentation()->ActivePresentation()->FullName()));
          txtFolder_Change();
          ShowAll(nullptr);
        });
      });
}

void frmDataObject::AskForFiles() {
  // Files come and go without a word.
  constexpr int LooksBetween = 5;
  if (looking_ && !looking_->HasEnded()) return;
  Question question;
  question.First = Drafts().front();
  std::string why;
  const auto connection = Readable(question.First.Connection, why);
  if (connection) question.DataVersion = connection->DataVersion();
  if (question == asked_ && ++looks_ % LooksBetween != 0) return;
  asked_ = question;
  if (!connection || question.First.Column.empty()) return ShowAnswer({});
  auto answer = std::make_shared<Answer>();
  const auto isCancelled = std::make_shared<bool>(false);
  const std::string presentation = Presentation()->ActivePresentation()->FullName();
  host::Job job;
  job.Caption = "Looking for the files of " + ShapesName();
  job.Work = [answer, connection, question, presentation, isCancelled] {
    FindFiles(*answer, *connection, question.First, presentation, *isCancelled);
    FindExtensions(*answer, *connection, question.First, presentation, *isCancelled);
  };
  job.Cancel = [isCancelled] { *isCancelled = true; };
  job.Deadline = 15'000;
  job.Done = [weak = weak_from_this(), this, answer](const host::JobEnd& end) {
    const auto alive = weak.lock();
    if (!alive) return;
    Update([&] {
      if (end.How != host::JobEnd::Kind::Done) answer->Problem = "The folder does not answer.";
      ShowAnswer(*answer);
    });
  };
  looking_ = modJobs::Start(std::move(job));
}

void frmDataObject::FindFiles(Answer& answer, clsConnection& connection, const Draft& draft,
                              const std::string& presentation, const bool& isCancelled) {
  const auto find = [&](double row, std::string& name) -> std::string {
    name = NameIn(connection, row, draft.Column, draft.Folder, draft.Extension);
    return name.empty() ? std::string() : modLinkedFiles::FindFile(name, draft.Folder, presentation);
  };
  try {
    answer.Path = find(draft.Row, answer.Name);
  } catch (...) {
    modErrors::SetLastError();
    answer.Problem = modErrors::LastError.Description;
  }
  const auto rows = static_cast<std::int64_t>(connection.RecordCount());
  answer.IsCut = rows > MostRowsLookedAt;
  answer.Rows = std::min(rows, MostRowsLookedAt);
  for (std::int64_t row = 1; row <= answer.Rows; ++row) {
    if (isCancelled) throw basic::Error(basic::AdapterError, "frmDataObject", "It was cancelled.");
    std::string name;
    try {
      static_cast<void>(find(static_cast<double>(row), name));
    } catch (const basic::Error&) {  // which row it is is all that is told
      answer.Missing.push_back({std::to_string(row), name});
    }
  }
}

void frmDataObject::ShowAnswer(const Answer& answer) {
  ShowExtensions(answer.Extensions);
  picNow_.File(answer.Path);
  if (!answer.Problem.empty()) {
    lblFile_.Text(answer.Name.empty() ? answer.Problem : answer.Name + ": " + answer.Problem,
                  Forms::Severity::Warning);
  } else if (answer.Path.empty()) {
    lblFile_.Text("No file results.");
  } else {
    lblFile_.Text(answer.Name + " is there.", Forms::Severity::Ok);
  }
  const bool isAnyMissing = !answer.Missing.empty();
  lblMissing_.Visible(isAnyMissing);
  grdFiles_.Visible(isAnyMissing);
  if (!isAnyMissing) return;
  lblMissing_.Text(std::to_string(answer.Missing.size()) + (answer.IsCut ? " of the first " : " of ") +
                       std::to_string(answer.Rows) + " rows name" + (answer.Missing.size() == 1 ? "s" : "") +
                       " no file",
                   Forms::Severity::Warning);
  Forms::Rows rows;
  rows.Cells.assign(answer.Missing.begin(), answer.Missing.begin() + static_cast<std::ptrdiff_t>(std::min(
                                                                         answer.Missing.size(), MostListed)));
  grdFiles_.Total(static_cast<std::int64_t>(rows.Cells.size()));
  grdFiles_.Rows(std::move(rows));
}

}  // namespace LF2000
