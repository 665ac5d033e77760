#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "connections/clsConnection.h"
#include "pages/ConnectionTrial.h"
#include "pages/frmPage.h"

namespace LF2000 {

/// What the dialogs of connections have in common: a description, a test on a copy, a preview of the rows,
/// and storing what stands in the controls. OK waits for no test.
class frmConnection : public frmPage {
 public:
  /// Hears the number under which the connection was stored.
  using Stored = std::function<void(const std::string& number)>;

  /// Shows the dialog and begins to look at the source that it names, where that is a file. One that is
  /// filled in waits for OK.
  void OpenAndLook(bool isFilledIn);

 protected:
  /// `edited` is null for a new connection.
  frmConnection(std::string name, std::string caption, std::shared_ptr<clsPresentation> presentation,
                std::shared_ptr<clsConnection> edited, Stored stored);

  [[nodiscard]] const std::shared_ptr<clsConnection>& Edited() const { return edited_; }
  /// A connection as the controls describe it, not opened.
  [[nodiscard]] std::shared_ptr<clsConnection> Described() const;

  /// Puts what stands in the controls into a connection.
  virtual void Describe(clsConnection& connection) const = 0;
  /// Complains about what must not be stored, and answers whether there was nothing of the kind.
  virtual bool Check() = 0;
  /// The same before a test.
  virtual bool CheckForTest() { return Check(); }
  virtual void Look() {}
  /// The dialog has been closed: nobody is to hear of what goes on.
  virtual void EndTrials() {}

  /// Called last by the constructor of a dialog: test, preview, OK and Cancel.
  void AddPreview();
  /// Reads the source as the controls describe it and shows what it gave; ends the test that is under way.
  void Test();
  /// What stands in the controls is something else now.
  void NoteChange();
  /// `notes` stand beside the names of the columns, as far as there are any.
  void ShowRows(const TrialResult& result, const std::vector<std::string>& notes = {});
  void ClearRows();

  /// What a source of its own is called until its author says otherwise.
  void SuggestDescription(std::string_view name);
  void SuggestFileDescription(std::string_view path);
  /// Complains and answers false where the text is empty or cannot be stored.
  bool Require(Forms::Control& control, const std::string& text, std::string_view whatIsMissing);
  bool CheckDescription();
  /// Complains about a file that is not there, once: pressed again, OK keeps it all the same.
  bool CheckFile(Forms::TextBox& control);
  /// Asks for a file and puts its path, as short as can be, into the control.
  void Browse(Forms::TextBox& control, std::string_view title, const std::vector<Forms::FileKind>& kinds);
  /// A trial of what stands in the controls now; what `ended` does is told to the view once. It is not heard
  /// when the dialog has been closed.
  std::shared_ptr<ConnectionTrial> NewTrial();
  void StartTrial(const std::shared_ptr<ConnectionTrial>& trial,
                  std::function<void(const TrialResult&)> ended);

  /// Ends the trial, if there is one, and nobody hears.
  static void Abandon(std::shared_ptr<ConnectionTrial>& trial);

  /// Shown by AddPreview.
  [[nodiscard]] Forms::Grid& Preview() const { return *grdPreview_; }

  Forms::TextBox& txtDescription_;

 private:
  bool Apply() override;
  void ShowTestResult(const TrialResult& result);

  std::shared_ptr<clsConnection> edited_;
  Stored stored_;
  bool hasOwnDescription_ = false;
  /// The file that was complained about.
  std::string missingFile_;
  std::shared_ptr<ConnectionTrial> test_;
  bool isResultCurrent_ = false;
  Forms::CommandButton* cmdTest_ = nullptr;
  Forms::Label* lblTest_ = nullptr;
  Forms::Grid* grdPreview_ = nullptr;
};

}  // namespace LF2000
