// Shapes, their texts, tags and links, and tables.

#include <string>
#include <utility>

#include "fakes/FakeSlide.h"
#include "windows/strict/Members.h"

namespace strict {
namespace {

const Class<PowerPoint::Tags>& tagsClass() {
  using Target = PowerPoint::Tags;
  static const Class<Target> type{
      "Tags",
      {get<Target>(L"Count", [](const auto& it) { return it->Count(); }),
       call<Target>(L"Name", {Kind::Number},
                    [](const auto& it, const Arguments& arguments) { return it->Name(arguments.number(0)); }),
       call<Target>(
           L"Value", {Kind::Number},
           [](const auto& it, const Arguments& arguments) { return it->Value(arguments.number(0)); }),
       call<Target>(
           L"Add", {Kind::Text, Kind::Text},
           [](const auto& it, const Arguments& arguments) { it->Add(arguments.text(0), arguments.text(1)); }),
       call<Target>(L"Delete", {Kind::Text},
                    [](const auto& it, const Arguments& arguments) { it->Delete(arguments.text(0)); })}};
  return type;
}

const Class<PowerPoint::TextRange>& textRangeClass() {
  using Target = PowerPoint::TextRange;
  static const Class<Target> type{
      "TextRange",
      {get<Target>(L"Text", [](const auto& it) { return it->Text(); }),
       put<Target>(L"Text", Kind::Text,
                   [](const auto& it, const Arguments& arguments) { it->Text(arguments.text(0)); }),
       call<Target>(L"InsertDateTime", {Kind::Number, optional(Kind::TriState)},
                    [](const auto& it, const Arguments& arguments) {
                      const auto format = static_cast<PowerPoint::DateTimeFormat>(arguments.number(0));
                      it->InsertDateTime(format, !arguments.isMissing(1) && arguments.flag(1));
                    })}};
  return type;
}

const Class<PowerPoint::TextFrame>& textFrameClass() {
  using Target = PowerPoint::TextFrame;
  static const Class<Target> type{
      "TextFrame",
      {get<Target>(L"HasText", [](const auto& it) { return triState(it->HasText()); }),
       get<Target>(L"TextRange",
                   [](const auto& it) { return dispatchOf(it->TextRange(), textRangeClass()); })}};
  return type;
}

/// In the object model a shape has one source. That of the author is known again by its name.
struct Link {
  std::shared_ptr<PowerPoint::LinkFormat> port;
  std::string own;
};

const Class<Link>& linkClass() {
  static const Class<Link> type{
      "LinkFormat",
      {get<Link>(L"SourceFullName", [](const auto& it) { return it->port->SourceFullName(); }),
       put<Link>(L"SourceFullName", Kind::Text,
                 [](const auto& it, const Arguments& arguments) {
                   const std::string source = arguments.text(0);
                   it->port->SourceFullName(source == it->own ? "" : source);
                 }),
       action<Link>(L"Update", [](const auto& it) { it->port->Update(); }),
       action<Link>(L"BreakLink", [](const auto& it) { it->port->BreakLink(); })}};
  return type;
}

Ptr<IDispatch> linkOf(PowerPoint::Shape& shape) {
  const auto* fake = dynamic_cast<fakes::Shape*>(&shape);
  Link link{shape.LinkFormat(), fake == nullptr ? "" : fake->linkSource};
  return dispatchOf(std::make_shared<Link>(std::move(link)), linkClass());
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

const Class<CellShape>& cellShapeClass() {
  static const Class<CellShape> type{
      "Shape",
      {get<CellShape>(L"Left", [](const auto& it) { return 100.0 * it->cell.column; }),
       get<CellShape>(L"Top", [](const auto& it) { return 20.0 * it->cell.top(); }),
       get<CellShape>(L"TextFrame", [](const auto& it) {
         return dispatchOf(std::shared_ptr<PowerPoint::TextFrame>(std::make_shared<CellText>(it->cell)),
                           textFrameClass());
       })}};
  return type;
}

const Class<Cell>& cellClass() {
  static const Class<Cell> type{"Cell",
                                {get<Cell>(L"Merged", [](const auto& it) { return it->isMerged(); }),
                                 get<Cell>(L"Shape", [](const auto& it) {
                                   return dispatchOf(std::make_shared<CellShape>(CellShape{*it}),
                                                     cellShapeClass());
                                 })}};
  return type;
}

/// Rows or columns, of which there are so many.
struct Lines {
  std::int32_t count;
};
Ptr<IDispatch> lines(std::int32_t count) {
  static const Class<Lines> type{"Rows or Columns",
                                 {get<Lines>(L"Count", [](const auto& it) { return it->count; })}};
  return dispatchOf(std::make_shared<Lines>(Lines{count}), type);
}

const Class<PowerPoint::Table>& tableClass() {
  using Target = PowerPoint::Table;
  static const Class<Target> type{
      "Table",
      {get<Target>(L"Rows", [](const auto& it) { return lines(it->RowCount()); }),
       get<Target>(L"Columns", [](const auto& it) { return lines(it->ColumnCount()); }),
       get<Target>(L"FirstRow", [](const auto& it) { return it->FirstRow(); }),
       get<Target>(L"LastRow", [](const auto& it) { return it->LastRow(); }),
       call<Target>(L"Cell", {Kind::Number, Kind::Number}, [](const auto& it, const Arguments& arguments) {
         Cell cell{it, arguments.number(0), arguments.number(1)};
         return dispatchOf(std::make_shared<Cell>(std::move(cell)), cellClass());
       })}};
  return type;
}

const Class<PowerPoint::GroupShapes>& groupClass() {
  using Target = PowerPoint::GroupShapes;
  static const Class<Target> type{
      "GroupShapes",
      {get<Target>(L"Count", [](const auto& it) { return it->Count(); }),
       call<Target>(L"Item", {Kind::Number}, [](const auto& it, const Arguments& arguments) {
         return it->Item(arguments.number(0));
       })}};
  return type;
}

const Class<PowerPoint::Shape>& shapeClass() {
  using Target = PowerPoint::Shape;
  static const Class<Target> type{
      "Shape",
      {get<Target>(L"Id", [](const auto& it) { return it->Id(); }),
       get<Target>(L"Name", [](const auto& it) { return it->Name(); }),
       put<Target>(L"Name", Kind::Text,
                   [](const auto& it, const Arguments& arguments) { it->Name(arguments.text(0)); }),
       get<Target>(L"Type", [](const auto& it) { return it->Type(); }),
       get<Target>(L"Left", [](const auto& it) { return it->Left(); }),
       get<Target>(L"Top", [](const auto& it) { return it->Top(); }),
       get<Target>(L"Width", [](const auto& it) { return it->Width(); }),
       get<Target>(L"Height", [](const auto& it) { return it->Height(); }),
       get<Target>(L"HasTextFrame", [](const auto& it) { return triState(it->HasTextFrame()); }),
       get<Target>(L"TextFrame", [](const auto& it) { return it->TextFrame(); }),
       get<Target>(L"Tags", [](const auto& it) { return it->Tags(); }),
       get<Target>(L"LinkFormat", [](const auto& it) { return linkOf(*it); }),
       // As in version 12 and later; a fake's chart is one of Graph's.
       get<Target>(L"HasChart", [](const auto&) { return triState(false); }),
       get<Target>(L"OLEFormat", [](const auto& it) { return it->OLEFormat(); }),
       get<Target>(L"HasTable", [](const auto& it) { return triState(it->HasTable()); }),
       get<Target>(L"Table", [](const auto& it) { return it->Table(); }),
       get<Target>(L"GroupItems",
                   [](const auto& it) { return dispatchOf(it->GroupItems(), groupClass()); })}};
  return type;
}

}  // namespace

Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Tags>& target) { return dispatchOf(target, tagsClass()); }
Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::TextFrame>& target) {
  return dispatchOf(target, textFrameClass());
}
Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Table>& target) {
  return dispatchOf(target, tableClass());
}
Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Shape>& target) {
  return dispatchOf(target, shapeClass());
}

}  // namespace strict
