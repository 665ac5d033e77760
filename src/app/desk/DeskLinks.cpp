// What a page does to shapes, as the system has it done.

#include "app/desk/DeskLinks.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "app/wiring/Failure.h"
#include "basic/Counted.h"
#include "basic/Quotes.h"
#include "model/modFillRows.h"
#include "model/modLinkEdits.h"
#include "model/modManyLinks.h"
#include "model/modPlaces.h"
#include "web/desk/Desk.h"

namespace app {

namespace {

namespace edits = LF2000::modLinkEdits;
namespace many = LF2000::modManyLinks;

std::int32_t rowNumber(std::int64_t row) {
  if (row >= 1 && row <= many::MostRows) return static_cast<std::int32_t>(row);
  fail("Rows count from 1 to " + std::to_string(many::MostRows) + "; there is no row " + std::to_string(row) +
       ".");
}

void requireConnection(const OpenDeck& open, const std::string& number) {
  if (!open.model->FindConnection(number)) {
    fail("There is no connection " + basic::InQuotes(number) + " in this deck.");
  }
}

/// The shapes of the slide with these ids, as people read them.
edits::Shapes shapesOf(PowerPoint::Slide& slide, const std::vector<std::uint32_t>& ids) {
  edits::Shapes shapes;
  for (const auto& place : LF2000::modPlaces::InReadingOrder(LF2000::modPlaces::PlacesOf(slide))) {
    const auto id = static_cast<std::uint32_t>(place.Shape->Id());
    if (std::find(ids.begin(), ids.end(), id) != ids.end()) shapes.push_back(place.Shape);
  }
  if (shapes.empty()) throw web::Refusal(404, "None of these shapes is on the slide any more.");
  return shapes;
}

/// "Price linked to row 1, shows €4.80"
std::string told(const many::Plan& plan) {
  if (plan.Links.size() > 1) return basic::Counted(plan.Links.size(), "shape") + " linked";
  const many::PlannedLink& link = plan.Links.front();
  std::string text =
      link.Shape->Name() + " linked to " + link.Value.Column + ", row " + std::to_string(link.Value.Row);
  if (link.Shape->HasTextFrame()) text += ", shows " + link.Shape->TextFrame()->TextRange()->Text();
  return text;
}

std::string carryOut(OpenDeck& open, const many::Plan& plan) {
  if (!plan.Hindrances.empty()) fail(plan.Hindrances.front());
  if (plan.Links.empty()) fail("There is nothing to link.");
  edits::Link(*open.model, plan);
  return told(plan);
}

}  // namespace

std::string linkColumn(OpenDeck& open, const ColumnLink& wish) {
  requireConnection(open, wish.connection);
  const auto slide = open.presentation->Slides()->Item(wish.slide);
  std::vector<std::pair<std::shared_ptr<PowerPoint::Shape>, LF2000::modFieldNames::Field>> values;
  std::int64_t row = wish.row;
  for (const auto& shape : shapesOf(*slide, wish.shapes)) {
    values.push_back({shape, {wish.column, rowNumber(row)}});
    if (wish.countsUp) ++row;
  }
  many::Plan plan;
  many::AddShapes(plan, *slide, values, edits::SourceOf(*open.model, wish.connection));
  return carryOut(open, plan);
}

std::string fillRows(OpenDeck& open, const RowFill& wish) {
  requireConnection(open, wish.connection);
  if (wish.columns.empty()) fail("Choose a column to fill the shapes with.");
  if (wish.step < -many::MostRows || wish.step > many::MostRows) {
    fail("Rows cannot be counted by " + std::to_string(wish.step) + ".");
  }
  const auto slide = open.presentation->Slides()->Item(wish.slide);
  LF2000::modFillRows::Wish rows;
  rows.Columns = wish.columns;
  rows.FirstRow = rowNumber(wish.row);
  rows.Step = static_cast<std::int32_t>(wish.step);
  many::Plan plan;
  LF2000::modFillRows::Plan(plan, *slide, shapesOf(*slide, wish.shapes), rows,
                            edits::SourceOf(*open.model, wish.connection));
  return carryOut(open, plan);
}

void renameShape(OpenDeck& open, int slide, std::uint32_t shape, const std::string& name) {
  edits::Rename(*shapesOf(*open.presentation->Slides()->Item(slide), {shape}).front(), name);
}

}  // namespace app
