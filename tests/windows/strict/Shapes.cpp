// Shapes, their texts, tags and links, and tables.

#include <string>
#include <utility>

#include "fakes/FakeSlide.h"
#include "windows/strict/Members.h"

namespace strict {
Class<PowerPoint::Tags> describe(Tag<PowerPoint::Tags>) {
  using PowerPoint::Tags;
  return Table<Tags>("Tags")
      .get(L"Count", &Tags::Count)
      .call(L"Name", {Kind::Number}, &Tags::Name)
      .call(L"Value", {Kind::Number}, &Tags::Value)
      .call(L"Add", {Kind::Text, Kind::Text}, &Tags::Add)
      .call(L"Delete", {Kind::Text}, &Tags::Delete);
}

Class<PowerPoint::TextRange> describe(Tag<PowerPoint::TextRange>) {
  using PowerPoint::TextRange;
  return Table<TextRange>("TextRange")
      .property(L"Text", Kind::Text, &TextRange::Text, &TextRange::Text)
      .call(L"InsertDateTime", {Kind::Number, optional(Kind::TriState)}, &TextRange::InsertDateTime);
}

Class<PowerPoint::TextFrame> describe(Tag<PowerPoint::TextFrame>) {
  using PowerPoint::TextFrame;
  return Table<TextFrame>("TextFrame")
      .triState(L"HasText", &TextFrame::HasText)
      .get(L"TextRange", &TextFrame::TextRange);
}

namespace {

/// In the object model a shape has one source. That of the author is known again by its name.
struct Link {
  std::shared_ptr<PowerPoint::LinkFormat> port;
  std::string own;

  [[nodiscard]] std::string source() const { return port->SourceFullName(); }
  void source(std::string_view path) { port->SourceFullName(path == own ? "" : path); }
  void update() { port->Update(); }
  void breakOff() { port->BreakLink(); }
};

std::shared_ptr<Link> linkOf(PowerPoint::Shape& shape) {
  const auto* fake = dynamic_cast<fakes::Shape*>(&shape);
  return std::make_shared<Link>(Link{shape.LinkFormat(), fake == nullptr ? "" : fake->linkSource});
}

/// A place of a table. In the object model the places of a merged cell are one shape.
struct Cell {
  std::shared_ptr<PowerPoint::Table> table;
  std::int32_t row;
  std::int32_t column;

  /// Fakes merge with the cell above.
  [[nodiscard]] std::int32_t top() const {
    std::int32_t first = row;
    while (table->IsCovered(first, column)) --first;
    return first;
  }
  [[nodiscard]] bool isMerged() const {
    return table->IsCovered(row, column) || (row < table->RowCount() && table->IsCovered(row + 1, column));
  }
};

/// The text of a cell.
struct CellText final : PowerPoint::TextRange, PowerPoint::TextFrame, std::enable_shared_from_this<CellText> {
  explicit CellText(Cell itsCell) : cell(std::move(itsCell)) {}
  bool HasText() const override { return !Text().empty(); }
  std::shared_ptr<PowerPoint::TextRange> TextRange() override { return shared_from_this(); }
  std::string Text() const override { return cell.table->Text(cell.top(), cell.column); }
  void Text(std::string_view text) override { cell.table->Text(cell.top(), cell.column, text); }
  void InsertDateTime(PowerPoint::DateTimeFormat, bool) override { fakes::Fail("a cell is no clock"); }
  Cell cell;
};

/// What a cell shows is a shape.
struct CellShape {
  Cell cell;
};

/// Rows or columns, of which there are so many.
struct Lines {
  std::int32_t count;
};

}  // namespace

Class<Link> describe(Tag<Link>) {
  return Table<Link>("LinkFormat")
      .property(L"SourceFullName", Kind::Text, &Link::source, &Link::source)
      .call(L"Update", &Link::update)
      .call(L"BreakLink", &Link::breakOff);
}

Class<CellShape> describe(Tag<CellShape>) {
  return Table<CellShape>("Shape")
      .get(L"Left", [](const auto& it) { return 100.0 * it->cell.column; })
      .get(L"Top", [](const auto& it) { return 20.0 * it->cell.top(); })
      .get(L"TextFrame", [](const auto& it) -> std::shared_ptr<PowerPoint::TextFrame> {
        return std::make_shared<CellText>(it->cell);
      });
}

Class<Cell> describe(Tag<Cell>) {
  return Table<Cell>("Cell").get(L"Merged", &Cell::isMerged).get(L"Shape", [](const auto& it) {
    return std::make_shared<CellShape>(CellShape{*it});
  });
}

Class<Lines> describe(Tag<Lines>) {
  return Table<Lines>("Rows or Columns").get(L"Count", [](const auto& it) { return it->count; });
}

Class<PowerPoint::Table> describe(Tag<PowerPoint::Table>) {
  using Target = PowerPoint::Table;
  return Table<Target>("Table")
      .get(L"Rows", [](const auto& it) { return std::make_shared<Lines>(Lines{it->RowCount()}); })
      .get(L"Columns", [](const auto& it) { return std::make_shared<Lines>(Lines{it->ColumnCount()}); })
      .get(L"FirstRow", &Target::FirstRow)
      .get(L"LastRow", &Target::LastRow)
      .call(L"Cell", {Kind::Number, Kind::Number}, [](const auto& it, const Arguments& arguments) {
        return std::make_shared<Cell>(Cell{it, arguments.number(0), arguments.number(1)});
      });
}

Class<PowerPoint::GroupShapes> describe(Tag<PowerPoint::GroupShapes>) {
  using PowerPoint::GroupShapes;
  return Table<GroupShapes>("GroupShapes")
      .get(L"Count", &GroupShapes::Count)
      .call(L"Item", {Kind::Number}, &GroupShapes::Item);
}

Class<PowerPoint::Shape> describe(Tag<PowerPoint::Shape>) {
  using PowerPoint::Shape;
  return Table<Shape>("Shape")
      .get(L"Id", &Shape::Id)
      .property(L"Name", Kind::Text, &Shape::Name, &Shape::Name)
      .get(L"Type", &Shape::Type)
      .get(L"Left", &Shape::Left)
      .get(L"Top", &Shape::Top)
      .get(L"Width", &Shape::Width)
      .get(L"Height", &Shape::Height)
      .triState(L"HasTextFrame", &Shape::HasTextFrame)
      .get(L"TextFrame", &Shape::TextFrame)
      .get(L"Tags", &Shape::Tags)
      .get(L"LinkFormat", [](const auto& it) { return linkOf(*it); })
      // As in version 12 and later; a fake's chart is one of Graph's.
      .get(L"HasChart", [](const auto&) { return triState(false); })
      .get(L"OLEFormat", &Shape::OLEFormat)
      .triState(L"HasTable", &Shape::HasTable)
      .get(L"Table", &Shape::Table)
      .get(L"GroupItems", &Shape::GroupItems);
}

}  // namespace strict
