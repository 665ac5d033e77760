#include "model/modGraph.h"

#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Strings.h"

namespace LF2000::modGraph {

namespace {

std::shared_ptr<MSGraph::DataSheet> DataSheetOf(PowerPoint::Shape& shape) {
  return shape.OLEFormat()->Object()->Application()->DataSheet();
}

}  // namespace

bool IsGraph(PowerPoint::Shape& shape) {
  std::string progId;
  modGlobalFunctions::IgnoreErrors([&] { progId = shape.OLEFormat()->ProgID(); });
  return basic::StartsWith(progId, "MSGraph.Chart") && DataSheetOf(shape) != nullptr;
}

std::function<void()> PrepareGraph(PowerPoint::Shape& shape, clsConnection& connection) {
  MSGraph::Table table;
  if (!connection.GetValueGraph(table)) return [] {};
  auto sheet = DataSheetOf(shape);
  sheet->Check(table);
  return [sheet = std::move(sheet), table = std::move(table)] { sheet->Cells(table); };
}

void FillGraph(PowerPoint::Shape& shape, clsConnection& connection) { PrepareGraph(shape, connection)(); }

void RestoreGraph(PowerPoint::Shape& shape) {
  modGlobalFunctions::IgnoreErrors([&] { DataSheetOf(shape)->Restore(); });
}

}  // namespace LF2000::modGraph
