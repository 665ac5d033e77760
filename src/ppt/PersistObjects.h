#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "ppt/Records.h"

namespace ppt {

/// Where the objects of a presentation lie in its stream, as the last save left them: a save may append
/// what it changed, and so leave older versions of objects before it ([MS-PPT] 2.1.2).
class PersistObjects {
 public:
  /// `stream` outlives it; `lastEdit` is where the stream's last edit lies. One that is encrypted is an
  /// error, as is a chain of edits that leads in a circle.
  PersistObjects(std::string_view stream, std::size_t lastEdit);

  /// Reads an object, each once at most: what asks for more than the stream holds is damaged.
  [[nodiscard]] Record take(std::uint32_t id);
  /// The object that holds the others together.
  [[nodiscard]] std::uint32_t document() const { return document_; }

 private:
  void readDirectory(std::size_t offset);
  void spend(const Record& record);

  std::string_view stream_;
  std::uint32_t document_ = 0;
  std::unordered_map<std::uint32_t, std::uint32_t> offsets_;
  std::unordered_set<std::uint32_t> taken_;
  std::size_t left_;  // of the stream's bytes
};

}  // namespace ppt
