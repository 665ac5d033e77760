#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace web {

/// What a request asks for, taken apart; views into the text, nothing decoded.
struct Target {
  /// Name and port in an address that names its server as well.
  std::optional<std::string_view> host;
  /// Begins with '/' in every address that there is.
  std::string_view path;
  /// What stands behind the '?'.
  std::string_view query;
};

/// Reads the target of a request line, in origin or absolute form (RFC 9112, 3.2). An address
/// without a path means "/". What is of neither form becomes the path.
Target targetOf(std::string_view text);

/// Takes a number, 0 or more, off the beginning of a part of an address; nothing where none stands there.
std::optional<int> takeNumber(std::string_view& text);

/// A field of a query ("slide=3&shape=A%20B"), decoded (application/x-www-form-urlencoded,
/// URL Standard, 5.1); nothing when it is not there.
std::optional<std::string> queryField(std::string_view query, std::string_view name);

}  // namespace web
