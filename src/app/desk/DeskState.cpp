// The open deck as windows are told of it.

#include "app/desk/DeskState.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>

#include "basic/Conversion.h"
#include "deck/objects/Slide.h"
#include "model/clsSlide.h"
#include "model/modSlideRows.h"

namespace app {

using json::Json;

namespace {

using LF2000::modSlideRows::ConnectionRows;
using LF2000::modSlideRows::ShownData;

/// CSS px, to a hundredth.
double pixels(double points) {
  constexpr double hundredthsPerPoint = 100.0 * 96.0 / 72.0;
  constexpr double hundredths = 100.0;
  return std::round(points * hundredthsPerPoint) / hundredths;
}

LF2000::SourceType typeOf(const LinkedShape& link) {
  return static_cast<LF2000::SourceType>(link.sourceType);
}

const char* nameOf(LF2000::SourceType type) {
  switch (type) {
    case LF2000::SourceType::Clock:
      return "clock";
    case LF2000::SourceType::DataField:
      return "field";
    case LF2000::SourceType::LinkedObject:
      return "object";
    case LF2000::SourceType::Graph:
      return "graph";
    case LF2000::SourceType::NotLinked:
      break;
  }
  return "";
}

const char* nameOf(LinkState::Kind kind) {
  switch (kind) {
    case LinkState::Kind::Stale:
      return "stale";
    case LinkState::Kind::Broken:
      return "broken";
    case LinkState::Kind::Fresh:
      break;
  }
  return "fresh";
}

const char* nameOf(DeskSource::State state) {
  switch (state) {
    case DeskSource::State::Fresh:
      return "fresh";
    case DeskSource::State::Stale:
      return "stale";
    case DeskSource::State::Failing:
      return "failing";
    case DeskSource::State::Opening:
      break;
  }
  return "opening";
}

Json linkJson(const std::optional<LinkedShape>& link, const DeskSources& sources) {
  if (!link) return nullptr;
  const LinkState state = sources.stateOf(*link);
  return {{"type", nameOf(typeOf(*link))},
          {"connection", link->connection},
          {"column", link->column},
          {"row", link->row},
          {"format", link->dateFormat},
          {"folder", link->objectFolder},
          {"extension", link->objectExtension},
          {"state", nameOf(state.kind)},
          {"message", state.message}};
}

/// Paragraphs and lines as browsers know them.
std::string withLineFeeds(std::string text) {
  constexpr char verticalTab = '\v';
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == verticalTab; }, '\n');
  return text;
}

Json shapeJson(const DeskShape& shape, const DeskSources& sources) {
  const ListedShape& listed = shape.listed;
  return {{"id", listed.id},
          {"name", listed.name},
          {"kind", listed.kind},
          {"left", pixels(listed.left)},
          {"top", pixels(listed.top)},
          {"width", pixels(listed.width)},
          {"height", pixels(listed.height)},
          {"rotation", shape.rotation},
          {"group", shape.group},
          {"shows", listed.shows},
          {"whyNot", listed.whyNot},
          {"isHidden", shape.isHidden},
          {"isFilled", shape.isFilled},
          {"isDouble", shape.isDouble},
          {"text", withLineFeeds(listed.text)},
          {"link", linkJson(listed.link, sources)}};
}

LF2000::clsSlide propertiesOf(deck::Presentation& deck, int slide) {
  LF2000::clsSlide properties;
  properties.ReadTags(*deck.Slides()->Item(slide)->Tags());
  return properties;
}

/// The connections whose values decide whether the slide shows.
std::vector<ConnectionRows> rowsFor(const LF2000::clsPresentation& model,
                                    const std::vector<LinkedShape>& links) {
  std::vector<ShownData> shown;
  for (const LinkedShape& link : links) {
    const bool isWhole = typeOf(link) == LF2000::SourceType::Graph;
    if (!link.connection.empty()) shown.push_back({link.connection, link.column, link.row, isWhole});
  }
  return LF2000::modSlideRows::RowsOf(model, shown);
}

/// As a sentence without its subject; null when it does not hide.
Json hidesJson(const LF2000::clsSlide& properties, const LF2000::clsPresentation& model,
               const std::vector<LinkedShape>& links) {
  if (!properties.HideWhenNoData()) return nullptr;
  const auto connections = rowsFor(model, links);
  if (!LF2000::modSlideRows::Hides(properties, connections)) return nullptr;
  std::string numbers;
  bool hasRows = false;
  for (const ConnectionRows& each : connections) {
    numbers += (numbers.empty() ? "" : ", ") + each.Number;
    hasRows = hasRows || each.Rows.value_or(0) > 0;
  }
  if (hasRows) return "no shape shows a value";
  const bool isOne = connections.size() == 1;
  return (isOne ? "connection " : "connections ") + numbers + (isOne ? " has no rows" : " have no rows");
}

}  // namespace

