#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "basic/FileBytes.h"

namespace ppt {

/// The record types that are looked at ([MS-PPT] 2.13.24, [MS-ODRAW] 2.2).
namespace type {
inline constexpr std::uint32_t Document = 0x03E8;
inline constexpr std::uint32_t Slide = 0x03EE;
inline constexpr std::uint32_t Notes = 0x03F0;
inline constexpr std::uint32_t SlidePersist = 0x03F3;
inline constexpr std::uint32_t MainMaster = 0x03F8;
inline constexpr std::uint32_t ExternalObjects = 0x0409;
inline constexpr std::uint32_t Drawing = 0x040C;
inline constexpr std::uint32_t DocumentInfoList = 0x07D0;
inline constexpr std::uint32_t ObjectReference = 0x0BC1;
inline constexpr std::uint32_t Placeholder = 0x0BC3;
inline constexpr std::uint32_t OutlineText = 0x0F9E;
inline constexpr std::uint32_t TextHeader = 0x0F9F;
inline constexpr std::uint32_t TextCharacters = 0x0FA0;
inline constexpr std::uint32_t TextBytes = 0x0FA8;
inline constexpr std::uint32_t String = 0x0FBA;
inline constexpr std::uint32_t Object = 0x0FC3;
inline constexpr std::uint32_t EmbeddedObject = 0x0FCC;
inline constexpr std::uint32_t LinkedObject = 0x0FCE;
inline constexpr std::uint32_t SlideList = 0x0FF0;
inline constexpr std::uint32_t UserEdit = 0x0FF5;
inline constexpr std::uint32_t CurrentUser = 0x0FF6;
inline constexpr std::uint32_t Tags = 0x1388;
inline constexpr std::uint32_t StringTag = 0x1389;
inline constexpr std::uint32_t PersistDirectory = 0x1772;
inline constexpr std::uint32_t DrawingContent = 0xF002;
inline constexpr std::uint32_t Group = 0xF003;
inline constexpr std::uint32_t Shape = 0xF004;
inline constexpr std::uint32_t GroupFrame = 0xF009;
inline constexpr std::uint32_t ShapeKind = 0xF00A;
inline constexpr std::uint32_t Properties = 0xF00B;
inline constexpr std::uint32_t TextBox = 0xF00D;
inline constexpr std::uint32_t MemberAnchor = 0xF00F;
inline constexpr std::uint32_t Anchor = 0xF010;
inline constexpr std::uint32_t ClientData = 0xF011;
inline constexpr std::uint32_t MoreProperties = 0xF122;
}  // namespace type

/// Bytes of what stands before the body of a record.
inline constexpr std::size_t RecordHeaderSize = 8;

/// A record of the stream ([MS-PPT] 2.3.1): an atom, or a container of further ones.
struct Record {
  std::uint32_t type = 0;
  std::uint32_t instance = 0;
  bool isContainer = false;
  std::string_view body;

  /// The numbers in an atom; 0 beyond its end.
  [[nodiscard]] basic::FileBytes numbers() const { return basic::FileBytes(body); }
};

/// The record that begins at an offset. One that reaches beyond the end is damaged: an error.
Record recordAt(std::string_view bytes, std::size_t offset);

/// Calls visit(record) for each record within a container, or an atom that holds records.
template <typename Visit>
void forEachRecord(std::string_view bytes, Visit&& visit) {
  for (std::size_t at = 0; at + RecordHeaderSize <= bytes.size();) {
    const Record record = recordAt(bytes, at);
    visit(record);
    at += RecordHeaderSize + record.body.size();
  }
}

/// The first record of a type; nothing with an empty body when there is none.
Record firstRecord(std::string_view bytes, std::uint32_t type);

}  // namespace ppt
