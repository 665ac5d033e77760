// Which shapes of a slide scroll together, from what its tags and theirs say.

#include "runtime/SlideScrolling.h"

#include <algorithm>
#include <string>
#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "model/modTable.h"
#include "runtime/RuntimeTables.h"

namespace LF2000 {

std::optional<clsRTShapeInfo> DataShapeOf(const clsShape& link) {
  const std::int32_t number = basic::CLng(link.ConnectionTagNumber());
  if (number < 1 || number >= static_cast<std::int32_t>(ConnectionPlaces)) return {};
  clsRTShapeInfo info;
  info.Name = link.ShapeItem()->Name();
  info.SourceType = link.SourceType();
  info.ConnectionNumber = link.ConnectionTagNumber();
  info.ConnectionKey = modGlobalFunctions::Format000(number);
  info.ColumnName = link.ColumnName();
  info.Row = link.Row();
  info.DateFormat = link.DateFormat();
  info.ObjectFolder = link.ObjectFolder();
  info.ObjectExtension = link.ObjectExtension();
  if (static_cast<SourceType>(info.SourceType) == SourceType::Graph && link.ShapeItem()->HasTable()) {
    info.Row = 1;
    info.TableRows = modTable::BodyRows(*link.ShapeItem()->Table());
  }
  return info;
}

std::vector<std::int32_t> ScrollingEntries(const clsSlide& properties) {
  std::vector<std::int32_t> numbers = properties.ScrollEntryNumbers();
  std::erase_if(numbers, [&](std::int32_t number) {
    const std::string key = std::to_string(number);
    return !properties.ScrollEnabled(key) || properties.ScrollStep(key) == 0;
  });
  return numbers;
}

namespace {

/// The scroll entry that a shape's name means, if it is a number.
std::int32_t EntryOfName(const clsRTShapeInfo& shape) {
  std::int32_t number = 0;
  modGlobalFunctions::IgnoreErrors([&] { number = basic::CLng(shape.Name); });
  return number;
}

bool ShowsRows(const clsRTShapeInfo& shape) {
  return shape.TableRows || shape.SourceType != static_cast<std::int32_t>(SourceType::Graph);
}

double LastRow(const clsRTShapeInfo& shape) {
  return shape.Row + std::max(0, shape.TableRows.value_or(1) - 1);
}

}  // namespace

std::vector<clsRTScrollInfo> JoinScrolling(const clsSlide& properties, std::vector<clsRTShapeInfo>& shapes) {
  std::vector<clsRTScrollInfo> scrolls;
  const auto join = [&](std::int32_t number, const auto& isMeant) {
    const std::string key = std::to_string(number);
    clsRTScrollInfo scroll;
    scroll.Step = properties.ScrollStep(key);
    scroll.Time = properties.ScrollTime(key);
    for (clsRTShapeInfo& shape : shapes) {
      if (!ShowsRows(shape) || shape.Scroll || !isMeant(shape)) continue;
      shape.Scroll = scrolls.size();
      scroll.FirstRow = scroll.ConnectionKey.empty() ? shape.Row : std::min(scroll.FirstRow, shape.Row);
      const double last = LastRow(shape);
      scroll.LastRow = scroll.ConnectionKey.empty() ? last : std::max(scroll.LastRow, last);
      scroll.ConnectionKey = shape.ConnectionKey;
    }
    if (scroll.ConnectionKey.empty()) return false;
    scrolls.push_back(std::move(scroll));
    return true;
  };

  std::vector<std::int32_t> ofConnections;
  for (const std::int32_t number : ScrollingEntries(properties)) {
    if (!join(number, [&](const clsRTShapeInfo& shape) { return EntryOfName(shape) == number; })) {
      ofConnections.push_back(number);
    }
  }
  for (const std::int32_t number : ofConnections) {
    const std::string key = modGlobalFunctions::Format000(number);
    join(number, [&](const clsRTShapeInfo& shape) { return shape.ConnectionKey == key; });
  }
  return scrolls;
}

}  // namespace LF2000
