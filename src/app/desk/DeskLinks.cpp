#include "app/desk/DeskLinks.h"

#include <algorithm>
#include <limits>

#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "model/modManyLinks.h"
#include "model/modPlaces.h"

namespace app {

namespace {

using LF2000::modLinkable::Shows;
namespace many = LF2000::modManyLinks;

std::string labelOf(const many::Plan& plan) {
  if (plan.Links.size() == 1) return "Link " + plan.Links.front().Shape->Name();
  return "Link " + std::to_string(plan.Links.size()) + " shapes";
}

void requireLinkable(PowerPoint::Shape& shape, const LF2000::modLinkable::Answer& answer,
                     const std::string& notByName) {
  const std::string name = basic::InQuotes(shape.Name());
  if (!answer.Why.empty()) fail(name + " " + answer.Why + ".");
  if (!notByName.empty()) fail(name + " " + notByName + ".");
  if (answer.What != Shows::Text && answer.What != Shows::File) {
    fail(name + " takes a connection as a whole, not a column.");
  }
}

many::Plan planFor(OpenDeck& open, const ColumnLink& wish) {
  const auto slide = open.presentation->Slides()->Item(wish.slide);
  const LF2000::modLinkable::NameCounts names(*slide);
  many::Plan plan;
  std::int64_t row = wish.row;
  for (const auto& place : LF2000::modPlaces::InReadingOrder(LF2000::modPlaces::PlacesOf(*slide))) {
    const auto id = static_cast<std::uint32_t>(place.Shape->Id());
    if (std::find(wish.shapes.begin(), wish.shapes.end(), id) == wish.shapes.end()) continue;
    const auto answer = LF2000::modLinkable::Examine(*place.Shape);
    requireLinkable(*place.Shape, answer, names.WhyNotByName(*place.Shape));
    plan.Links.push_back({wish.slide,
                          place.Shape,
                          answer.What,
                          wish.connection,
                          {wish.column, static_cast<std::int32_t>(row)}});
    if (wish.countsUp) ++row;
  }
  return plan;
}

}  // namespace

void linkColumn(deck::Application& application, OpenDeck& open, const ColumnLink& wish) {
  if (wish.row < 1 || wish.row > std::numeric_limits<std::int32_t>::max() / 2) {
    fail("Rows count from 1; there is no row " + std::to_string(wish.row) + ".");
  }
  const auto connection = open.model->FindConnection(wish.connection);
  if (!connection) fail("There is no connection " + basic::InQuotes(wish.connection) + ".");
  const DeskSource* source = open.sources.find(wish.connection);
  if (source != nullptr && !source->columns.empty() && !source->hasColumn(wish.column)) {
    fail("Connection " + wish.connection + " has no column " + basic::InQuotes(wish.column) + ".");
  }
  const many::Plan plan = planFor(open, wish);
  if (plan.Links.empty()) fail("None of these shapes is on the slide any more.");
  application.StartNewUndoEntry(labelOf(plan), {});
  many::Write(plan, {}, {});
  open.slides.describeAnew(wish.slide);
  open.model->FillValues(false);
}

}  // namespace app
