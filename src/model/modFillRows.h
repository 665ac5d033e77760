#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/powerpoint.h"
#include "model/modManyLinks.h"

/// Boards are tables of shapes: shapes that show one row of the data after the other.
namespace LF2000::modFillRows {

using Shapes = std::vector<std::shared_ptr<PowerPoint::Shape>>;

/// In which order shapes get their rows.
enum class Order : std::uint8_t {
  /// Numbers where the names of all shapes differ in nothing but a number, else Places.
  Automatic,
  /// As people read them (modPlaces).
  Places,
  /// By the number in their names.
  Numbers
};

struct Wish {
  /// One for all shapes; several are taken in turn by the shapes of each line, which shows one row.
  std::vector<std::string> Columns;
  std::int32_t FirstRow = 1;
  /// From one row to the next; may be 0 and less.
  std::int32_t Step = 1;
  Order By = Order::Automatic;
};

/// Adds the links that the wish means for shapes of the slide.
void Plan(modManyLinks::Plan& plan, PowerPoint::Slide& slide, const Shapes& shapes, const Wish& wish,
          const modManyLinks::Source& source);

/// Whether there are at least two shapes, whose names differ in nothing but a number.
[[nodiscard]] bool AreNumbered(const Shapes& shapes);

/// How many shapes stand side by side in each line; 0 where lines differ.
[[nodiscard]] std::size_t CountAcross(const Shapes& shapes);

/// The shapes that continue a column of shapes downwards: of the kind and about the size of the last one, in
/// line with it, not linked yet. They end where the distance grows.
[[nodiscard]] Shapes ShapesBelow(PowerPoint::Slide& slide, const Shapes& shapes);

}  // namespace LF2000::modFillRows
