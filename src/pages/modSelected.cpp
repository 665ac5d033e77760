// Which shapes of a selection a page is about, and why the others are left out.

#include "pages/modSelected.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "model/clsShape.h"
#include "model/modLinkable.h"
#include "model/modPlaces.h"

namespace LF2000::modSelected {

namespace {

using Shapes = std::vector<std::shared_ptr<PowerPoint::Shape>>;

/// A small number as a word.
std::string Word(std::size_t count) {
  constexpr std::array Words = {"none",  "one",   "two",  "three", "four",   "five",  "six",
                                "seven", "eight", "nine", "ten",   "eleven", "twelve"};
  return count < Words.size() ? Words[count] : std::to_string(count);
}

/// What a page says of shapes of another one.
std::string Why(Kind page, Kind shape, bool isOne) {
  const auto say = [isOne](const char* one, const char* many) { return isOne ? one : many; };
  if (shape == Kind::NotLinkable) return "cannot be linked";
  switch (page) {
    case Kind::Object:
      return say("shows no picture", "show no picture");
    case Kind::Graph:
      return say("is no chart or table", "are no charts or tables");
    case Kind::NotLinkable:
      return "can be linked";
    default:
      break;
  }
  if (shape == Kind::Clock) return say("is a clock", "are clocks");
  if (shape == Kind::Field) return say("is no clock", "are no clocks");
  if (shape == Kind::Graph) return say("takes a whole connection", "take a whole connection");
  return say("holds no text", "hold no text");
}

std::string Explain(Kind page, const std::map<Kind, std::size_t>& counts, std::size_t all) {
  std::string reasons;
  for (const auto& [kind, count] : counts) {
    if (kind == page) continue;
    reasons += (reasons.empty() ? "" : ", ") + Word(count) + " " + Why(page, kind, count == 1);
  }
  if (reasons.empty()) return {};
  const auto taken = counts.find(page);
  return std::to_string(taken == counts.end() ? 0 : taken->second) + " of " + std::to_string(all) +
         " shapes: " + reasons;
}

Kind KindOf(const modLinkable::NameCounts& names, const std::shared_ptr<PowerPoint::Shape>& shape) {
  if (!WhyNot(names, *shape).empty()) return Kind::NotLinkable;
  clsShape link;
  link.ShapeItem(shape);
  switch (static_cast<SourceType>(link.SourceType())) {
    case SourceType::Clock:
      return Kind::Clock;
    case SourceType::DataField:
      return Kind::Field;
    case SourceType::LinkedObject:
      return Kind::Object;
    case SourceType::Graph:
      return Kind::Graph;
    case SourceType::NotLinked:
      break;
  }
  switch (modLinkable::Examine(*shape).What) {
    case modLinkable::Shows::Text:
      return Kind::Field;
    case modLinkable::Shows::File:
      return Kind::Object;
    case modLinkable::Shows::Graph:
    case modLinkable::Shows::Table:
      return Kind::Graph;
    case modLinkable::Shows::Nothing:
      break;
  }
  return Kind::NotLinkable;
}

/// The slide and the shapes of the active window, if it shows the presentation.
Selected Gather(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  Selected selected;
  const auto& application = modGlobalFunctions::HostApplication;
  const auto window = application ? application->ActiveWindow() : nullptr;
  if (!window || window->Presentation() != presentation) return selected;
  const auto selection = window->Selection();
  const auto slides = selection->SlideRange();
  if (slides.empty()) return selected;
  selected.Slide = slides.front();
  std::vector<modPlaces::Placed> places;
  for (const auto& shape : selection->ShapeRange()) places.push_back(modPlaces::PlaceOf(shape));
  for (modPlaces::Placed& each : modPlaces::InReadingOrder(std::move(places))) {
    selected.Shapes.push_back(std::move(each.Shape));
  }
  selected.Count = selected.Shapes.size();
  return selected;
}

std::vector<Kind> KindsOf(const Selected& selected) {
  const modLinkable::NameCounts names(*selected.Slide);
  std::vector<Kind> kinds;
  for (const auto& shape : selected.Shapes) kinds.push_back(KindOf(names, shape));
  return kinds;
}

/// Keeps the shapes of one kind, as `kindOf` sees them.
void Keep(Selected& selected, Kind kind, const std::vector<Kind>& kinds) {
  std::map<Kind, std::size_t> counts;
  Shapes kept;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    ++counts[kinds[i]];
    if (kinds[i] == kind) kept.push_back(selected.Shapes[i]);
  }
  selected.Page = kind;
  selected.LeftOut = Explain(kind, counts, kinds.size());
  selected.Shapes = std::move(kept);
}

}  // namespace

std::string Selected::Key() const {
  std::string key =
      std::to_string(static_cast<int>(Page)) + " " + std::to_string(Slide ? Slide->SlideID() : 0);
  for (const auto& shape : Shapes) key += "," + std::to_string(shape->Id());
  return key;
}

Selected Look(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  Selected selected = Gather(presentation);
  if (selected.Shapes.empty()) return selected;
  const std::vector<Kind> kinds = KindsOf(selected);
  std::map<Kind, std::size_t> counts;
  for (const Kind kind : kinds) ++counts[kind];
  const auto isSmaller = [&](Kind a, Kind b) { return counts[a] < counts[b]; };
  Keep(selected, *std::max_element(kinds.begin(), kinds.end(), isSmaller), kinds);
  return selected;
}

Selected LookForAll(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  return Gather(presentation);
}

Selected LookForNotLinkable(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  Selected selected = Gather(presentation);
  if (!selected.Shapes.empty()) Keep(selected, Kind::NotLinkable, KindsOf(selected));
  return selected;
}

Selected LookFor(modPropertyPages::Page page, const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  using modPropertyPages::Page;
  Selected selected = Gather(presentation);
  if (page == Page::Slide || page == Page::SlideShow) {
    selected.Shapes.clear();
    return selected;
  }
  if (selected.Shapes.empty()) return selected;
  const Kind wanted = page == Page::Clock        ? Kind::Clock
                      : page == Page::DataField  ? Kind::Field
                      : page == Page::DataObject ? Kind::Object
                                                 : Kind::Graph;
  std::vector<Kind> kinds = KindsOf(selected);
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    // What can be linked may be linked to something else.
    if (kinds[i] == wanted || kinds[i] == Kind::NotLinkable) continue;
    PowerPoint::Shape& shape = *selected.Shapes[i];
    const bool holdsText = shape.HasTextFrame();
    if (holdsText && (wanted == Kind::Field || wanted == Kind::Clock)) kinds[i] = wanted;
    if (holdsText && wanted == Kind::Object && modLinkable::HasPicture(shape)) kinds[i] = wanted;
  }
  Keep(selected, wanted, kinds);
  return selected;
}

std::string WhyNot(const modLinkable::NameCounts& names, PowerPoint::Shape& shape) {
  const modLinkable::Answer answer = modLinkable::Examine(shape);
  if (answer.What == modLinkable::Shows::Nothing) return answer.Why;
  return names.WhyNotByName(shape);
}

}  // namespace LF2000::modSelected