Json slidesJson(OpenDeck& open) {
  deck::Presentation& deck = *open.presentation;
  const DeskSlides& slides = open.slides;
  Json json = Json::array();
  for (int slide = 1; slide <= slides.count(); ++slide) {
    const auto& links = slides.links(slide);
    const auto problems = std::count_if(links.begin(), links.end(), [&](const LinkedShape& link) {
      return open.sources.stateOf(link).kind == LinkState::Kind::Broken;
    });
    const LF2000::clsSlide properties = propertiesOf(deck, slide);
    json.push_back({{"id", slides.id(slide)},
                    {"index", slide},
                    {"links", links.size()},
                    {"problems", problems},
                    {"hides", hidesJson(properties, *open.model, links)},
                    {"scrolls", !properties.ScrollEntryNumbers().empty()},
                    {"isHidden", deck.isHidden(slide)},
                    {"drawn", slides.drawn(slide)}});
  }
  return json;
}

Json slideJson(OpenDeck& open, int slide) {
  if (slide < 1) return nullptr;
  DeskSlides& slides = open.slides;
  const DeskSources& sources = open.sources;
  const auto& links = slides.links(slide);
  Json shapes = Json::array();
  for (const DeskShape& shape : slides.shapes(slide)) shapes.push_back(shapeJson(shape, sources));
  Json why = Json::array();
  for (const ConnectionRows& each : rowsFor(*open.model, links)) {
    const DeskSource* source = sources.find(each.Number);
    const std::int64_t rows = each.Rows.value_or(0);
    why.push_back({{"connection", each.Number},
                   {"description", source == nullptr ? std::string() : source->description},
                   {"rows", rows},
                   {"ok", rows > 0}});
  }
  return {{"id", slides.id(slide)},
          {"index", slide},
          {"shapes", std::move(shapes)},
          {"why", std::move(why)},
          {"hides", hidesJson(propertiesOf(*open.presentation, slide), *open.model, links)}};
}

Json selectionJson(const DeskSlides& slides, const DeskWindow& window) {
  const int slide = window.slide();
  return {{"slide", slide < 1 ? 0 : slides.id(slide)}, {"shapes", window.document->shapes()}};
}

Json connectionsJson(const DeskSlides& slides, const DeskSources& sources) {
  std::map<std::string, int> uses;
  for (int slide = 1; slide <= slides.count(); ++slide) {
    for (const LinkedShape& link : slides.links(slide)) ++uses[link.connection];
  }
  Json json = Json::array();
  for (const DeskSource& source : sources.all()) {
    json.push_back({{"number", source.number},
                    {"description", source.description},
                    {"kind", source.kind},
                    {"source", source.source},
                    {"state", nameOf(source.state)},
                    {"message", source.message},
                    {"seconds", source.seconds},
                    {"columns", source.columns},
                    {"rows", source.rows},
                    {"read", source.read},
                    {"asked", source.asked},
                    {"uses", uses[source.number]},
                    {"isSample", source.kind == "sample"}});
  }
  return json;
}

Json dataJson(const DeskSources& sources) {
  Json json = Json::object();
  for (const DeskSource& source : sources.all()) json[source.number] = source.version;
  return json;
}

Json usedJson(const DeskSlides& slides, int slide) {
  Json json = Json::object();
  if (slide < 1) return json;
  for (const LinkedShape& link : slides.links(slide)) {
    if (typeOf(link) != LF2000::SourceType::DataField && typeOf(link) != LF2000::SourceType::LinkedObject) {
      continue;
    }
    Json& places = json[link.connection][link.column][basic::CStr(link.row)];
    places.push_back({slides.id(slide), link.id});
  }
  return json;
}

Json usesJson(const DeskSlides& slides) {
  // By connection, column ("" for any) and slide.
  std::map<std::string, std::map<std::string, std::map<std::string, int>>> uses;
  for (int slide = 1; slide <= slides.count(); ++slide) {
    const std::string id = std::to_string(slides.id(slide));
    for (const LinkedShape& link : slides.links(slide)) {
      if (typeOf(link) == LF2000::SourceType::Clock) continue;
      auto& columns = uses[link.connection];
      ++columns[""][id];
      if (typeOf(link) != LF2000::SourceType::Graph) ++columns[link.column][id];
    }
  }
  return uses;
}

}  // namespace app
