#include "app/wiring/Token.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>

#include "app/wiring/Failure.h"
#include "platform/Console.h"
#include "platform/UserFolders.h"

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

namespace {

/// A service keeps its token, where its administrator finds it: the same after each restart, and in no log.
std::string keptToken(const std::string& folder) {
  const std::string file = folder + "/token";
  if (std::filesystem::exists(file)) return readToken(file);
  const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (descriptor < 0) fail(file + ": the token cannot be kept: " + std::strerror(errno) + ".");
  std::string token = randomToken();
  platform::writeTo(descriptor, token + "\n");
  ::close(descriptor);
  return token;
}

}  // namespace

Token obtainToken(const std::string& file) {
  if (!file.empty()) return {readToken(file), false};
  const char* given = std::getenv("LUMENFOLD_TOKEN");
  if (given && *given) return {given, false};
  const std::string folder = platform::serviceFolder("STATE_DIRECTORY");
  if (!folder.empty()) return {keptToken(folder), false};
  return {randomToken(), true};
}

}  // namespace app
