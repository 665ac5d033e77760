#include "model/modLinkEdits.h"

#include <algorithm>
#include <map>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Counted.h"
#include "model/clsPresentation.h"
#include "model/modCommandState.h"
#include "model/modGraph.h"
#include "model/modLinkedFiles.h"
#include "model/modSample.h"
#include "model/modTable.h"
#include "model/modTags.h"

namespace LF2000::modLinkEdits {

namespace {

void ShowAuthors(PowerPoint::Shape& shape, std::int32_t sourceType) {
  if (sourceType == static_cast<std::int32_t>(SourceType::LinkedObject)) {
    modGlobalFunctions::IgnoreErrors([&] { modLinkedFiles::ShowOwnContent(shape); });
  } else if (sourceType == static_cast<std::int32_t>(SourceType::Graph)) {
    modGraph::RestoreGraph(shape);
    modTable::RestoreTable(shape);
  }
}

void StartNewUndoEntry(std::string_view label, std::string_view run = {}) {
  if (const auto& application = modGlobalFunctions::HostApplication) {
    application->StartNewUndoEntry(label, run);
  }
}

/// What shapes showed before may have been sample data.
void TellLinked(clsPresentation& presentation) {
  if (modSample::Find(presentation)) modSample::Follow(presentation);
  modCommandState::TellChanged();
}

}  // namespace

void Begin(clsPresentation& presentation, std::string_view label, std::string_view run) {
  StartNewUndoEntry(label, run);
  presentation.RequireVersionTag();
}

void Rename(PowerPoint::Shape& shape, std::string_view name) {
  StartNewUndoEntry("Rename " + shape.Name());
  shape.Name(name);
}

void Show(clsPresentation& presentation, PowerPoint::Slide& slide, const Shapes& shapes) {
  for (const auto& shape : shapes) presentation.FillShape(slide, shape);
  TellLinked(presentation);
}

void Link(clsPresentation& presentation, const modManyLinks::Plan& plan, std::string_view label) {
  if (plan.Links.empty()) return;
  std::map<std::int32_t, Shapes> shapes;
  Shapes all;
  for (const modManyLinks::PlannedLink& link : plan.Links) {
    shapes[link.SlideIndex].push_back(link.Shape);
    all.push_back(link.Shape);
  }
  Begin(presentation, label.empty() ? "Link " + NameOf(all) : std::string(label));
  modManyLinks::Write(plan);
  const auto slides = presentation.ActivePresentation()->Slides();
  for (const auto& [index, linked] : shapes) Show(presentation, *slides->Item(index), linked);
}

void Unlink(clsPresentation& presentation, const Shapes& shapes) {
  clsShape link;
  Shapes linked;
  for (const auto& shape : shapes) {
    link.ShapeItem(shape);
    if (link.LumenfoldEnabled()) linked.push_back(shape);
  }
  if (linked.empty()) return;
  Begin(presentation, "Unlink " + NameOf(linked));
  for (const auto& shape : linked) {
    link.ShapeItem(shape);
    ShowAuthors(*shape, link.SourceType());
    link.RemoveLumenfold();
  }
  TellLinked(presentation);
}

std::string MoveRows(clsPresentation& presentation, PowerPoint::Slide& slide, const Shapes& shapes,
                     std::int32_t rows) {
  clsShape link;
  Shapes moved;
  for (const auto& shape : shapes) {
    link.ShapeItem(shape);
    const auto type = static_cast<SourceType>(link.SourceType());
    if (type != SourceType::DataField && type != SourceType::LinkedObject) continue;
    const double row = link.Row() + rows;
    if (row < 1 || row > modManyLinks::MostRows) {
      return "'" + shape->Name() + "' shows row " + basic::CStr(link.Row()) + "; rows count from 1 to " +
             std::to_string(modManyLinks::MostRows) + ".";
    }
    moved.push_back(shape);
  }
  if (moved.empty()) return "Nothing here shows a row.";
  Begin(presentation, (moved.size() == 1 ? "Row of " : "Rows of ") + NameOf(moved), RunOf("rows", moved));
  for (const auto& shape : moved) {
    link.ShapeItem(shape);
    link.KeepCurrent();
    link.NewRow(link.Row() + rows);
    link.SetShapeTags();
  }
  Show(presentation, slide, moved);
  return {};
}

modManyLinks::Source SourceOf(const clsPresentation& presentation, const std::string& connection) {
  modManyLinks::Source source;
  source.Connection = connection;
  const auto found = presentation.FindConnection(connection);
  if (found && found->RecordsetReady()) source.Columns.emplace(found->Columns());
  return source;
}

std::size_t CountOffers(const clsPresentation& presentation, PowerPoint::Slide& slide,
                        const std::string& connection) {
  const modManyLinks::Source source = SourceOf(presentation, connection);
  if (!source.Columns) return 0;
  modManyLinks::Plan plan;
  modManyLinks::AddNames(plan, slide, source);
  return static_cast<std::size_t>(std::count_if(plan.Links.begin(), plan.Links.end(), [](const auto& link) {
    return modTags::CountTags(*link.Shape->Tags(), modTags::ColumnType) == 0;
  }));
}

std::string NameOf(const Shapes& shapes) {
  return shapes.size() == 1 ? shapes.front()->Name() : basic::Counted(shapes.size(), "shape");
}

std::string RunOf(std::string_view what, const Shapes& shapes) {
  std::string run(what);
  for (const auto& shape : shapes) run += " " + std::to_string(shape->Id());
  return run;
}

}  // namespace LF2000::modLinkEdits
