#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace support {

/// A folder of its own for a test, gone afterwards.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string path = (std::filesystem::temp_directory_path() / "lumenfold.XXXXXX").string();
    path_ = ::mkdtemp(path.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  /// Writes a file and returns its path.
  [[nodiscard]] std::string write(const std::string& name, const std::string& bytes) const {
    const std::filesystem::path file = path_ / name;
    std::ofstream(file, std::ios::binary) << bytes;
    return file.string();
  }
  [[nodiscard]] std::string read(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::filesystem::path path_;
};

}  // namespace support
