#include "pages/frmDataField.h"

#include <utility>

namespace LF2000 {

frmDataField::frmDataField(Forms::Placement placement, std::shared_ptr<clsPresentation> presentation,
                           modSelected::Selected selected)
    : frmValuePage("frmDataField", "Data field", placement, std::move(presentation), std::move(selected),
                   SourceType::DataField) {
  AddSourceRows();
  AddStateRows();
  AddOKCancel();
  Look();
}

}  // namespace LF2000
