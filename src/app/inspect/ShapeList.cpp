// What a slide holds that may be linked, and why the rest may not.

#include "app/inspect/ShapeList.h"

#include "deck/objects/Shape.h"
#include "model/modLinkable.h"
#include "model/modPlaces.h"

namespace app {

namespace {

using LF2000::modLinkable::Shows;

std::string nameOf(Shows shows) {
  switch (shows) {
    case Shows::Text:
      return "text";
    case Shows::File:
      return "picture";
    case Shows::Graph:
      return "chart";
    case Shows::Table:
      return "table";
    case Shows::Nothing:
      break;
  }
  return {};
}

ListedShape describe(PowerPoint::Shape& shape) {
  ListedShape listed;
  listed.id = presentationml::shapeId(static_cast<const deck::Shape&>(shape).node());
  listed.name = shape.Name();
  listed.kind = LF2000::modLinkable::KindName(shape.Type());
  if (shape.HasTextFrame()) listed.text = shape.TextFrame()->TextRange()->Text();
  listed.left = shape.Left();
  listed.top = shape.Top();
  listed.width = shape.Width();
  listed.height = shape.Height();
  return listed;
}

}  // namespace

std::vector<ListedShape> listShapes(deck::Presentation& deck, std::int32_t slideIndex) {
  const auto slide = deck.Slides()->Item(slideIndex);
  const LF2000::modLinkable::NameCounts names(*slide);
  std::vector<ListedShape> list;
  for (const auto& placed : LF2000::modPlaces::InReadingOrder(LF2000::modPlaces::PlacesOf(*slide))) {
    PowerPoint::Shape& shape = *placed.Shape;
    const auto answer = LF2000::modLinkable::Examine(shape);
    ListedShape& listed = list.emplace_back(describe(shape));
    listed.shows = nameOf(answer.What);
    listed.whyNot = answer.Why.empty() ? names.WhyNotByName(shape) : answer.Why;
    listed.link = linkOf(placed.Shape);
    if (shape.Type() != PowerPoint::ShapeType::Group) continue;
    const auto items = shape.GroupItems();
    for (std::int32_t i = 1; i <= items->Count(); ++i) {
      ListedShape& item = list.emplace_back(describe(*items->Item(i)));
      item.group = shape.Name();
      item.whyNot = LF2000::modLinkable::WhyNotInGroup(shape);
    }
  }
  return list;
}

}  // namespace app
