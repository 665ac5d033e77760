#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "host/powerpoint.h"

/// Where the shapes of a slide stand among each other.
namespace LF2000::modPlaces {

/// From where to where a shape reaches in one direction, in points.
struct Span {
  double Low = 0;
  double High = 0;
  [[nodiscard]] double Middle() const { return (Low + High) / 2; }
  [[nodiscard]] double Length() const { return High - Low; }
};

/// A shape with its frame, which is asked for once: a host may take its time over each of these.
struct Placed {
  std::shared_ptr<PowerPoint::Shape> Shape;
  Span Across;
  Span Down;
};

[[nodiscard]] Placed PlaceOf(const std::shared_ptr<PowerPoint::Shape>& shape);
/// The slide's shapes in drawing order.
[[nodiscard]] std::vector<Placed> PlacesOf(PowerPoint::Slide& slide);

/// What is nearer than this counts as one line: half of the smaller length, but no less than 3 points.
[[nodiscard]] double Tolerance(const Span& a, const Span& b);

/// Whether they share an edge or the middle, within the tolerance.
[[nodiscard]] bool AreAligned(const Span& a, const Span& b);

/// As people read: rows from top to bottom, each from left to right. Shapes whose vertical middles lie
/// within the tolerance of its first are in one row; where places are equal, drawing order decides.
[[nodiscard]] std::vector<Placed> InReadingOrder(std::vector<Placed> shapes);
/// The same, row by row.
[[nodiscard]] std::vector<std::vector<Placed>> RowsOf(std::vector<Placed> shapes);

}  // namespace LF2000::modPlaces
