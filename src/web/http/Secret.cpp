#include "web/http/Secret.h"

#include <cstdint>
#include <random>

namespace web {

std::string newSecret() {
  constexpr std::string_view digits = "0123456789abcdef";
  std::random_device device;
  std::string secret;
  for (int word = 0; word < 4; ++word) {
    for (std::uint32_t bits = device(), digit = 0; digit < 8; ++digit, bits >>= 4)
      secret += digits[bits & 15];
  }
  return secret;
}

bool isSameSecret(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  unsigned difference = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    difference |= static_cast<unsigned>(static_cast<unsigned char>(a[i] ^ b[i]));
  }
  return difference == 0;
}

}  // namespace web
