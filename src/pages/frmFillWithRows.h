#pragma once

#include <string>

#include "model/modManyLinks.h"
#include "pages/frmShapesPage.h"

namespace LF2000 {

/// The dialog that links the selected shapes to one row after the other, and shows before which gets which.
class frmFillWithRows final : public frmShapesPage {
 public:
  frmFillWithRows(std::shared_ptr<clsPresentation> presentation, modSelected::Selected selected);
  void Reload() override;

 protected:
  void ShowNow() override;
  bool Apply() override;

 private:
  void Propose();
  void ShowColumns();
  /// What the controls ask for; false, and a complaint, where they ask for nothing.
  [[nodiscard]] bool MakePlan(modManyLinks::Plan& plan);
  void ShowPlan();

  std::string number_;
  Forms::ComboBox& cmbConnection_;
  Forms::ListBox& lstColumns_;
  Forms::TextBox& txtStart_;
  Forms::UpDown& udStart_;
  Forms::TextBox& txtStep_;
  Forms::OptionButton& optPlaces_;
  Forms::OptionButton& optNumbers_;
  Forms::ListBox& lstPlan_;
  Forms::Label& lblWhy_;
};

}  // namespace LF2000
