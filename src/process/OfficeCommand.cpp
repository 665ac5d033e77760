#include "process/OfficeCommand.h"

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

std::vector<std::string> boundedCommand(const std::vector<std::string>& command) {
  std::vector<std::string> bounded = {"prlimit", "--as=4294967296", "--fsize=536870912", "--cpu=120"};
  bounded.insert(bounded.end(), command.begin(), command.end());
  return bounded;
}

}  // namespace process
