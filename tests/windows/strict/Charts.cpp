// Charts of Graph: the cells of their datasheets.

#include <algorithm>
#include <cctype>
#include <optional>
#include <string>
#include <utility>

#include "fakes/FakeSlide.h"
#include "windows/strict/Members.h"

namespace strict {
namespace {

/// The program that draws a chart. Cells that are typed show with its next Update.
struct Graph {
  std::shared_ptr<MSGraph::DataSheet> sheet;
  std::optional<MSGraph::Table> typed;

  [[nodiscard]] basic::Variant cell(std::size_t row, std::size_t column) const {
    const MSGraph::Table table = typed ? *typed : sheet->Cells();
    if (row >= table.rows() || column >= table.columns()) return basic::Empty{};
    return table.cell(row, column);
  }
  void cell(std::size_t row, std::size_t column, basic::Variant value) {
    const MSGraph::Table before = typed ? *typed : sheet->Cells();
    MSGraph::Table table(std::max(before.rows(), row + 1), std::max(before.columns(), column + 1));
    for (std::size_t i = 0; i < before.rows(); ++i) {
      for (std::size_t j = 0; j < before.columns(); ++j) table.cell(i, j, before.cell(i, j));
    }
    table.cell(row, column, std::move(value));
    typed = std::move(table);
  }
  void update() {
    if (!typed) return;
    sheet->Cells(withoutEmptyEnds(*typed));
    typed.reset();
  }

 private:
  static MSGraph::Table withoutEmptyEnds(const MSGraph::Table& table) {
    std::size_t rows = 1;
    std::size_t columns = 1;
    for (std::size_t i = 0; i < table.rows(); ++i) {
      for (std::size_t j = 0; j < table.columns(); ++j) {
        if (std::holds_alternative<basic::Empty>(table.cell(i, j))) continue;
        rows = std::max(rows, i + 1);
        columns = std::max(columns, j + 1);
      }
    }
    MSGraph::Table used(rows, columns);
    for (std::size_t i = 0; i < rows; ++i) {
      for (std::size_t j = 0; j < columns; ++j) used.cell(i, j, table.cell(i, j));
    }
    return used;
  }
};

struct Range {
  std::shared_ptr<Graph> graph;
  std::size_t row = 0;
  std::size_t column = 0;

  [[nodiscard]] basic::Variant value() const { return graph->cell(row, column); }
  void value(basic::Variant value) { graph->cell(row, column, std::move(value)); }
  void clear() { value(basic::Empty{}); }
};

/// "A0" heads the first series, "01" is the first category, "00" the corner.
std::shared_ptr<Range> rangeNamed(const std::shared_ptr<Graph>& graph, const std::string& name) {
  Range range{graph};
  std::size_t at = 0;
  if (name.at(0) == '0') {
    at = 1;
  } else {
    for (; std::isalpha(static_cast<unsigned char>(name.at(at))) != 0; ++at) {
      range.column = range.column * 26 + static_cast<std::size_t>(name[at] - 'A') + 1;
    }
  }
  if (name.find_first_not_of("0123456789", at) != std::string::npos) fakes::Fail("no range " + name);
  range.row = std::stoul(name.substr(at));
  return std::make_shared<Range>(std::move(range));
}

struct Sheet {
  std::shared_ptr<Graph> graph;
};

}  // namespace

Class<Range> describe(Tag<Range>) {
  return Table<Range>("Range")
      .property(L"Value", Kind::Any, &Range::value, &Range::value)
      .call(L"ClearContents", &Range::clear);
}

Class<Sheet> describe(Tag<Sheet>) {
  return Table<Sheet>("DataSheet")
      .call(L"Range", {Kind::Text}, [](const auto& it, const Arguments& arguments) {
        return rangeNamed(it->graph, arguments.text(0));
      });
}

Class<Graph> describe(Tag<Graph>) {
  return Table<Graph>("Application")
      .get(L"DataSheet", [](const auto& it) { return std::make_shared<Sheet>(Sheet{it}); })
      .call(L"Update", &Graph::update);
}

Class<MSGraph::Chart> describe(Tag<MSGraph::Chart>) {
  return Table<MSGraph::Chart>("Chart").get(L"Application", [](const auto& it) {
    return std::make_shared<Graph>(Graph{it->Application()->DataSheet(), {}});
  });
}

Class<PowerPoint::OLEFormat> describe(Tag<PowerPoint::OLEFormat>) {
  using PowerPoint::OLEFormat;
  return Table<OLEFormat>("OLEFormat").get(L"ProgID", &OLEFormat::ProgID).get(L"Object", &OLEFormat::Object);
}

}  // namespace strict
