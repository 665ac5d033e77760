#include "app/desk/DeskLinks.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "model/modLinkEdits.h"
#include "model/modManyLinks.h"
#include "model/modPlaces.h"

namespace app {

namespace {

namespace edits = LF2000::modLinkEdits;
namespace many = LF2000::modManyLinks;

many::Plan planFor(OpenDeck& open, const ColumnLink& wish) {
  const auto slide = open.presentation->Slides()->Item(wish.slide);
  std::vector<std::pair<std::shared_ptr<PowerPoint::Shape>, LF2000::modFieldNames::Field>> values;
  std::int64_t row = wish.row;
  for (const auto& place : LF2000::modPlaces::InReadingOrder(LF2000::modPlaces::PlacesOf(*slide))) {
    const auto id = static_cast<std::uint32_t>(place.Shape->Id());
    if (std::find(wish.shapes.begin(), wish.shapes.end(), id) == wish.shapes.end()) continue;
    values.push_back({place.Shape, {wish.column, static_cast<std::int32_t>(row)}});
    if (wish.countsUp) ++row;
  }
  many::Plan plan;
  many::AddShapes(plan, *slide, values, edits::SourceOf(*open.model, wish.connection));
  return plan;
}

}  // namespace

void linkColumn(OpenDeck& open, const ColumnLink& wish) {
  const std::int64_t most = many::MostRows;
  if (wish.row < 1 || wish.row > most) {
    fail("Rows count from 1 to " + std::to_string(most) + "; there is no row " + std::to_string(wish.row) +
         ".");
  }
  if (!open.model->FindConnection(wish.connection)) {
    fail("There is no connection " + basic::InQuotes(wish.connection) + ".");
  }
  const many::Plan plan = planFor(open, wish);
  if (!plan.Hindrances.empty()) fail(plan.Hindrances.front());
  if (plan.Links.empty()) fail("None of these shapes is on the slide any more.");
  edits::Link(*open.model, plan);
  open.slides.describeAnew(wish.slide);
}

}  // namespace app
