// How many shapes are linked at once: what is to be linked to what, and what stands in the way.

#include "model/modManyLinks.h"

#include <set>

#include "model/clsShape.h"
#include "model/modPlaces.h"
#include "model/modShapeGrid.h"
#include "model/modSlides.h"
#include "model/modTags.h"

namespace LF2000::modManyLinks {

namespace {

using modFieldNames::Field;
using modLinkable::Shows;

/// Adds what concerns one slide.
class SlidePlan {
 public:
  SlidePlan(Plan& plan, PowerPoint::Slide& slide) : plan_(plan), index_(slide.SlideIndex()), names_(slide) {}

  void Hinder(const std::string& sentence) {
    plan_.Hindrances.push_back("Slide " + std::to_string(index_) + ": " + sentence);
  }

  void HinderShape(const PowerPoint::Shape& shape, const std::string& why) {
    Hinder("Shape '" + shape.Name() + "' " + why + ".");
  }

  /// Plans the link unless shape or column do not take it.
  void Link(const std::shared_ptr<PowerPoint::Shape>& shape, Field value, const Source& source) {
    const modLinkable::Answer linkable = modLinkable::Examine(*shape);
    if (linkable.What == Shows::Nothing) return HinderShape(*shape, linkable.Why);
    if (linkable.What == Shows::Graph) {
      return HinderShape(*shape, "is a chart, which takes a connection as a whole");
    }
    if (linkable.What == Shows::Table) {
      return HinderShape(*shape, "is a table, which takes a connection as a whole");
    }
    if (const std::string why = names_.WhyNotByName(*shape); !why.empty()) return HinderShape(*shape, why);
    if (source.Columns) {
      const std::string* column = source.Columns->Find(value.Column);
      if (column == nullptr) {
        return HinderShape(*shape, "is for the column '" + value.Column + "', which connection " +
                                       source.Connection +
                                       " does not have. It has: " + source.Columns->List());
      }
      value.Column = *column;
    }
    if (!modFieldNames::CanBeLinked(value.Column)) {
      return HinderShape(*shape,
                         "is for a column whose name holds a tab or another control character, which "
                         "no link can store");
    }
    plan_.Links.push_back({index_, shape, linkable.What, source.Connection, std::move(value)});
  }

 private:
  Plan& plan_;
  std::int32_t index_;
  modLinkable::NameCounts names_;
};

/// What is linked shows data, be they like a mark.
bool IsLinked(PowerPoint::Shape& shape) { return modTags::CountTags(*shape.Tags(), modTags::ColumnType) > 0; }

/// Calls visit(shape, group) for the slide's shapes, with a null group, and for those in groups.
template <typename Visit>
void ForEachShapeAndItem(PowerPoint::Slide& slide, const Visit& visit) {
  modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
    visit(shape, std::shared_ptr<PowerPoint::Shape>());
    if (shape->Type() != PowerPoint::ShapeType::Group) return;
    const auto items = shape->GroupItems();
    for (std::int32_t i = 1; i <= items->Count(); ++i) visit(items->Item(i), shape);
  });
}

}  // namespace

void AddShapes(Plan& plan, PowerPoint::Slide& slide,
               const std::vector<std::pair<std::shared_ptr<PowerPoint::Shape>, Field>>& values,
               const Source& source) {
  SlidePlan own(plan, slide);
  for (const auto& [shape, value] : values) own.Link(shape, value, source);
}

void AddGrid(Plan& plan, PowerPoint::Slide& slide, const GridWish& wish, const Source& source) {
  SlidePlan own(plan, slide);
  bool areColumnsKnown = true;
  for (const std::string& column : wish.Columns) {
    if (column.empty() || !source.Columns || source.Columns->Find(column) != nullptr) continue;
    own.Hinder("Connection " + source.Connection + " has no column '" + column +
               "'. It has: " + source.Columns->List() + ".");
    areColumnsKnown = false;
  }
  const std::size_t width = wish.Columns.size();
  const modShapeGrid::Grid grid = modShapeGrid::FindGrid(modPlaces::PlacesOf(slide), wish.Start, wish.Rows,
                                                         static_cast<std::int32_t>(width));
  for (const std::string& sentence : grid.Hindrances) own.Hinder(sentence);
  if (!areColumnsKnown || !grid.Hindrances.empty()) return;
  for (std::size_t place = 0; place < grid.Cells.size(); ++place) {
    const std::string& column = wish.Columns[place % width];
    if (column.empty()) continue;
    const auto row = static_cast<std::int32_t>(place / width);
    own.Link(grid.Cells[place].Shape, {column, wish.FirstRow + row}, source);
  }
}

void AddNames(Plan& plan, PowerPoint::Slide& slide, const Source& source,
              const std::vector<std::shared_ptr<PowerPoint::Shape>>& among) {
  SlidePlan own(plan, slide);
  std::set<std::int32_t> ids;
  for (const auto& shape : among) ids.insert(shape->Id());
  ForEachShapeAndItem(slide, [&](const auto& shape, const auto& group) {
    if (!ids.empty() && !ids.contains(shape->Id())) return;
    auto field = modFieldNames::FromShapeName(shape->Name(), source.Columns.value());
    if (!field) return;
    if (group) return own.HinderShape(*shape, modLinkable::WhyNotInGroup(*group));
    own.Link(shape, *std::move(field), source);
  });
}

void AddTexts(Plan& plan, PowerPoint::Slide& slide, const FindSource& find) {
  SlidePlan own(plan, slide);
  ForEachShapeAndItem(slide, [&](const auto& shape, const auto& group) {
    if (!shape->HasTextFrame() || IsLinked(*shape)) return;
    auto mark = modFieldNames::FromText(shape->TextFrame()->TextRange()->Text());
    if (!mark) return;
    if (!mark->Problem.empty()) return own.HinderShape(*shape, "holds a mark that " + mark->Problem);
    if (group) return own.HinderShape(*shape, modLinkable::WhyNotInGroup(*group));
    const Source* source = find(mark->Connection);
    if (source != nullptr) return own.Link(shape, std::move(mark->Value), *source);
    own.HinderShape(*shape, mark->Connection.empty()
                                ? "holds a mark that names no connection: it is written {{001.Column.1}}"
                                : "is for connection " + mark->Connection + ", which is not there");
  });
}

void Write(const Plan& plan, const std::optional<Files>& files) {
  clsShape target;
  for (const PlannedLink& link : plan.Links) {
    const bool showsFile = link.Shows == Shows::File;
    target.ShapeItem(link.Shape);
    target.KeepCurrent();
    target.SourceType(
        static_cast<std::int32_t>(showsFile ? SourceType::LinkedObject : SourceType::DataField));
    target.NewConnectionTagNumber(link.Connection);
    target.NewColumnName(link.Value.Column);
    target.NewRow(link.Value.Row);
    if (files) {
      target.NewObjectFolder(files->Folder);
      target.NewObjectExtension(files->Extension);
    }
    target.SetShapeTags();
  }
}

}  // namespace LF2000::modManyLinks
