#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "opc/Archive.h"

namespace workbook {

/// The content of one part, inflated as it is read. The parts outlive it.
class PartStream {
 public:
  /// Fills the buffer; less than `size` bytes come at the end alone. Throws
  /// basic::Error when the archive is damaged there.
  std::size_t read(char* to, std::size_t size);

 private:
  friend class Parts;
  PartStream(opc::EntryStream stream, std::string where)
      : stream_(std::move(stream)), where_(std::move(where)) {}

  opc::EntryStream stream_;
  std::string where_;
};

/// The parts of a workbook: an archive in memory, never more of which is inflated than is
/// asked for. Errors are basic::Error and name the file and the part.
class Parts {
 public:
  /// `path` is what messages call the file.
  Parts(std::string bytes, std::string path);

  [[nodiscard]] const std::string& path() const { return path_; }
  /// Part names have no slash in front; case does not matter.
  [[nodiscard]] bool has(const std::string& part) const { return archive_.find(part).has_value(); }
  [[nodiscard]] PartStream open(const std::string& part) const;
  /// A whole part, one of those that are small in honest workbooks: an error
  /// when it has more than 64 MB.
  [[nodiscard]] std::string read(const std::string& part) const;

  [[noreturn]] void failIn(std::string_view part, std::string_view reason) const;

 private:
  std::string path_;
  opc::Archive archive_;
};

}  // namespace workbook
