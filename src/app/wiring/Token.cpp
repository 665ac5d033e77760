#include "app/wiring/Token.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iomanip>

#include "app/wiring/Failure.h"
#include "opc/SavingFile.h"
#include "platform/UserFolders.h"
#include "web/http/Secret.h"

namespace app {

std::string readToken(const std::string& file) {
  constexpr std::size_t Longest = 1000;
  std::ifstream in(file);
  std::string token;
  if (in) in >> std::setw(Longest + 1) >> token;
  if (!in.is_open() || in.bad())
    fail(file + ": the token file cannot be read: " + std::strerror(errno) + ".");
  if (token.empty()) fail(file + ": the token file holds no token.");
  const auto isVisible = [](char c) { return c > ' ' && c < 127; };
  if (token.size() > Longest || !std::all_of(token.begin(), token.end(), isVisible)) {
    fail(file + ": a token has up to " + std::to_string(Longest) +
         " letters, digits and signs of ASCII, as others cannot be sent.");
  }
  return token;
}

namespace {

/// A service keeps its token, where its administrator finds it: the same after each restart, and in no log.
std::string keptToken(const std::string& folder) {
  const std::string file = folder + "/token";
  std::error_code failed;
  if (std::filesystem::exists(file, failed)) return readToken(file);
  std::string token = web::newSecret();
  opc::SavingFile saving(file);
  if (saving.descriptor() < 0 || !saving.write(token + "\n") || ::fsync(saving.descriptor()) != 0 ||
      !saving.close() || !saving.renameTo(file, /*replacing=*/false)) {
    fail(file + ": the token cannot be kept: " + std::strerror(errno) + ".");
  }
  return token;
}

}  // namespace

Token obtainToken(const std::string& file) {
  if (!file.empty()) return {readToken(file), false};
  const char* given = std::getenv("LUMENFOLD_TOKEN");
  if (given && *given) return {given, false};
  const std::string folder = platform::serviceFolder("STATE_DIRECTORY");
  if (!folder.empty()) return {keptToken(folder), false};
  return {web::newSecret(), true};
}

}  // namespace app
