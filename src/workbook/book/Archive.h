#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/bytes.h"

struct zip;
struct zip_file;

namespace workbook {

/// The content of one part, inflated as it is read. The archive outlives it.
class PartStream {
 public:
  /// Fills the buffer; less than `size` bytes come at the end alone. Throws
  /// basic::Error when the archive is damaged there.
  std::size_t read(char* to, std::size_t size);

 private:
  friend class Archive;
  struct Close {
    void operator()(zip_file* file) const;
  };
  PartStream(zip_file* file, std::string where) : file_(file), where_(std::move(where)) {}

  std::unique_ptr<zip_file, Close> file_;
  std::string where_;
};

/// The parts of a workbook: a ZIP archive in memory. Errors are basic::Error and
/// name the file and the part.
class Archive {
 public:
  /// `path` is what messages call the file.
  Archive(host::Bytes bytes, std::string path);
  ~Archive();
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }
  /// Part names have no slash in front; case does not matter.
  [[nodiscard]] bool has(const std::string& part) const;
  [[nodiscard]] PartStream open(const std::string& part) const;
  /// A whole part, one of those that are small in honest workbooks: an error
  /// when it has more than 64 MB.
  [[nodiscard]] std::string read(const std::string& part) const;

  [[noreturn]] void failIn(std::string_view part, std::string_view reason) const;

 private:
  [[nodiscard]] std::int64_t find(const std::string& part) const;

  host::Bytes bytes_;
  std::string path_;
  zip* zip_ = nullptr;
};

}  // namespace workbook
