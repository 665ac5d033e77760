// A chart's data: filled, put back, and nothing written that is there.

#include "windows/automation/Datasheet.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace windows::automation {
namespace {

using Grid = std::map<std::pair<std::size_t, std::size_t>, basic::Variant>;

struct Sheet {
  Grid cells;
  int writes = 0;
  std::string shown;
};

struct Cells final : ChartCells {
  explicit Cells(Sheet& owner) : sheet(owner) {}
  basic::Variant cell(std::size_t row, std::size_t column) const override {
    const auto found = sheet.cells.find({row, column});
    return found == sheet.cells.end() ? basic::Variant() : found->second;
  }
  void cell(std::size_t row, std::size_t column, const basic::Variant& value) override {
    ++sheet.writes;
    if (std::holds_alternative<basic::Empty>(value)) {
      sheet.cells.erase({row, column});
    } else {
      sheet.cells[{row, column}] = value;
    }
  }
  void show(std::size_t rows, std::size_t columns) override { sheet.shown = cellName(rows - 1, columns - 1); }
  Sheet& sheet;
};

struct Source final : CellSource {
  explicit Source(Sheet& owner) : sheet(owner) {}
  std::unique_ptr<ChartCells> open() override { return std::make_unique<Cells>(sheet); }
  Sheet& sheet;
};

MSGraph::Table table(std::vector<std::vector<basic::Variant>> rows) {
  MSGraph::Table cells(rows.size(), rows[0].size());
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      cells.cell(row, column, std::move(rows[row][column]));
    }
  }
  return cells;
}

TEST(DataSheet, FillsWithNumbersAndPutsTheAuthorsBack) {
  Sheet sheet;
  sheet.cells = {{{0, 1}, "East"}, {{0, 2}, "West"}, {{1, 0}, "Q1"}, {{1, 1}, 20.0},
                 {{1, 2}, 30.0},   {{2, 0}, "Q2"},   {{2, 1}, 27.0}};
  const Grid author = sheet.cells;
  const auto own = std::make_shared<AuthorsOwn>();
  const auto dataSheet = [&] { return DataSheet(std::make_unique<Source>(sheet), own, {256, 2}); };
  EXPECT_EQ(dataSheet().Cells().rows(), 3U);
  EXPECT_EQ(dataSheet().Cells().columns(), 3U);

  using basic::Variant;
  const auto live = table({{Variant(), "Rate"}, {"007", "4.5"}, {"008", "none"}, {"009", basic::Null{}}});
  dataSheet().Cells(live);
  EXPECT_EQ(sheet.cells,
            (Grid{{{0, 1}, "Rate"}, {{1, 0}, "007"}, {{1, 1}, 4.5}, {{2, 0}, "008"}, {{3, 0}, "009"}}))
      << "text that is a number is one, other text among them a gap; categories stay";
  EXPECT_EQ(sheet.shown, "B4");

  sheet.writes = 0;
  dataSheet().Cells(live);
  EXPECT_EQ(sheet.writes, 0);
  dataSheet().Cells(table({{Variant(), "Rate"}, {"007", "5"}, {"008", "none"}, {"009", basic::Null{}}}));
  EXPECT_EQ(sheet.writes, 1) << "what differs alone";

  dataSheet().Restore();
  EXPECT_EQ(sheet.cells, author);
  EXPECT_EQ(sheet.shown, "C3");
  sheet.writes = 0;
  dataSheet().Restore();
  EXPECT_EQ(sheet.writes, 0);
}

}  // namespace
}  // namespace windows::automation
