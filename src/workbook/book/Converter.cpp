// Other programs' workbooks by way of LibreOffice: one run for each state of a file.

#include "workbook/book/Converter.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <vector>

#include "process/ChildProcess.h"
#include "process/OfficeCommand.h"
#include "workbook/Failure.h"
#include "workbook/book/SourceFile.h"

namespace workbook {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Package = "apt install libreoffice-calc";

/// Removes a folder when it goes.
class RemovedFolder {
 public:
  explicit RemovedFolder(fs::path path) : path_(std::move(path)) {}
  ~RemovedFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  RemovedFolder(const RemovedFolder&) = delete;
  RemovedFolder& operator=(const RemovedFolder&) = delete;

 private:
  fs::path path_;
};

class Counted {
 public:
  explicit Counted(int& count) : count_(++count) {}
  ~Counted() { --count_; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

 private:
  int& count_;
};

}  // namespace

/// Also when something has tidied up among the temporary files since.
void Converter::makeFolder(const std::string& path) try {
  std::error_code error;
  if (!folder_ || !fs::is_directory(folder_->path(), error)) folder_.emplace();
} catch (const fs::filesystem_error& error) {
  failOpening(path, "no folder for its conversion can be made: " + error.code().message());
}

void Converter::run(const std::string& path, const fs::path& job, const fs::path& input) {
  using Clock = std::chrono::steady_clock;
  // Two instances cannot share a profile.
  const fs::path profile = folder_->path() / ("profile" + std::to_string(running_));
  const fs::path log = job / "log";
  try {
    process::makeOfficeProfile(profile);
  } catch (const fs::filesystem_error& error) {
    failOpening(path, "no folder for its conversion can be made: " + error.code().message());
  }
  process::ChildProcess child(process::officeCommand({options_.program, profile, "xlsx", job / "out", input}),
                              log.string());
  if (child.startError() == ENOENT) {
    failOpening(path, "LibreOffice Calc, which reads such workbooks, is not installed (" +
                          std::string(Package) + ")");
  }
  if (child.startError() != 0) {
    failOpening(path, "LibreOffice cannot be started: " + std::string(std::strerror(child.startError())));
  }
  const Clock::time_point end = Clock::now() + options_.timeout;
  std::optional<int> status;
  while (!(status = child.exitStatus())) {
    if (Clock::now() >= end) {
      const auto seconds = std::chrono::ceil<std::chrono::seconds>(options_.timeout).count();
      failOpening(path, "LibreOffice did not convert it within " + std::to_string(seconds) + " s");
    }
    loop_.DoEvents();
  }
  std::error_code error;
  if (*status == 0 && fs::exists(job / "out" / "workbook.xlsx", error)) return;
  const std::string said = process::lastLine(log);
  failOpening(path, "LibreOffice cannot convert it" + (said.empty() ? std::string() : " (" + said + ")") +
                        ". It needs its part Calc (" + std::string(Package) + ")");
}

std::string Converter::convert(const std::string& path, const opc::FileContent& source) {
  std::error_code error;
  if (const auto known = converted_.find(path); known != converted_.end()) {
    if (known->second.state == source.state && fs::exists(known->second.file, error)) {
      return readSourceFile(known->second.file.string(), loop_).bytes;
    }
    fs::remove(known->second.file, error);
    converted_.erase(known);
  }

  makeFolder(path);
  const std::string number = std::to_string(++jobs_);
  const fs::path job = folder_->path() / ("job" + number);
  const RemovedFolder remove(job);
  const Counted running(running_);
  // A copy under a name without surprises, which nobody locks or writes to.
  const fs::path input = job / ("workbook" + fs::path(path).extension().string());
  fs::create_directory(job, error);
  std::ofstream(input, std::ios::binary) << source.bytes;
  run(path, job, input);

  const fs::path result = folder_->path() / (number + ".xlsx");
  fs::rename(job / "out" / "workbook.xlsx", result, error);
  if (error) failOpening(path, "its conversion cannot be kept: " + error.message());
  converted_.insert_or_assign(path, Converted{source.state, result});
  return readSourceFile(result.string(), loop_).bytes;
}

}  // namespace workbook
