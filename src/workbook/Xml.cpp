#include "workbook/Xml.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace workbook::xml {

void failAt(const Archive& archive, const std::string& part, std::uint64_t offset, std::string_view reason) {
  PartStream stream = archive.open(part);
  std::vector<char> block(64U << 10U);
  std::uint64_t line = 1;
  std::uint64_t column = 1;
  while (offset > 0) {
    const std::size_t got = stream.read(block.data(), std::min<std::uint64_t>(block.size(), offset));
    if (got == 0) break;
    const std::string_view text(block.data(), got);
    const std::size_t lineEnd = text.rfind('\n');
    line += static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
    column = lineEnd == std::string_view::npos ? column + got : got - lineEnd;
    offset -= got;
  }
  archive.failIn(part, "is no proper XML in line " + std::to_string(line) + ", column " +
                           std::to_string(column) + ": " + std::string(reason));
}

std::unique_ptr<pugi::xml_document> parse(const Archive& archive, const std::string& part) {
  const std::string text = archive.read(part);
  auto document = std::make_unique<pugi::xml_document>();
  const pugi::xml_parse_result result =
      document->load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_doctype);
  if (!result) failAt(archive, part, static_cast<std::uint64_t>(result.offset), result.description());
  for (pugi::xml_node node : document->children()) {
    if (node.type() == pugi::node_doctype) {
      failAt(archive, part, text.find("<!DOCTYPE"), "a workbook may have no document type declaration");
    }
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
