#include "process/OfficeCommand.h"

#include <fstream>

namespace process {

std::vector<std::string> officeCommand(const OfficeConversion& conversion) {
  return {conversion.program,
          "-env:UserInstallation=file://" + conversion.profile.string(),
          "--headless",
          "--norestore",
          "--nologo",
          "--convert-to",
          conversion.format,
          "--outdir",
          conversion.out.string(),
          conversion.input.string()};
}

std::string lastLine(const std::filesystem::path& file) {
  std::ifstream lines(file);
  std::string last;
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty()) last = line;
  }
  return last;
}

std::vector<std::string> boundedCommand(const std::vector<std::string>& command) {
  std::vector<std::string> bounded = {"prlimit", "--as=4294967296", "--fsize=536870912", "--cpu=120"};
  bounded.insert(bounded.end(), command.begin(), command.end());
  return bounded;
}

}  // namespace process
