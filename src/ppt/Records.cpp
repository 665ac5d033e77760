#include "ppt/Records.h"

#include "ppt/Failure.h"

namespace ppt {

Record recordAt(std::string_view bytes, std::size_t offset) {
  constexpr std::uint32_t ContainerVersion = 0xF;
  if (offset > bytes.size() || bytes.size() - offset < RecordHeaderSize)
    failDamaged("a record lies outside of it");
  const basic::FileBytes b(bytes.substr(offset, RecordHeaderSize));
  const std::size_t length = b.little32(4);
  if (length > bytes.size() - offset - RecordHeaderSize)
    failDamaged("a record is longer than what it lies in");
  return {.type = b.little16(2),
          .instance = b.little16(0) >> 4U,
          .isContainer = (b.little16(0) & ContainerVersion) == ContainerVersion,
          .body = bytes.substr(offset + RecordHeaderSize, length)};
}

Record firstRecord(std::string_view bytes, std::uint32_t type) {
  Record found;
  forEachRecord(bytes, [&](const Record& record) {
    if (record.type == type && found.type != type) found = record;
  });
  return found;
}

}  // namespace ppt
