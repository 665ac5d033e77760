#pragma once

#include <string>

namespace app {

/// The secret that who steers a show must present: the content of the file when
/// one is named, else LUMENFOLD_TOKEN, else that which a service keeps in its folder of state
/// ("token"), else a new random one.
struct Token {
  std::string value;
  /// Made for this run: it must be told, nobody knows it yet.
  bool isNew = false;
};

/// Throws basic::Error when the file cannot be read or holds no token.
Token obtainToken(const std::string& file);
/// The first word of a file: 1 to 1000 visible characters of ASCII. Throws likewise.
std::string readToken(const std::string& file);

}  // namespace app
