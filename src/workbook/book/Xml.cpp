#include "workbook/book/Xml.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "basic/Strings.h"
#include "opc/Xml.h"

namespace workbook::xml {
namespace {

/// Whether a numeric reference, the text behind its "&#", names a character that
/// there can be. What is no reference at all stays as it is.
bool namesCharacter(std::string_view text) {
  const int base = text.starts_with('x') ? 16 : 10;
  if (base == 16) text.remove_prefix(1);
  std::uint32_t point = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), point, base);
  if (error == std::errc::result_out_of_range) return false;
  if (error != std::errc() || end == text.data() + text.size() || *end != ';') return true;
  return point != 0 && point <= 0x10FFFF && (point < 0xD800 || point > 0xDFFF);
}

}  // namespace

bool isUtf16(std::string_view text) { return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"); }

std::optional<Fault> findFault(std::string_view text) {
  if (isUtf16(text)) return Fault{0, "it is in UTF-16, not in UTF-8"};
  if (!basic::IsValidUtf8(text)) return Fault{0, "what follows is not all UTF-8"};
  if (const std::size_t nul = text.find('\0'); nul != std::string_view::npos)
    return Fault{nul, "a NUL character"};
  for (std::size_t at = 0; (at = text.find('&', at)) != std::string_view::npos; ++at) {
    const std::string_view reference = text.substr(at);
    if (reference.starts_with("&#") && !namesCharacter(reference.substr(2))) {
      return Fault{at, "a reference to no character"};
    }
  }
  return std::nullopt;
}

void failAt(const Parts& parts, const std::string& part, std::uint64_t offset, std::string_view reason) {
  PartStream stream = parts.open(part);
  std::vector<char> block(64U << 10U);
  opc::xml::Place place;
  while (offset > 0) {
    const std::size_t got = stream.read(block.data(), std::min<std::uint64_t>(block.size(), offset));
    if (got == 0) break;
    place.pass({block.data(), got});
    offset -= got;
  }
  parts.failIn(part, "is no proper XML in " + place.text() + ": " + std::string(reason));
}

std::unique_ptr<pugi::xml_document> parse(const Parts& parts, const std::string& part) {
  const std::string text = parts.read(part);
  if (const auto fault = findFault(text)) failAt(parts, part, fault->offset, fault->reason);
  auto document = std::make_unique<pugi::xml_document>();
  const pugi::xml_parse_result result = document->load_buffer(
      text.data(), text.size(), pugi::parse_default | pugi::parse_doctype, pugi::encoding_utf8);
  if (!result) failAt(parts, part, static_cast<std::uint64_t>(result.offset), result.description());
  if (opc::xml::hasDocumentType(*document)) {
    failAt(parts, part, text.find("<!DOCTYPE"), "a workbook may have no document type declaration");
  }
  return document;
}

std::string_view localName(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

pugi::xml_node child(pugi::xml_node parent, std::string_view local) {
  return parent.find_child([&](pugi::xml_node node) { return localName(node.name()) == local; });
}

std::string_view attribute(pugi::xml_node node, std::string_view local) {
  return node.find_attribute([&](pugi::xml_attribute a) { return localName(a.name()) == local; }).value();
}

bool flag(pugi::xml_node node, std::string_view local) {
  const std::string_view value = attribute(node, local);
  return value == "1" || value == "true";
}

std::optional<std::uint32_t> number(std::string_view digits) {
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return value;
}

}  // namespace workbook::xml
