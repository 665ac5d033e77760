#pragma once

#include "pages/frmValuePage.h"

namespace LF2000 {

/// The page of texts that show a value.
class frmDataField final : public frmValuePage {
 public:
  frmDataField(Forms::Placement placement, std::shared_ptr<clsPresentation> presentation,
               modSelected::Selected selected);
};

}  // namespace LF2000
