#include "app/wiring/Token.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>

#include "app/wiring/Failure.h"

namespace app {

namespace {

std::string randomToken() {
  constexpr int Words = 4;
  constexpr char Digits[] = "0123456789abcdef";
  std::random_device device;
  std::string token;
  for (int word = 0; word < Words; ++word) {
    for (std::uint32_t bits = device(), digit = 0; digit < 8; ++digit, bits >>= 4) token += Digits[bits & 15];
  }
  return token;
}

}  // namespace

std::string readToken(const std::string& file) {
  std::ifstream in(file);
  std::string token;
  if (!in) fail(file + ": the token file cannot be read: " + std::strerror(errno) + ".");
  in >> token;
  if (token.empty()) fail(file + ": the token file holds no token.");
  return token;
}

Token obtainToken(const std::string& file) {
  if (!file.empty()) return {readToken(file), false};
  const char* given = std::getenv("LUMENFOLD_TOKEN");
  if (given && *given) return {given, false};
  return {randomToken(), true};
}

}  // namespace app
