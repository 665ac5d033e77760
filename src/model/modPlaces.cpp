#include "model/modPlaces.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "model/modSlides.h"

namespace LF2000::modPlaces {

Placed PlaceOf(const std::shared_ptr<PowerPoint::Shape>& shape) {
  const double left = shape->Left();
  const double top = shape->Top();
  return {shape, {left, left + shape->Width()}, {top, top + shape->Height()}};
}

std::vector<Placed> PlacesOf(PowerPoint::Slide& slide) {
  std::vector<Placed> places;
  modSlides::ForEachShape(slide, [&](const auto& shape) { places.push_back(PlaceOf(shape)); });
  return places;
}

double Tolerance(const Span& a, const Span& b) {
  constexpr double Least = 3;
  return std::max(std::min(a.Length(), b.Length()) / 2, Least);
}

bool AreAligned(const Span& a, const Span& b) {
  const double nearest =
      std::min({std::abs(a.Low - b.Low), std::abs(a.Middle() - b.Middle()), std::abs(a.High - b.High)});
  return nearest < Tolerance(a, b);
}

std::vector<std::vector<Placed>> RowsOf(std::vector<Placed> shapes) {
  std::stable_sort(shapes.begin(), shapes.end(),
                   [](const Placed& a, const Placed& b) { return a.Down.Middle() < b.Down.Middle(); });
  std::vector<std::vector<Placed>> rows;
  const auto beginsRow = [&rows](const Placed& each) {
    if (rows.empty()) return true;
    const Span& first = rows.back().front().Down;
    return each.Down.Middle() - first.Middle() >= Tolerance(first, each.Down);
  };
  for (Placed& each : shapes) {
    if (beginsRow(each)) rows.emplace_back();
    rows.back().push_back(std::move(each));
  }
  for (std::vector<Placed>& row : rows) {
    std::stable_sort(row.begin(), row.end(),
                     [](const Placed& a, const Placed& b) { return a.Across.Low < b.Across.Low; });
  }
  return rows;
}

std::vector<Placed> InReadingOrder(std::vector<Placed> shapes) {
  std::vector<Placed> all;
  for (std::vector<Placed>& row : RowsOf(std::move(shapes))) {
    std::move(row.begin(), row.end(), std::back_inserter(all));
  }
  return all;
}

}  // namespace LF2000::modPlaces
