#include "model/modSlideRows.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "model/clsShape.h"
#include "model/modSlides.h"

namespace LF2000::modSlideRows {

namespace {

bool HasValue(clsConnection& connection, const ShownData& shown) {
  if (shown.IsWhole) return connection.RecordCount() > 0;
  bool noValue = true;
  static_cast<void>(connection.GetValueDatabase(shown.Row, shown.Column, /*displayType=*/1,
                                                /*showMarkers=*/false, noValue));
  return !noValue;
}

}  // namespace

std::vector<ShownData> ShownOn(PowerPoint::Slide& slide) {
  std::vector<ShownData> all;
  clsShape link;
  modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
    link.ShapeItem(shape);
    if (link.ConnectionTagNumber().empty()) return;
    all.push_back({link.ConnectionTagNumber(), link.ColumnName(), link.Row(),
                   link.SourceType() == static_cast<std::int32_t>(SourceType::Graph)});
  });
  return all;
}

std::vector<ConnectionRows> RowsOf(const clsPresentation& presentation, const std::vector<ShownData>& shown) {
  std::map<std::string, ConnectionRows> all;
  for (const ShownData& each : shown) {
    ConnectionRows& rows = all[each.Number];
    rows.Number = each.Number;
    const auto connection = presentation.FindConnection(each.Number);
    if (!connection || !connection->RecordsetReady()) continue;
    rows.Rows = static_cast<std::int64_t>(connection->RecordCount());
    if (rows.HasValue) continue;
    bool isRead = false;
    modGlobalFunctions::IgnoreErrors([&] {
      rows.HasValue = HasValue(*connection, each);
      isRead = true;
    });
    if (!isRead) rows.IsFaulty = true;
  }
  std::vector<ConnectionRows> list;
  for (auto& entry : all) list.push_back(std::move(entry.second));
  return list;
}

bool Hides(const clsSlide& properties, const std::vector<ConnectionRows>& connections) {
  return properties.HideWhenNoData() && !connections.empty() &&
         std::all_of(connections.begin(), connections.end(), [](const ConnectionRows& each) {
           return each.Rows && !each.HasValue && !each.IsFaulty;
         });
}

}  // namespace LF2000::modSlideRows
