#include "workbook/book/Styles.h"

#include <utility>

#include "workbook/book/Xml.h"

namespace workbook {

Styles::Styles(const Parts& parts, const std::string& part) {
  if (part.empty()) return;
  const auto document = xml::parse(parts, part);
  const pugi::xml_node root = document->document_element();
  std::map<std::uint32_t, std::string> custom;
  for (pugi::xml_node format : xml::child(root, "numFmts").children()) {
    const auto number = xml::number(xml::attribute(format, "numFmtId"));
    if (number) custom.insert_or_assign(*number, std::string(xml::attribute(format, "formatCode")));
  }
  for (pugi::xml_node style : xml::child(root, "cellXfs").children()) {
    if (xml::localName(style.name()) != "xf") continue;
    styles_.push_back(formatOf(xml::number(xml::attribute(style, "numFmtId")).value_or(0), custom));
  }
}

/// A number that stands for nothing is General.
const CellFormat* Styles::formatOf(std::uint32_t number, const std::map<std::uint32_t, std::string>& custom) {
  const auto [place, isNew] = formats_.try_emplace(number);
  CellFormat& format = place->second;
  if (!isNew) return &format;
  if (const auto found = custom.find(number); found != custom.end()) {
    format.code = found->second;
  } else if (number <= 0xFFFF) {
    if (auto code = basic::BuiltInNumberFormat(static_cast<int>(number))) format.code = *std::move(code);
  }
  if (format.code.empty()) format.code = "General";
  format.format = basic::NumberFormat(format.code);
  format.isPlain = format.code == "General" || format.code == "@";
  return &format;
}

const CellFormat& Styles::at(std::size_t style) const {
  return style < styles_.size() ? *styles_[style] : general_;
}

}  // namespace workbook
