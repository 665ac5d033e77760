#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "workbook/book/Parts.h"

namespace workbook::xml {

/// What makes bytes no text that may be parsed: the library accepts some that
/// would become text that is no UTF-8.
struct Fault {
  std::size_t offset = 0;
  const char* reason = "";
};
std::optional<Fault> findFault(std::string_view text);
/// By its byte-order mark.
bool isUtf16(std::string_view text);

/// Parses a small part. Throws basic::Error with the part, line and column; a
/// document type declaration is refused.
std::unique_ptr<pugi::xml_document> parse(const Parts& parts, const std::string& part);

/// Fails at a byte of a part, telling line and column, which takes reading the
/// part up to there.
[[noreturn]] void failAt(const Parts& parts, const std::string& part, std::uint64_t offset,
                         std::string_view reason);

/// Without the prefix: writers choose prefixes as they like, and the names are
/// unambiguous in the parts that are read here.
std::string_view localName(std::string_view name);
/// Whether a node has this prefix (with its colon) and local name.
inline bool isNamed(pugi::xml_node node, std::string_view prefix, std::string_view local) {
  const std::string_view name = node.name();
  return name.size() == prefix.size() + local.size() && name.ends_with(local);
}
/// The first child of a local name.
pugi::xml_node child(pugi::xml_node parent, std::string_view local);
/// The value of an attribute by its local name; empty when it is not there.
std::string_view attribute(pugi::xml_node node, std::string_view local);
/// An attribute of the type xsd:boolean.
bool flag(pugi::xml_node node, std::string_view local);
std::optional<std::uint32_t> number(std::string_view digits);

}  // namespace workbook::xml
