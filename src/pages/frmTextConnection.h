#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "connections/TextFileGlance.h"
#include "pages/frmConnection.h"

namespace LF2000 {

/// A delimited text file. As soon as it is named it is looked at: what is found is shown, and whether its
/// first row holds the column names is guessed until the author says so.
class frmTextConnection final : public frmConnection {
 public:
  /// `edited` is null for a new connection, `path` the file of a new one as far as it is known.
  frmTextConnection(const std::shared_ptr<clsPresentation>& presentation,
                    const std::shared_ptr<clsConnection>& edited, std::string_view path, Stored stored);

 private:
  void Describe(clsConnection& connection) const override;
  bool Check() override { return CheckFile(txtFile_); }
  void Look() override;
  void EndTrials() override { Abandon(look_); }
  void ShowFound(const TrialResult& result, const TextFileGlance& glance);

  Forms::TextBox& txtFile_;
  Forms::CommandButton& cmdBrowse_;
  Forms::CheckBox& chkFirstRow_;
  Forms::Label& lblFound_;
  std::shared_ptr<ConnectionTrial> look_;
  bool guessesFirstRow_;
};

}  // namespace LF2000
