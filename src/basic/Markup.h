#pragma once

#include <string>
#include <string_view>

namespace basic {

/// Appends text as the content of an element or as the value of a quoted attribute, in XML and in HTML: the
/// five characters with a meaning there as references, line ends as LF. Control characters that neither may
/// hold are left out. UTF-8 is taken as it is.
void AppendEscaped(std::string& markup, std::string_view text);

std::string Escaped(std::string_view text);

}  // namespace basic
