#include "app/inspect/SlideFiles.h"

#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>

#include "app/wiring/Failure.h"

namespace app {

std::string slideFileName(int slide) {
  constexpr std::size_t Digits = 3;
  const std::string number = std::to_string(slide);
  return "slide-" + std::string(number.size() < Digits ? Digits - number.size() : 0, '0') + number;
}

void makeFolder(const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) fail(folder + ": the folder cannot be made: " + error.message() + ".");
}

void writeFile(const std::filesystem::path& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  if (!file) fail(path.string() + ": cannot be written: " + std::strerror(errno) + ".");
}

HeadlessBrowser::View slideView(const render::SlideSize& size, int width) {
  return {static_cast<int>(std::lround(size.width)), static_cast<int>(std::lround(size.height)),
          width / size.width};
}

}  // namespace app
