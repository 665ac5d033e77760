// What is to be seen of an old presentation, by way of LibreOffice.

#include "app/import/PresentationConverter.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>

#include "app/wiring/Failure.h"
#include "opc/PackageFile.h"
#include "process/ChildProcess.h"
#include "process/OfficeCommand.h"
#include "process/TemporaryFolder.h"

namespace app {

namespace {

namespace fs = std::filesystem;

constexpr const char* NotThere =
    "LibreOffice Impress, which converts old presentations, is not installed (apt install "
    "libreoffice-impress)";

void wait(process::ChildProcess& child, host::Loop& loop, const PresentationConversion& conversion) {
  const auto end = std::chrono::steady_clock::now() + conversion.timeout;
  std::optional<int> status;
  while (!(status = child.exitStatus())) {
    if (conversion.isCancelled && conversion.isCancelled()) fail("its conversion was cancelled");
    if (std::chrono::steady_clock::now() >= end) {
      const auto seconds = std::chrono::ceil<std::chrono::seconds>(conversion.timeout).count();
      fail("LibreOffice did not convert it within " + std::to_string(seconds) + " s");
    }
    loop.DoEvents();
  }
  if (*status == process::NotInstalled) fail(NotThere);
}

}  // namespace

std::string convertPresentation(std::string_view bytes, host::Loop& loop,
                                const PresentationConversion& conversion) try {
  const process::TemporaryFolder folder;
  // A name without surprises; templates and shows have the same format.
  const fs::path input = folder.path() / "deck.ppt";
  if (!(std::ofstream(input, std::ios::binary) << bytes << std::flush)) {
    fail("there is no room for its conversion among the temporary files");
  }
  const fs::path out = folder.path() / "out";
  const fs::path log = folder.path() / "log";
  const fs::path profile = folder.path() / "profile";
  process::makeOfficeProfile(profile);
  process::ChildProcess child(
      process::boundedCommand(process::officeCommand({conversion.program, profile, "pptx", out, input})),
      log.string());
  if (child.startError() != 0) {
    fail("prlimit, which bounds its conversion, cannot be started: " +
         std::string(std::strerror(child.startError())));
  }
  wait(child, loop, conversion);
  const fs::path result = out / "deck.pptx";
  if (!fs::exists(result)) {
    const std::string said = process::lastLine(log);
    fail("LibreOffice cannot convert it" + (said.empty() ? std::string() : " (" + said + ")") +
         ". It needs its part Impress (apt install libreoffice-impress)");
  }
  return opc::readContent(result.string(), opc::MaximumPackageBytes).bytes;
} catch (const fs::filesystem_error& error) {
  fail("there is no folder for its conversion: " + error.code().message());
}

}  // namespace app
