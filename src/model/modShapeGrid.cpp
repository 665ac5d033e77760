// The search for a grid: the heads of its columns and rows first, then every shape goes to the nearest ones.

#include "model/modShapeGrid.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "basic/Counted.h"
#include "basic/Strings.h"

namespace LF2000::modShapeGrid {

namespace {

using modPlaces::Placed;
using modPlaces::Span;
using Direction = Span Placed::*;

std::string Named(const Placed& shape) { return "'" + shape.Shape->Name() + "'"; }

/// The shapes that may be cells: of the start's kind, able to hold text, about as high. Panels behind
/// the cells are higher.
std::vector<Placed> CandidatesFor(const Placed& start, const std::vector<Placed>& shapes) {
  constexpr double MostTimes = 3;
  const PowerPoint::ShapeType type = start.Shape->Type();
  const double height = start.Down.Length();
  std::vector<Placed> candidates;
  for (const Placed& each : shapes) {
    const double own = each.Down.Length();
    if (own > height * MostTimes || own * MostTimes < height) continue;
    if (each.Shape->Type() == type && each.Shape->HasTextFrame()) candidates.push_back(each);
  }
  return candidates;
}

/// The head that a span belongs to; nothing when it is aligned with none.
std::optional<std::size_t> HeadOf(const Span& span, const std::vector<Placed>& heads, Direction along) {
  const auto behind = std::lower_bound(
      heads.begin(), heads.end(), span.Middle(),
      [along](const Placed& head, double middle) { return (head.*along).Middle() < middle; });
  const auto distance = [&](auto head) {
    return std::abs(((*head).*along).Low - span.Low) + std::abs(((*head).*along).High - span.High);
  };
  auto nearest = behind;
  if (behind == heads.end() || (behind != heads.begin() && distance(behind - 1) < distance(behind))) {
    --nearest;
  }
  if (!modPlaces::AreAligned((*nearest).*along, span)) return {};
  return static_cast<std::size_t>(nearest - heads.begin());
}

/// The first `count` cells from the start on, in their order.
template <typename IsInLine>
std::vector<Placed> HeadsFrom(const Placed& start, const std::vector<Placed>& candidates, Direction along,
                              std::int32_t count, const IsInLine& isInLine) {
  std::vector<Placed> heads;
  for (const Placed& each : candidates) {
    if ((each.*along).Middle() >= (start.*along).Middle() && isInLine(each)) heads.push_back(each);
  }
  std::stable_sort(heads.begin(), heads.end(), [along](const Placed& a, const Placed& b) {
    return (a.*along).Middle() < (b.*along).Middle();
  });
  heads.resize(std::min(heads.size(), static_cast<std::size_t>(count)));
  return heads;
}

class Search {
 public:
  Search(const Placed& start, const std::vector<Placed>& shapes, std::int32_t rows, std::int32_t columns)
      : candidates_(CandidatesFor(start, shapes)),
        columns_(HeadsFrom(start, candidates_, &Placed::Across, columns,
                           [&](const Placed& each) { return modPlaces::AreAligned(each.Down, start.Down); })),
        rows_(HeadsFrom(start, candidates_, &Placed::Down, rows, [&](const Placed& each) {
          return HeadOf(each.Across, columns_, &Placed::Across) == std::size_t{0};
        })) {
    RequireCount(rows_, rows, start, "downwards");
    RequireCount(columns_, columns, start, "to the right");
    RequireApart(rows_, &Placed::Down);
    RequireApart(columns_, &Placed::Across);
    RequireEvenRows();
    PlaceCandidates();
    CollectCells();
  }

  [[nodiscard]] Grid Result() { return std::move(grid_); }

 private:
  void Hinder(std::string sentence) { grid_.Hindrances.push_back(std::move(sentence)); }

  void RequireCount(const std::vector<Placed>& heads, std::int32_t wanted, const Placed& start,
                    const char* where) {
    if (heads.size() == static_cast<std::size_t>(wanted)) return;
    Hinder("From " + Named(start) + " " + where + " stand " + basic::Counted(heads.size(), "shape") +
           " of its kind in line, not " + std::to_string(wanted) + ".");
  }

