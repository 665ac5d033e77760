#pragma once

#include <string>

#include "model/modManyLinks.h"
#include "pages/frmShapesPage.h"

namespace LF2000 {

/// The dialog that links shapes whose names mean a column and a row, after the author has looked over which:
/// those of the selection, or all of the slide where one shape is selected or the selection has none.
class frmLinkByNames final : public frmShapesPage {
 public:
  frmLinkByNames(std::shared_ptr<clsPresentation> presentation, modSelected::Selected selected);
  void Reload() override;

 protected:
  void ShowNow() override {}
  bool Apply() override;

 private:
  void MakePlan();
  [[nodiscard]] modManyLinks::Plan PlanOf(const modLinkEdits::Shapes& shapes) const;

  std::string number_;
  bool isOfSelection_;
  modManyLinks::Plan plan_;
  Forms::ComboBox& cmbConnection_;
  Forms::ListBox& lstPlan_;
  Forms::Label& lblWhy_;
};

}  // namespace LF2000
