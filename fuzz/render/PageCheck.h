#pragma once

#include <string_view>

/// Ends the program where markup is not as the renderer promises it: elements that do not nest, attributes
/// without closing quotes, control characters, bytes that are no UTF-8.
void checkMarkup(std::string_view html);
