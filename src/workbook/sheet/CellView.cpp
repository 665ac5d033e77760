#include "workbook/sheet/CellView.h"

namespace workbook {

using Kind = CellData::Kind;

/// Not for a blank cell.
basic::CellValue CellView::content() const {
  switch (data_->kind) {
    case Kind::Number:
      return data_->number;
    case Kind::Boolean:
      return data_->number != 0.0;
    case Kind::Error:
      return basic::CellError{data_->text};
    case Kind::SharedText:
      return book_.strings().at(data_->shared);
    case Kind::Text:
    case Kind::Blank:
      break;
  }
  return data_->text;
}

std::string CellView::Text() const {
  if (data_->kind == Kind::Blank) return {};
  const CellFormat& format = styles_.at(data_->style);
  const basic::CellValue value = content();
  if (const auto* text = std::get_if<std::string_view>(&value); text != nullptr && format.isPlain) {
    return std::string(*text);
  }
  return basic::FormatNumber(format.format, value, basic::UserLocale(), book_.dateSystem());
}

basic::Variant CellView::Value() const {
  if (data_->kind == Kind::Blank) return basic::Empty();
  const basic::CellValue value = content();
  if (const auto* number = std::get_if<double>(&value)) {
    // 1 January 1904, counted from 30 December 1899.
    constexpr double Since1904 = 1462.0;
    const bool is1904Date =
        book_.dateSystem() == basic::DateSystem::From1904 && styles_.at(data_->style).format.isDateTime();
    return *number + (is1904Date ? Since1904 : 0.0);
  }
  if (const auto* truth = std::get_if<bool>(&value)) return *truth;
  if (const auto* error = std::get_if<basic::CellError>(&value)) return std::string(error->text);
  return std::string(std::get<std::string_view>(value));
}

std::string CellView::NumberFormat() const { return styles_.at(data_->style).code; }

}  // namespace workbook
