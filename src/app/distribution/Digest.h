#pragma once

#include <memory>
#include <string>
#include <string_view>

struct evp_md_ctx_st;

namespace app {

/// The SHA-256 (FIPS 180-4) of bytes that come piece by piece.
class Digest {
 public:
  Digest();
  void add(std::string_view bytes);
  /// Of all that was added: 64 hexadecimal digits, lower case. It is of no use afterwards.
  [[nodiscard]] std::string finish();

 private:
  std::shared_ptr<evp_md_ctx_st> context_;
};

[[nodiscard]] std::string sha256(std::string_view bytes);

}  // namespace app
