#pragma once

#include "pages/frmPage.h"
#include "pages/modSelected.h"

namespace LF2000 {

/// Says why what is selected cannot be linked. A shape that shares its name with others can be given one of
/// its own, which is all that stands in the way of linking it.
class frmNotLinkable final : public frmPage {
 public:
  frmNotLinkable(Forms::Placement where, std::shared_ptr<clsPresentation> presentation,
                 modSelected::Selected selected);
  void Reload() override;
  [[nodiscard]] bool KeepsAtOnce() const override { return true; }

 private:
  void Rename();

  modSelected::Selected selected_;
  Forms::Label& lblWhy_;
  Forms::TextBox& txtName_;
  Forms::CommandButton& cmdRename_;
};

}  // namespace LF2000
