#pragma once

#include "pages/frmShapesPage.h"

namespace LF2000 {

/// The page of texts that show the date or the time.
class frmClock final : public frmShapesPage {
 public:
  frmClock(Forms::Placement placement, std::shared_ptr<clsPresentation> presentation,
           modSelected::Selected selected);
  void Reload() override;

 protected:
  void ShowNow() override;
  bool Apply() override;

 private:
  void Read();
  void cmbFormat_Change();
  void ShowFormats();
  void Write(std::string_view run);

  Forms::ComboBox& cmbFormat_;
  Forms::Label& lblNow_;
  Forms::Label& lblHelp_;
  Forms::CommandButton& cmdUnlink_;
};

}  // namespace LF2000
