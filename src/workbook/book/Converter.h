#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "host/services.h"
#include "opc/Files.h"
#include "process/TemporaryFolder.h"

namespace workbook {

/// Turns workbooks of other formats into .xlsx by LibreOffice, in a child process
/// with a profile of its own. What was converted is kept, in a folder of
/// temporary files that is gone with the converter, while its source stays as it
/// was.
class Converter {
 public:
  struct Options {
    std::string program = "soffice";
    std::chrono::milliseconds timeout{60000};
  };

  Converter(host::Loop& loop, Options options) : loop_(loop), options_(std::move(options)) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  /// The bytes of the .xlsx. The loop runs until it is there. Throws basic::Error
  /// when LibreOffice is not installed, fails or takes too long.
  std::string convert(const std::string& path, const opc::FileContent& source);

 private:
  struct Converted {
    opc::FileState state;
    std::filesystem::path file;
  };

  void makeFolder(const std::string& path);
  void run(const std::string& path, const std::filesystem::path& job, const std::filesystem::path& input);

  host::Loop& loop_;
  Options options_;
  std::optional<process::TemporaryFolder> folder_;
  std::map<std::string, Converted> converted_;
  int jobs_ = 0;     // ever begun
  int running_ = 0;  // a handler that the loop runs may ask for another
};

}  // namespace workbook
