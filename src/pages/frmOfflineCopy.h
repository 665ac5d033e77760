#pragma once

#include <string>

#include "pages/frmPage.h"

namespace LF2000 {

/// The dialog of the off-line copy: its file, and whether its clocks go on. The copy is made by a job.
class frmOfflineCopy final : public frmPage {
 public:
  explicit frmOfflineCopy(std::shared_ptr<clsPresentation> presentation);

 protected:
  bool Apply() override;

 private:
  /// The copy's full name; complains and answers the empty string where there can be none.
  [[nodiscard]] std::string File();
  void Start(const std::string& file);

  Forms::TextBox& txtFile_;
  Forms::CheckBox& chkReplace_;
  Forms::CheckBox& chkKeepClocks_;
};

}  // namespace LF2000
