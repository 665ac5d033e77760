#pragma once

#include "pages/frmPage.h"

namespace LF2000 {

/// Product and version, this computer, where settings and logs lie, and under which licences the parts of
/// the product come.
class frmAbout final : public frmPage {
 public:
  frmAbout();
};

}  // namespace LF2000
