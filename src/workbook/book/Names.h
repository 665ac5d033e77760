#pragma once

#include <string_view>

namespace workbook {

/// Whether two names of sheets or ranges are the same: in any case, of letters of
/// any script.
bool isSameName(std::string_view a, std::string_view b);

}  // namespace workbook
