#pragma once

#include <string_view>

#include "pages/frmPage.h"

namespace LF2000 {

/// Product and version, this computer, where settings and logs lie, and under which licences the parts of
/// the product come.
class frmAbout final : public frmPage {
 public:
  frmAbout();

  /// What the program is made of and under which licences, in sentences: programs differ in that, so each
  /// says it before it opens the form.
  static void MadeOf(std::string_view licences);
};

}  // namespace LF2000
