#include "process/OfficeCommand.h"

#include <fstream>
#include <system_error>

namespace process {

namespace {

/// A user's layer of settings as LibreOffice writes it.
constexpr const char* Settings =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry">
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="BlockUntrustedRefererLinks" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="DisableMacrosExecution" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Calc/Content/Update"><prop oor:name="Link" oor:op="fuse"><value>2</value></prop></item>
</oor:items>
)";

}  // namespace

void makeOfficeProfile(const std::filesystem::path& profile) {
  const std::filesystem::path file = profile / "user" / "registrymodifications.xcu";
  if (std::filesystem::exists(file)) return;
  std::filesystem::create_directories(file.parent_path());
  if (!(std::ofstream(file) << Settings << std::flush)) {
    throw std::filesystem::filesystem_error("LibreOffice's settings cannot be written", file,
                                            std::make_error_code(std::errc::no_space_on_device));
  }
}

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
