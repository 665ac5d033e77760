// Judges how the show, its connections and its screens do, for people.
#include "web/show/Status.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cmath>

#include "json/Json.h"
#include "web/show/Broadcast.h"
#include "web/show/ClientFiles.h"
#include "web/show/ViewJson.h"

namespace web {
namespace {

using json::Json;
using Clock = Screens::Clock;

// A screen reports every five seconds or six.
constexpr std::chrono::seconds PatienceWithScreens{15};
constexpr std::chrono::seconds LongestPatienceWithScreens{60};

const char* nameOf(Level level) {
  switch (level) {
    case Level::Good:
      return "good";
    case Level::Warning:
      return "warning";
    case Level::Bad:
      return "bad";
    case Level::Idle:
      break;
  }
  return "idle";
}

/// To the tenth of a second.
template <typename Time>
double secondsBetween(Time earlier, Time later) {
  return std::round(std::max(0.0, std::chrono::duration<double>(later - earlier).count()) * 10) / 10;
}

double secondsSince(std::chrono::system_clock::time_point time) {
  return secondsBetween(time, std::chrono::system_clock::now());
}

/// Notes the judgements, the worst of which is that of the whole.
class Judges {
 public:
  void add(Json& json, const Judgement& judgement) {
    json["level"] = nameOf(judgement.level);
    json["state"] = judgement.state;
    worst_ = std::max(worst_, judgement.level);
  }
  void add(Level level) { worst_ = std::max(worst_, level); }
  [[nodiscard]] const char* worst() const { return nameOf(worst_); }

