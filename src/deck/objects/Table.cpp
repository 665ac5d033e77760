#include "deck/objects/Table.h"

#include "deck/Failure.h"
#include "deck/objects/TextBody.h"

namespace deck {

Table::Table(std::shared_ptr<Presentation> presentation, std::int32_t slideIndex, pugi::xml_node frame)
    : presentation_(std::move(presentation)),
      slideIndex_(slideIndex),
      frame_(frame),
      table_(presentationml::table(frame)) {
  for ([[maybe_unused]] const pugi::xml_node column : table_.child("a:tblGrid").children("a:gridCol")) {
    ++columnCount_;
  }
  for (const pugi::xml_node row : table_.children("a:tr")) {
    const auto cells = row.children("a:tc");
    rows_.emplace_back(cells.begin(), cells.end());
  }
}

bool Table::property(const char* name) const { return table_.child("a:tblPr").attribute(name).as_bool(); }

pugi::xml_node Table::cell(std::int32_t row, std::int32_t column) const {
  if (row < 1 || row > RowCount() || column < 1 || column > ColumnCount()) {
    fail("The table " + basic::InQuotes(presentationml::shapeName(frame_)) + " on slide " +
         std::to_string(slideIndex_) + " has no cell in row " + std::to_string(row) + ", column " +
         std::to_string(column) + ".");
  }
  const std::vector<pugi::xml_node>& cells = rows_[static_cast<std::size_t>(row - 1)];
  const auto index = static_cast<std::size_t>(column - 1);
  return index < cells.size() ? cells[index] : pugi::xml_node();
}

bool Table::IsCovered(std::int32_t row, std::int32_t column) const {
  const pugi::xml_node node = cell(row, column);
  return !node || node.attribute("hMerge").as_bool() || node.attribute("vMerge").as_bool();
}

std::string Table::Text(std::int32_t row, std::int32_t column) const {
  return IsCovered(row, column) ? std::string() : textOf(cell(row, column).child("a:txBody"));
}

void Table::Text(std::int32_t row, std::int32_t column, std::string_view text) {
  if (IsCovered(row, column) || Text(row, column) == text) return;
  pugi::xml_node node = cell(row, column);
  presentation_->authorsCells().keep(table_, node);
  pugi::xml_node body = node.child("a:txBody");
  if (!body) body = addCellText(node);
  if (setText(body, text)) presentation_->noteCellChange(slideIndex_, frame_, row, column);
}

void Table::Restore() {
  if (presentation_->authorsCells().restore(table_)) presentation_->noteShapeChange(slideIndex_, frame_);
}

}  // namespace deck
