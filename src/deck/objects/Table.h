#pragma once

#include <memory>
#include <vector>

#include "deck/objects/Presentation.h"

namespace deck {

/// A table on a slide, its cells by their places.
class Table final : public PowerPoint::Table {
 public:
  /// `frame` is the p:graphicFrame of a table.
  Table(std::shared_ptr<Presentation> presentation, std::int32_t slideIndex, pugi::xml_node frame);

  [[nodiscard]] std::int32_t RowCount() const override { return static_cast<std::int32_t>(rows_.size()); }
  [[nodiscard]] std::int32_t ColumnCount() const override { return columnCount_; }
  [[nodiscard]] bool FirstRow() const override { return property("firstRow"); }
  [[nodiscard]] bool LastRow() const override { return property("lastRow"); }
  [[nodiscard]] bool IsCovered(std::int32_t row, std::int32_t column) const override;
  [[nodiscard]] std::string Text(std::int32_t row, std::int32_t column) const override;
  void Text(std::int32_t row, std::int32_t column, std::string_view text) override;
  void Restore() override;

 private:
  [[nodiscard]] bool property(const char* name) const;
  /// Null where a row lacks it.
  [[nodiscard]] pugi::xml_node cell(std::int32_t row, std::int32_t column) const;

  std::shared_ptr<Presentation> presentation_;
  std::int32_t slideIndex_;
  pugi::xml_node frame_;
  pugi::xml_node table_;
  std::int32_t columnCount_ = 0;
  std::vector<std::vector<pugi::xml_node>> rows_;
};

}  // namespace deck
