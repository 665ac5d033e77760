#pragma once

#include <string_view>

namespace LF2000 {

/// Raises what the bytes of a file are when they are plainly no delimited text: an HTML page (as servers
/// send them in the place of data), XML, an archive, a picture, a document, a database. They are told by
/// their first bytes.
void RequireText(std::string_view bytes);

}  // namespace LF2000
