#include "workbook/drawing/SheetLayout.h"

#include <cmath>

#include "workbook/book/Xml.h"

namespace workbook {
namespace {

/// Of Calibri 11, in px; widths are given in its digits (18.3.1.13).
constexpr double DigitWidth = 7;
constexpr double UsualWidth = 64;
constexpr double UsualHeight = 20;

double pxOfWidth(double digits) {
  return std::trunc((256 * digits + std::trunc(128 / DigitWidth)) / 256 * DigitWidth);
}

/// Nothing that a sheet can say goes beyond these.
bool isWidth(double digits) { return digits >= 0 && digits <= 255; }
bool isHeight(double points) { return points >= 0 && points <= 409.5; }

}  // namespace

SheetLayout::SheetLayout(const Parts& parts, const std::string& sheetPart)
    : usualWidth_(UsualWidth), usualHeight_(UsualHeight) {
  const auto document = xml::parse(parts, sheetPart);
  const pugi::xml_node root = document->document_element();
  const pugi::xml_node view = xml::child(xml::child(root, "sheetViews"), "sheetView");
  showsGrid_ = xml::attribute(view, "showGridLines").empty() || xml::flag(view, "showGridLines");

  const pugi::xml_node usual = xml::child(root, "sheetFormatPr");
  const double width = usual.attribute("defaultColWidth").as_double(-1);
  if (isWidth(width)) usualWidth_ = pxOfWidth(width);
  const double height = usual.attribute("defaultRowHeight").as_double(-1);
  if (isHeight(height)) usualHeight_ = height * PxPerPoint;

  for (const pugi::xml_node column : xml::child(root, "cols").children()) {
    const auto first = xml::number(xml::attribute(column, "min"));
    const auto last = xml::number(xml::attribute(column, "max"));
    const double digits = column.attribute("width").as_double(-1);
    if (!first || !last) continue;
    const double px = xml::flag(column, "hidden") ? 0 : isWidth(digits) ? pxOfWidth(digits) : usualWidth_;
    columns_[*first] = {*last, px};
  }
  std::uint32_t number = 0;
  for (const pugi::xml_node row : xml::child(root, "sheetData").children()) {
    number = xml::number(xml::attribute(row, "r")).value_or(number + 1);
    const double points = row.attribute("ht").as_double(-1);
    if (xml::flag(row, "hidden")) {
      heights_[number] = 0;
    } else if (isHeight(points)) {
      heights_[number] = points * PxPerPoint;
    }
  }
  for (const pugi::xml_node cells : xml::child(root, "mergeCells").children()) {
    if (const auto reference = basic::ParseReference(xml::attribute(cells, "ref"))) {
      merged_.push_back(reference->area);
    }
  }
}

double SheetLayout::width(std::uint32_t column) const {
  auto found = columns_.upper_bound(column);
  if (found == columns_.begin()) return usualWidth_;
  --found;
  return column <= found->second.last ? found->second.width : usualWidth_;
}

double SheetLayout::height(std::uint32_t row) const {
  const auto found = heights_.find(row);
  return found == heights_.end() ? usualHeight_ : found->second;
}

}  // namespace workbook
