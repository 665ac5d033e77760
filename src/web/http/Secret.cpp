#include "web/http/Secret.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <random>

namespace web {

std::string newSecret() {
  std::random_device device;
  std::string name;
  for (int word = 0; word < 4; ++word) {
    std::array<char, 8> digits{};
    const auto [end, failed] =
        std::to_chars(digits.data(), digits.data() + digits.size(), std::uint32_t{device()}, 16);
    name.append(digits.data(), end);
  }
  return name;
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