 private:
  Level worst_ = Level::Good;
};

Json showStatus(const ScreenState& state, int position) {
  Json json = {{"slide", position}, {"slideCount", state.slideCount}, {"running", nullptr}};
  if (state.began) json["running"] = secondsSince(*state.began);
  return json;
}

Json deckStatus(const DeckHealth& deck) {
  Json json = {{"name", deck.name}, {"until", nullptr}, {"problem", nullptr}};
  if (!deck.until.empty()) json["until"] = deck.until;
  if (!deck.why.empty()) json["problem"] = withoutFolders(deck.why);
  return json;
}

Json connectionStatus(const ConnectionHealth& connection) {
  Json json = {{"connection", connection.number},
               {"description", connection.description},
               {"rows", connection.rows},
               {"interval", connection.interval},
               {"age", nullptr},
               {"error", nullptr}};
  if (connection.age) json["age"] = *connection.age;
  if (connection.lastErrorTime) {
    json["error"] = {{"age", secondsSince(*connection.lastErrorTime)},
                     {"text", withoutFolders(connection.lastError)}};
  }
  return json;
}

Json screenStatus(const Screens::Screen& screen, Clock::time_point now) {
  Json json = {{"screen", screen.number},
               {"view", viewJson(screen.view)},
               {"connected", secondsBetween(screen.opened, now)},
               {"hub", screen.course.has_value()},
               {"painted", nullptr}};
  if (!screen.known.name.empty()) json["name"] = screen.known.name;
  if (screen.painted) {
    Json& painted = json["painted"];
    painted = {{"slide", screen.painted->slide},
               {"age", secondsBetween(screen.painted->at, now)},
               {"delay", nullptr}};
    if (screen.painted->delay) painted["delay"] = *screen.painted->delay;
  }
  return json;
}

/// Whether a path begins there: "/x", "C:\", "C:/", "\\server", "./", "../", "~/".
bool isPathAt(std::string_view text) {
  const auto at = [&text](std::size_t i) { return i < text.size() ? text[i] : ' '; };
  const auto isSlash = [](char c) { return c == '/' || c == '\\'; };
  if (text.starts_with('/')) return std::isspace(static_cast<unsigned char>(at(1))) == 0;
  if (text.starts_with("\\\\")) return true;
  if (std::isalpha(static_cast<unsigned char>(at(0))) != 0) return at(1) == ':' && isSlash(at(2));
  while (text.starts_with('.')) text.remove_prefix(1);
  return (at(0) == '/' && text.size() > 1) || text.starts_with("~/");
}

std::string_view lastName(std::string_view path) {
  while (!path.empty() && (path.back() == '/' || path.back() == '\\')) path.remove_suffix(1);
  return path.substr(path.find_last_of("/\\") + 1);
}

}  // namespace

Judgement judged(const ConnectionHealth& connection) {
  if (connection.isStale) return {Level::Bad, "stale"};
  if (connection.isFailing) return {Level::Warning, "failing"};
  if (!connection.isUsed) return {Level::Idle, "resting"};
  if (!connection.age) return {Level::Warning, "waiting"};
  return {Level::Good, "fresh"};
}

Judgement judged(const StandingSlide& slide) {
  constexpr double Patience = 15;  // s
  return {slide.age > Patience ? Level::Bad : Level::Warning, "standing"};
}

Judgement judged(const DeckHealth& deck) {
  using State = DeckHealth::State;
  const bool isWell = deck.state != State::Refused && deck.why.empty();
  const Level level = deck.state == State::NotNow ? Level::Idle : isWell ? Level::Good : Level::Warning;
  return {level, wordFor(deck.state)};
}

Judgement judged(const ScreenState& state) {
  if (state.progress) return {Level::Warning, "opening"};
  if (state.ended) return {Level::Bad, "ended"};
  if (state.blank == Blank::Black) return {Level::Warning, "black"};
  if (state.blank == Blank::White) return {Level::Warning, "white"};
  if (!state.current) return {Level::Warning, "opening"};
  if (state.current->index == 0) return {Level::Warning, "empty"};
  return {Level::Good, "running"};
}

Judgement judged(const Screens::Screen& screen, std::uint64_t newest, std::optional<Clock::time_point> waits,
                 Clock::time_point now) {
  const auto isOver = [&](Clock::time_point since, std::chrono::seconds time) { return now - since > time; };
  if (!screen.painted) {
    if (isOver(screen.opened, LongestPatienceWithScreens)) return {Level::Bad, "silent"};
    if (isOver(screen.opened, PatienceWithScreens)) return {Level::Warning, "silent"};
    return {Level::Idle, "new"};
  }
  if (screen.painted->sequence >= newest) return {Level::Good, "current"};
  if (!waits || isOver(*waits, LongestPatienceWithScreens)) return {Level::Bad, "behind"};
  if (isOver(*waits, PatienceWithScreens)) return {Level::Warning, "behind"};
  return {Level::Good, "current"};
}

Judgement judged(const Screens::Missing& screen, Clock::time_point now) {
  if (now - screen.since > LongestPatienceWithScreens) return {Level::Bad, "missing"};
  return {now - screen.since > PatienceWithScreens ? Level::Warning : Level::Idle, "missing"};
}

Judgement judged(const Screens::Course& course, const Screens::Screen& screen) {
  return judged(screen, course.newest, course.waits, course.at);
}

Judgement judged(const Publisher::Node& node, bool isReplaced) {
  if (!node.isUp) return {Level::Idle, "waiting"};
  if (*node.isUp) return {Level::Good, "taking"};
  return {isReplaced ? Level::Warning : Level::Bad, "away"};
}

std::string withoutFolders(std::string_view text) {
  constexpr std::string_view Ends = " \t\r\n,;()'\"";
  std::string told;
  while (!text.empty()) {
    const char before = told.empty() ? ' ' : told.back();
    if (Ends.find(before) == std::string_view::npos || !isPathAt(text)) {
      told += text.front();
      text.remove_prefix(1);
      continue;
    }
    // Within quotation marks a path may hold blanks.
    const bool isQuoted = before == '\'' || before == '"';
    const std::size_t close = isQuoted ? text.find(before) : std::string_view::npos;
    const std::size_t end =
        std::min(close != std::string_view::npos ? close : text.find_first_of(Ends), text.size());
    std::string_view path = text.substr(0, end);
    // "…/flights.txt: there is no such file"
    while (!isQuoted && !path.empty() && (path.back() == ':' || path.back() == '.')) path.remove_suffix(1);
    told += lastName(path);
    text.remove_prefix(std::max<std::size_t>(path.size(), 1));
  }
  return told;
}

namespace {

/// All are judged; of those at hubs the ones that need a look are told of, and the first of the others.
Json screensStatus(const Broadcast& broadcast, Judges& judges) {
  constexpr std::size_t mostTold = 200;
  const Screens& book = broadcast.screenBook();
  const auto now = book.now();
  Json screens = Json::array();
  std::size_t well = 0;
  std::size_t ill = 0;
  for (const auto& [id, screen] : book.all()) {
    const auto waits =
        screen.painted ? broadcast.changedAt(screen.view, screen.painted->sequence + 1) : std::nullopt;
    const Judgement judgement = screen.course ? judged(*screen.course, screen)
                                              : judged(screen, broadcast.newest(screen.view), waits, now);
    judges.add(judgement.level);
    std::size_t& told = judgement.level > Level::Good ? ill : well;
    if (screen.course && ++told > mostTold) continue;
    screens.push_back(screenStatus(screen, now));
    judges.add(screens.back(), judgement);
  }
  // By their secret names they would stand in a different order each time they come.
  std::sort(screens.begin(), screens.end(),
            [](const Json& a, const Json& b) { return a["screen"] < b["screen"]; });
  for (const Screens::Missing& screen : book.missing()) {
    const Judgement judgement = judged(screen, now);
    judges.add(judgement.level);
    if (++ill > mostTold) continue;
    screens.push_back(
        {{"screen", nullptr}, {"name", screen.name}, {"away", secondsBetween(screen.since, now)}});
    judges.add(screens.back(), judgement);
  }
  return screens;
}

/// Null without a hub.
Json hubStatus(const Publisher* hub, Judges& judges) {
  if (hub == nullptr) return nullptr;
  const std::vector<Publisher::Node>& nodes = hub->nodes();
  const bool isReplaced =
      std::any_of(nodes.begin(), nodes.end(), [](const auto& node) { return node.isUp == true; });
  Json json = Json::array();
  for (const Publisher::Node& node : nodes) {
    const HubNode& address = node.address;
    const std::string name =
        address.socket.empty() ? address.name : "socket " + std::string(lastName(address.socket));
    json.push_back({{"address", name}, {"since", nullptr}, {"problem", withoutFolders(node.why)}});
    if (node.isUp) json.back()["since"] = secondsBetween(node.since, Publisher::Clock::now());
    judges.add(json.back(), judged(node, isReplaced));
  }
  return json;
}

}  // namespace

std::string statusJson(const Health& health, const ScreenState& state, const Broadcast& broadcast) {
  Judges judges;
  Json show = showStatus(state, health.position);
  const bool isGround = health.decks && state.slideCount == 0;
  judges.add(show, isGround ? Judgement{Level::Idle, "waiting"} : judged(state));
  Json connections = Json::array();
  for (const ConnectionHealth& connection : health.connections) {
    connections.push_back(connectionStatus(connection));
    judges.add(connections.back(), judged(connection));
  }
  Json slides = Json::array();
  for (const StandingSlide& slide : health.standing) {
    slides.push_back({{"slide", slide.slide}, {"age", slide.age}, {"error", withoutFolders(slide.error)}});
    judges.add(slides.back(), judged(slide));
  }
  const Screens& book = broadcast.screenBook();
  const Json screens = screensStatus(broadcast, judges);
  // Nobody sees this show.
  if (screens.empty()) judges.add(Level::Warning);
  const Json hub = hubStatus(broadcast.publisher(), judges);
  Json json = {{"version", clientVersion()},
               {"title", state.title},
               {"level", judges.worst()},
               {"show", show},
               {"connections", connections},
               {"slides", slides},
               {"screens", screens},
               {"screenCount", book.all().size()},
               {"hub", hub}};
  if (health.decks) {
    Json decks = Json::array();
    for (const DeckHealth& deck : health.decks->decks) {
      decks.push_back(deckStatus(deck));
      judges.add(decks.back(), judged(deck));
    }
    if (!health.decks->problem.empty()) judges.add(Level::Warning);
    json["decks"] = decks;
    json["folder"] = withoutFolders(health.decks->problem);
    json["level"] = judges.worst();
  }
  return json::textOf(json);
}

}  // namespace web
