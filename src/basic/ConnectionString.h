#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace basic {

/// One setting of a connection string, "key=value".
struct ConnectionSetting {
  std::string key;
  std::string value;
  /// Where the value stands in the text: with its quotes, without blanks around.
  std::size_t valueAt = 0;
  std::size_t valueSize = 0;
  /// Why it cannot be read as a setting, without quoting it; else empty.
  std::string fault;
};

/// The settings of a connection string, "key=value;key=value", in their order.
///
/// A value that begins with a brace, a double or a single quote ends with its
/// counterpart, doubled where it belongs to the value; quotes elsewhere are
/// characters. Blanks around keys and unquoted values do not count. A key may
/// hold an equals sign, doubled (OLE DB's rule). Never fails: what is no setting
/// is among them with its fault.
[[nodiscard]] std::vector<ConnectionSetting> ReadConnectionString(std::string_view text);

/// The text with another value for that setting of it, in the quotes that the
/// old one had, or in double ones where it needs some.
[[nodiscard]] std::string WithConnectionValue(std::string_view text, const ConnectionSetting& setting,
                                              std::string_view value);

/// Whether a setting of that key is a secret: a password or token.
[[nodiscard]] bool IsSecretKey(std::string_view key);
/// Whether a text, however it is quoted, could hold a setting that is a secret.
[[nodiscard]] bool MayHoldSecret(std::string_view text);

/// The connection string with "***" for every secret and for every value that
/// holds one ("Extended Properties"), for messages and logs; the rest as it is.
/// Of a string with faults nothing is shown if it could hold a secret.
[[nodiscard]] std::string MaskedConnectionString(std::string_view text);

}  // namespace basic