  void RequireApart(const std::vector<Placed>& heads, Direction along) {
    for (std::size_t i = 1; i < heads.size(); ++i) {
      const double distance = (heads[i].*along).Middle() - (heads[i - 1].*along).Middle();
      if (distance >= modPlaces::Tolerance(heads[i].*along, heads[i - 1].*along)) continue;
      Hinder(Named(heads[i - 1]) + " and " + Named(heads[i]) + " stand on top of each other.");
    }
  }

  void RequireEvenRows() {
    constexpr double MostDeviation = 0.3;
    std::vector<double> steps;
    for (std::size_t i = 1; i < rows_.size(); ++i) {
      steps.push_back(rows_[i].Down.Middle() - rows_[i - 1].Down.Middle());
    }
    if (steps.empty()) return;
    std::vector<double> sorted = steps;
    const auto median = sorted.begin() + static_cast<std::ptrdiff_t>((sorted.size() - 1) / 2);
    std::nth_element(sorted.begin(), median, sorted.end());
    for (std::size_t i = 0; i < steps.size(); ++i) {
      if (std::abs(steps[i] - *median) <= *median * MostDeviation) continue;
      Hinder("Rows are not even: " + Named(rows_[i + 1]) + " follows " + Named(rows_[i]) + " after " +
             std::to_string(std::lround(steps[i])) + " points, others after " +
             std::to_string(std::lround(*median)) + ".");
    }
  }

  void PlaceCandidates() {
    cells_.resize(rows_.size() * columns_.size(), nullptr);
    const Span across = Extent(columns_, &Placed::Across);
    const Span down = Extent(rows_, &Placed::Down);
    for (const Placed& each : candidates_) {
      const auto row = HeadOf(each.Down, rows_, &Placed::Down);
      const auto column = HeadOf(each.Across, columns_, &Placed::Across);
      if (row && column) {
        Put(each, *row * columns_.size() + *column);
      } else if (Holds(across, each.Across.Middle()) && Holds(down, each.Down.Middle())) {
        Hinder(Named(each) + " stands among the cells, but in no row and column of theirs.");
      }
    }
  }

  void Put(const Placed& shape, std::size_t place) {
    if (cells_[place] != nullptr) {
      Hinder(Where(place) + " is taken by " + Named(*cells_[place]) + " and by " + Named(shape) + ".");
    } else {
      cells_[place] = &shape;
    }
  }

  void CollectCells() {
    for (std::size_t place = 0; place < cells_.size(); ++place) {
      if (cells_[place] == nullptr) {
        Hinder(Where(place) + " has no shape.");
      } else {
        grid_.Cells.push_back(*cells_[place]);
      }
    }
  }

  [[nodiscard]] std::string Where(std::size_t place) const {
    return "Row " + std::to_string(place / columns_.size() + 1) + ", column " +
           std::to_string(place % columns_.size() + 1);
  }

  static Span Extent(const std::vector<Placed>& heads, Direction along) {
    Span all = heads.front().*along;
    for (const Placed& head : heads) {
      all.Low = std::min(all.Low, (head.*along).Low);
      all.High = std::max(all.High, (head.*along).High);
    }
    return all;
  }

  static bool Holds(const Span& span, double point) { return point > span.Low && point < span.High; }

  Grid grid_;
  std::vector<Placed> candidates_;
  /// Topmost cells of the columns, leftmost cells of the rows.
  std::vector<Placed> columns_;
  std::vector<Placed> rows_;
  std::vector<const Placed*> cells_;
};

}  // namespace

Grid FindGrid(const std::vector<Placed>& shapes, std::string_view start, std::int32_t rows,
              std::int32_t columns) {
  const auto found = std::find_if(shapes.begin(), shapes.end(), [&](const Placed& each) {
    return basic::EqualsIgnoreCase(each.Shape->Name(), start);
  });
  if (found == shapes.end()) return {{}, {"There is no shape named '" + std::string(start) + "'."}};
  if (!found->Shape->HasTextFrame()) return {{}, {Named(*found) + " holds no text."}};
  return Search(*found, shapes, rows, columns).Result();
}

}  // namespace LF2000::modShapeGrid
