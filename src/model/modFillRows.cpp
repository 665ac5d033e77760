// In which order shapes are filled with rows, and which shapes go on where others end.

#include "model/modFillRows.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "basic/Strings.h"
#include "model/clsShape.h"
#include "model/modLinkable.h"
#include "model/modPlaces.h"

namespace LF2000::modFillRows {

namespace {

using modPlaces::Placed;

std::vector<Placed> PlacesOf(const Shapes& shapes) {
  std::vector<Placed> places;
  for (const auto& shape : shapes) places.push_back(modPlaces::PlaceOf(shape));
  return places;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// A name as digits and what stands between them, in turn: "R1 C2" is "R", "1", " C", "2".
std::vector<std::string> PiecesOf(const std::string& name) {
  std::vector<std::string> pieces;
  for (const char c : basic::UCase(name)) {
    const bool isNumber = pieces.size() % 2 == 0 && !pieces.empty();
    if (pieces.empty() || IsDigit(c) != isNumber) {
      if (pieces.empty() && IsDigit(c)) pieces.emplace_back();
      pieces.emplace_back();
    }
    pieces.back() += c;
  }
  return pieces;
}

/// The numbers of shapes whose names differ in one number alone, in their order; nothing for others.
std::optional<std::vector<std::int64_t>> NumbersOf(const Shapes& shapes) {
  if (shapes.size() < 2) return {};
  const std::vector<std::string> first = PiecesOf(shapes.front()->Name());
  std::optional<std::size_t> place;
  std::vector<std::vector<std::string>> names;
  for (const auto& shape : shapes) {
    names.push_back(PiecesOf(shape->Name()));
    if (names.back().size() != first.size()) return {};
    for (std::size_t i = 0; i < first.size(); ++i) {
      if (names.back()[i] == first[i]) continue;
      if (i % 2 == 0 || (place && *place != i)) return {};
      place = i;
    }
  }
  if (!place) return {};
  std::vector<std::int64_t> numbers;
  for (const auto& pieces : names) {
    const std::string& digits = pieces[*place];
    std::int64_t number = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec != std::errc{}) return {};
    numbers.push_back(number);
  }
  return numbers;
}

Shapes Ordered(const Shapes& shapes, Order by) {
  Shapes ordered;
  const auto numbers = by == Order::Places ? std::nullopt : NumbersOf(shapes);
  if (!numbers) {
    for (Placed& each : modPlaces::InReadingOrder(PlacesOf(shapes))) ordered.push_back(std::move(each.Shape));
    return ordered;
  }
  std::vector<std::pair<std::int64_t, std::size_t>> ranks;
  for (std::size_t i = 0; i < shapes.size(); ++i) ranks.emplace_back((*numbers)[i], i);
  std::sort(ranks.begin(), ranks.end());
  for (const auto& rank : ranks) ordered.push_back(shapes[rank.second]);
  return ordered;
}

/// The shapes in the order in which columns and rows are dealt out; empty, and a hindrance, when several
/// columns do not go into the lines of the shapes.
Shapes Dealt(modManyLinks::Plan& plan, PowerPoint::Slide& slide, const Shapes& shapes, const Wish& wish) {
  if (wish.Columns.size() == 1) return Ordered(shapes, wish.By);
  Shapes dealt;
  std::size_t line = 0;
  for (const std::vector<Placed>& row : modPlaces::RowsOf(PlacesOf(shapes))) {
    ++line;
    if (row.size() != wish.Columns.size()) {
      plan.Hindrances.push_back("Slide " + std::to_string(slide.SlideIndex()) + ": line " +
                                std::to_string(line) + " of the shapes, from '" + row.front().Shape->Name() +
                                "' on, holds " + std::to_string(row.size()) + " of them, not " +
                                std::to_string(wish.Columns.size()) + " as there are columns.");
      return {};
    }
    for (const Placed& each : row) dealt.push_back(each.Shape);
  }
  return dealt;
}

bool IsLinked(const std::shared_ptr<PowerPoint::Shape>& shape) {
  clsShape link;
  link.ShapeItem(shape);
  return link.SourceType() != 0;
}

}  // namespace

void Plan(modManyLinks::Plan& plan, PowerPoint::Slide& slide, const Shapes& shapes, const Wish& wish,
          const modManyLinks::Source& source) {
  if (shapes.empty() || wish.Columns.empty()) return;
  std::vector<std::pair<std::shared_ptr<PowerPoint::Shape>, modFieldNames::Field>> values;
  const Shapes dealt = Dealt(plan, slide, shapes, wish);
  for (std::size_t i = 0; i < dealt.size(); ++i) {
    const auto turn = static_cast<std::int64_t>(i / wish.Columns.size());
    const std::int64_t row = wish.FirstRow + turn * wish.Step;
    if (row < 1 || row > modManyLinks::MostRows) {
      plan.Hindrances.push_back("Slide " + std::to_string(slide.SlideIndex()) + ": Shape '" +
                                dealt[i]->Name() + "' would show row " + std::to_string(row) +
                                "; rows count from 1 to " + std::to_string(modManyLinks::MostRows) + ".");
      continue;
    }
    values.push_back({dealt[i], {wish.Columns[i % wish.Columns.size()], static_cast<std::int32_t>(row)}});
  }
  modManyLinks::AddShapes(plan, slide, values, source);
}

bool AreNumbered(const Shapes& shapes) { return NumbersOf(shapes).has_value(); }

std::size_t CountAcross(const Shapes& shapes) {
  std::size_t across = 0;
  for (const std::vector<Placed>& row : modPlaces::RowsOf(PlacesOf(shapes))) {
    if (across != 0 && row.size() != across) return 0;
    across = row.size();
  }
  return across;
}

Shapes ShapesBelow(PowerPoint::Slide& slide, const Shapes& shapes) {
  constexpr double MostTimesHigher = 2;
  constexpr double MostTimesFurther = 1.5;
  Shapes below;
  if (shapes.empty()) return below;
  const std::vector<Placed> own = modPlaces::InReadingOrder(PlacesOf(shapes));
  const Placed& last = own.back();
  const modLinkable::Shows shows = modLinkable::Examine(*last.Shape).What;
  const double height = last.Down.Length();
  std::vector<Placed> candidates;
  for (const Placed& each : modPlaces::PlacesOf(slide)) {
    const double other = each.Down.Length();
    if (each.Down.Middle() - last.Down.Middle() < modPlaces::Tolerance(each.Down, last.Down)) continue;
    if (other > height * MostTimesHigher || other * MostTimesHigher < height) continue;
    if (each.Shape->Type() != last.Shape->Type() || !modPlaces::AreAligned(each.Across, last.Across))
      continue;
    candidates.push_back(each);
  }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const Placed& a, const Placed& b) { return a.Down.Middle() < b.Down.Middle(); });
  double distance = own.size() < 2 ? 0 : last.Down.Middle() - own[own.size() - 2].Down.Middle();
  double from = last.Down.Middle();
  for (const Placed& each : candidates) {
    const double next = each.Down.Middle() - from;
    if (distance > 0 && next > distance * MostTimesFurther) break;
    if (IsLinked(each.Shape) || modLinkable::Examine(*each.Shape).What != shows) break;
    if (distance <= 0) distance = next;
    from = each.Down.Middle();
    below.push_back(each.Shape);
  }
  return below;
}

}  // namespace LF2000::modFillRows
