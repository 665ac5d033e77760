// The dialog of text files.

#include "pages/frmTextConnection.h"

#include "host/services.h"

namespace LF2000 {

frmTextConnection::frmTextConnection(const std::shared_ptr<clsPresentation>& presentation,
                                     const std::shared_ptr<clsConnection>& edited, std::string_view path,
                                     Stored stored)
    : frmConnection("frmTextConnection", "Text file", presentation, edited, std::move(stored)),
      txtFile_(Add<Forms::TextBox>("txtFile")),
      cmdBrowse_(Add<Forms::CommandButton>("cmdBrowse", "&Browse\u2026")),
      chkFirstRow_(Add<Forms::CheckBox>("chkFirstRow", "First &row holds column names")),
      lblFound_(Add<Forms::Label>("lblFound")),
      guessesFirstRow_(edited == nullptr) {
  AddRow("&File", {&txtFile_, &cmdBrowse_});
  AddRow("", {&chkFirstRow_});
  AddRow("", {&lblFound_});
  AddPreview();
  if (edited) {
    txtFile_.Text(edited->ConnectionFileString());
    chkFirstRow_.Value(edited->ConnectionFirstRowFieldNames());
  } else {
    txtFile_.Text(path);
    SuggestFileDescription(path);
  }
  txtFile_.Change = [this] {
    NoteChange();
    SuggestFileDescription(txtFile_.Text());
    Look();
  };
  chkFirstRow_.Change = [this] {
    NoteChange();
    guessesFirstRow_ = false;
    Look();
  };
  cmdBrowse_.Click = [this] {
    Browse(txtFile_, "Select the text file.", {{"Text files", "txt csv tsv tab"}, {"All files", "*"}});
  };
}

void frmTextConnection::Describe(clsConnection& connection) const {
  connection.ConnectionType(static_cast<std::int32_t>(ConnectionKind::TextFile));
  connection.ConnectionFileString(txtFile_.Text());
  connection.ConnectionFirstRowFieldNames(chkFirstRow_.Value());
}

void frmTextConnection::Look() {
  Abandon(look_);
  if (txtFile_.Text().empty()) {
    lblFound_.Text("");
    return ClearRows();
  }
  const auto look = NewTrial();
  look_ = look;
  const auto glance = std::make_shared<TextFileGlance>();
  look->Prepare([glance, guesses = guessesFirstRow_](clsConnection& connection) {
    *glance = GlanceAt(host::Current().files->OpenForInput(connection.ResolvedFile())->ReadAll());
    if (guesses) connection.ConnectionFirstRowFieldNames(glance->HasNames);
  });
  StartTrial(look, [this, glance](const TrialResult& result) { ShowFound(result, *glance); });
}

void frmTextConnection::ShowFound(const TrialResult& result, const TextFileGlance& glance) {
  if (!result.Failure.empty()) {
    lblFound_.Text(result.Failure, Forms::Severity::Warning);
    return ClearRows();
  }
  if (guessesFirstRow_) chkFirstRow_.Value(glance.HasNames);
  const std::string delimiter = glance.Delimiter.empty() ? "one column" : glance.Delimiter;
  std::string text =
      glance.Encoding + ", " + delimiter + ", " + ColumnsText(result) + ", " + RowsText(result);
  for (const std::string& remark : result.Remarks) text += "\n" + remark;
  lblFound_.Text(text, result.Remarks.empty() ? Forms::Severity::Ok : Forms::Severity::Warning);
  ShowRows(result);
}

}  // namespace LF2000
