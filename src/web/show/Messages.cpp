// What a show tells its screens and programs, as events with JSON in them.
#include "web/show/Messages.h"

#include "json/Json.h"

namespace web {
namespace {

using json::Json;
using json::textOf;

SharedMessage event(std::string_view name, std::uint64_t sequence, std::string_view data,
                    bool complete = false) {
  return messageOf(eventText(name, sequence, data), complete);
}

Json slideJson(const std::optional<SlideView>& slide) {
  if (!slide) return nullptr;
  return {{"index", slide->index}, {"html", slide->html}};
}

Json transitionJson(const Transition& transition) {
  return {{"kind", transition.kind},
          {"direction", transition.direction},
          {"throughBlack", transition.throughBlack},
          {"duration", transition.duration.count()}};
}

Json buildsJson(const std::vector<BuildMotion>& builds) {
  Json json = Json::array();
  for (const BuildMotion& motion : builds) {
    json.push_back({{"id", motion.elementId},
                    {"isEntrance", motion.isEntrance},
                    {"kind", motion.kind},
                    {"direction", motion.direction},
                    {"duration", motion.duration.count()}});
  }
  return json;
}

Json progressJson(const std::optional<Progress>& progress) {
  if (!progress) return nullptr;
  return {{"caption", progress->caption},
          {"text", progress->text},
          {"step", progress->step},
          {"maximum", progress->maximum}};
}

Json cellsJson(const std::vector<CellChange>& cells) {
  Json json = Json::array();
  for (const CellChange& cell : cells) json.push_back({cell.index, cell.html});
  return json;
}

/// One rule for all elements, with `part` behind each selector.
void addRule(std::string& rules, const std::vector<std::string>& ids, std::string_view part,
             std::string_view declarations) {
  if (ids.empty()) return;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    rules.append(i == 0 ? "#" : ",#").append(ids[i]).append(part);
  }
  rules.append("{").append(declarations).append("}\n");
}

}  // namespace

SharedMessage greetingMessage(const std::optional<std::string>& screen) {
  Json json = {{"screen", nullptr}, {"now", epochMilliseconds(std::chrono::system_clock::now())}};
  if (screen) json["screen"] = *screen;
  return messageOf(eventText("hello", std::nullopt, textOf(json)));
}

std::string pictureData(const ScreenState& state, std::string_view version,
                        std::chrono::milliseconds heartbeat) {
  Json json = {{"version", version},
               {"heartbeat", heartbeat.count()},
               {"deck", state.deck},
               {"title", state.title},
               {"left", state.left},
               {"top", state.top},
               {"width", state.width},
               {"height", state.height},
               {"transparent", state.isTransparent},
               {"kiosk", state.kiosk},
               {"blank", blankName(state.blank)},
               {"ended", state.ended},
               {"slideCount", state.slideCount},
               {"stylesheet", state.stylesheet},
               {"rules", styleRules(state)},
               {"transition", transitionJson(state.transition)},
               {"builds", buildsJson(state.builds)},
               {"progress", progressJson(state.progress)},
               {"began", nullptr},
               {"at", nullptr},
               {"current", slideJson(state.current)},
               {"next", slideJson(state.next)}};
  if (state.began) json["began"] = epochMilliseconds(*state.began);
  if (state.shownAt) json["at"] = epochMilliseconds(*state.shownAt);
  return textOf(json);
}

std::string shapesData(const std::vector<ShapeChange>& changes,
                       const std::function<bool(const ShapeChange&)>& isShown) {
  Json json = Json::array();
  for (const ShapeChange& change : changes) {
    if (!isShown(change)) continue;
    json.push_back({{"slide", change.slide}, {"id", change.elementId}});
    if (change.cells.empty()) {
      json.back()["html"] = change.html;
    } else {
      json.back()["cells"] = cellsJson(change.cells);
    }
    if (change.glides) json.back()["glides"] = true;
  }
  return textOf(json);
}

SharedMessage screenMessage(std::string_view name, std::uint64_t sequence, std::string_view data) {
  return event(name, sequence, data, name == "picture");
}

std::string stateOfView(std::string_view run, std::uint64_t sequence, const std::optional<std::string>& hubId,
                        const std::vector<std::string>& hubs, std::string_view picture) {
  Json head = {{"run", run}, {"sequence", sequence}, {"hub", {{"id", nullptr}}}, {"hubs", hubs}};
  if (hubId) head["hub"]["id"] = *hubId;
  std::string text = textOf(head);
  text.pop_back();
  return text.append(",\"picture\":").append(picture).append("}");
}

SharedMessage stateMessage(std::uint64_t sequence, std::string_view stateJson) {
  return event("state", sequence, stateJson, true);
}

SharedMessage valuesMessage(std::uint64_t sequence, const std::vector<ShapeChange>& changes) {
  Json json = Json::array();
  for (const ShapeChange& change : changes) {
    if (json.empty() || json.back()["slide"] != change.slide) {
      json.push_back({{"slide", change.slide}, {"shapes", Json::array()}});
    }
    json.back()["shapes"].push_back(
        {{"name", change.name}, {"text", change.text ? Json(*change.text) : Json()}});
  }
  return event("values", sequence, textOf(json));
}

SharedMessage positionMessage(std::uint64_t sequence, const ScreenState& state) {
  const Json json = {{"position", state.current ? state.current->index : 0},
                     {"slideCount", state.slideCount},
                     {"blank", blankName(state.blank)},
                     {"ended", state.ended}};
  return event("position", sequence, textOf(json));
}

SharedMessage endMessage(std::uint64_t sequence, std::string_view reason) {
  const std::string text = eventText("end", sequence, textOf({{"reason", reason}}));
  return reason == "server" ? lastMessage(text) : messageOf(text);
}

SharedMessage heartbeatMessage(bool visible) {
  return messageOf(visible ? ": beat\nevent: beat\ndata: {}\n\n" : ": beat\n\n");
}

std::string_view blankName(Blank blank) {
  switch (blank) {
    case Blank::Black:
      return "black";
    case Blank::White:
      return "white";
    case Blank::None:
      break;
  }
  return "none";
}

std::string styleRules(const ScreenState& state) {
  std::string rules;
  addRule(rules, state.hidden, "", "visibility:hidden");
  addRule(rules, state.blanked, " .t", "visibility:hidden");
  addRule(rules, state.blanked, " table", "visibility:hidden");
  addRule(rules, state.marked, "::after",
          "content:\"\";position:absolute;top:0;right:0;width:8px;height:8px;background:#d98a00;"
          "clip-path:polygon(0 0,100% 0,100% 100%);opacity:.85");
  return rules;
}

std::string timeJson(std::chrono::system_clock::time_point now) {
  const std::chrono::duration<double, std::milli> time = now.time_since_epoch();
  return textOf({{"now", time.count()}});
}

std::int64_t epochMilliseconds(std::chrono::system_clock::time_point time) {
  return std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count();
}

}  // namespace web
