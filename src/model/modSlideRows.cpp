#include "model/modSlideRows.h"

#include <algorithm>
#include <memory>

#include "model/clsShape.h"
#include "model/modSlides.h"

namespace LF2000::modSlideRows {

std::set<std::string> ConnectionNumbers(PowerPoint::Slide& slide) {
  std::set<std::string> numbers;
  clsShape link;
  modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
    link.ShapeItem(shape);
    if (!link.ConnectionTagNumber().empty()) numbers.insert(link.ConnectionTagNumber());
  });
  return numbers;
}

std::vector<ConnectionRows> RowsOf(const clsPresentation& presentation,
                                   const std::set<std::string>& numbers) {
  std::vector<ConnectionRows> all;
  for (const std::string& number : numbers) {
    ConnectionRows& rows = all.emplace_back(ConnectionRows{number, std::nullopt});
    const auto connection = presentation.FindConnection(number);
    if (connection && connection->RecordsetReady()) {
      rows.Rows = static_cast<std::int64_t>(connection->RecordCount());
    }
  }
  return all;
}

bool Hides(const clsSlide& properties, const std::vector<ConnectionRows>& connections) {
  return properties.HideWhenNoData() && !connections.empty() &&
         std::all_of(connections.begin(), connections.end(),
                     [](const ConnectionRows& each) { return each.Rows && *each.Rows <= 0; });
}

}  // namespace LF2000::modSlideRows
