#include "model/modPlaces.h"

#include <algorithm>
#include <cmath>

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

std::vector<Placed> InReadingOrder(std::vector<Placed> shapes) {
  std::stable_sort(shapes.begin(), shapes.end(),
                   [](const Placed& a, const Placed& b) { return a.Down.Middle() < b.Down.Middle(); });
  for (auto row = shapes.begin(); row != shapes.end();) {
    const Span first = row->Down;
    const auto end = std::find_if(row, shapes.end(), [&](const Placed& each) {
      return each.Down.Middle() - first.Middle() >= Tolerance(first, each.Down);
    });
    std::stable_sort(row, end, [](const Placed& a, const Placed& b) { return a.Across.Low < b.Across.Low; });
    row = end;
  }
  return shapes;
}

}  // namespace LF2000::modPlaces
