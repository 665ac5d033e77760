// What the server says of itself and its show: health as JSON, metrics for Prometheus.
#include "web/show/Reports.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <set>

#include "json/Json.h"
#include "web/show/Broadcast.h"
#include "web/show/ViewJson.h"
#include "web/show/ViewName.h"

namespace web {
namespace {

using json::Json;

/// Screens at hubs that are told of one by one; the others are counted.
constexpr std::size_t mostTold = 500;

double rounded(double seconds) { return std::round(seconds * 1000) / 1000; }

double secondsBetween(Screens::Clock::time_point earlier, Screens::Clock::time_point later) {
  return rounded(std::chrono::duration<double>(later - earlier).count());
}

/// ISO 8601 in UTC.
Json timeJson(const std::optional<ConnectionHealth::Time>& time) {
  if (!time) return nullptr;
  const std::time_t seconds = std::chrono::system_clock::to_time_t(*time);
  std::tm parts{};
  gmtime_r(&seconds, &parts);
  std::array<char, 32> text{};
  return std::string(text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts));
}

Json connectionJson(const ConnectionHealth& connection) {
  Json json = {{"connection", connection.number},
               {"description", connection.description},
               {"lastSuccess", timeJson(connection.lastSuccess)},
               {"lastError", nullptr},
               {"rows", connection.rows},
               {"age", nullptr},
               {"interval", connection.interval},
               {"used", connection.isUsed},
               {"failing", connection.isFailing},
               {"stale", connection.isStale},
               {"deliveries", connection.deliveries},
               {"failures", connection.failures}};
  if (connection.age) json["age"] = rounded(*connection.age);
  if (connection.lastErrorTime) {
    json["lastError"] = {{"time", timeJson(connection.lastErrorTime)}, {"text", connection.lastError}};
  }
  return json;
}

Json screenJson(const Screens::Screen& screen, std::uint64_t newest, Screens::Clock::time_point now) {
  Json json = {{"screen", screen.number},
               {"view", viewJson(screen.view)},
               {"connected", secondsBetween(screen.opened, now)},
               {"hub", screen.course.has_value()},
               {"newest", newest},
               {"painted", nullptr}};
  if (!screen.known.name.empty()) json["name"] = screen.known.name;
  if (screen.painted) {
    Json& painted = json["painted"];
    painted = {{"slide", screen.painted->slide},
               {"sequence", screen.painted->sequence},
               {"age", secondsBetween(screen.painted->at, now)},
               {"delay", nullptr}};
    if (screen.painted->delay) painted["delay"] = rounded(*screen.painted->delay);
  }
  return json;
}

Json missingJson(const Screens& book) {
  Json json = Json::array();
  for (const Screens::Missing& screen : book.missing()) {
    json.push_back({{"name", screen.name}, {"age", secondsBetween(screen.since, book.now())}});
  }
  return json;
}

Json decksJson(const DecksHealth& decks) {
  Json list = Json::array();
  for (const DeckHealth& deck : decks.decks) {
    list.push_back(
        {{"name", deck.name}, {"state", wordFor(deck.state)}, {"why", deck.why}, {"until", deck.until}});
  }
  return {{"decks", list}, {"changes", decks.changes}, {"problem", decks.problem}};
}

/// 8 to 64 characters that need no care anywhere.
bool isScreenName(std::string_view name) {
  constexpr std::string_view allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";
  return name.size() >= 8 && name.size() <= 64 && name.find_first_not_of(allowed) == std::string_view::npos;
}

/// One line per sample, families with their help and type.
class MetricsWriter {
 public:
  void family(std::string_view name, std::string_view type, std::string_view help) {
    name_ = name;
    text_.append("# HELP ").append(name).append(" ").append(help).append("\n");
    text_.append("# TYPE ").append(name).append(" ").append(type).append("\n");
  }
  void sample(double value, std::string_view labels = {}, std::string_view suffix = {}) {
    std::array<char, 40> number{};
    std::snprintf(number.data(), number.size(), "%.15g", value);
    text_.append(name_).append(suffix).append(labels).append(" ").append(number.data()).append("\n");
  }
  void single(std::string_view name, std::string_view type, std::string_view help, double value) {
    family(name, type, help);
    sample(value);
  }
  [[nodiscard]] std::string take() { return std::move(text_); }

 private:
  std::string text_;
  std::string_view name_;
};

void writeConnections(MetricsWriter& out, const std::vector<ConnectionHealth>& connections) {
  // Families stay together, so each goes through all connections.
  const auto each = [&](std::string_view name, std::string_view type, std::string_view help, auto value) {
    out.family(name, type, help);
    for (const ConnectionHealth& connection : connections) {
      const std::optional<double> sample = value(connection);
      if (sample) out.sample(*sample, "{connection=\"" + connection.number + "\"}");
    }
  };
  using Sample = std::optional<double>;
  each("lumenfold_connection_age_seconds", "gauge", "Time since the connection last delivered.",
       [](const ConnectionHealth& c) { return c.age; });
  each("lumenfold_connection_stale", "gauge",
       "1 when a connection in use has not delivered for three intervals.",
       [](const ConnectionHealth& c) { return Sample(c.isStale ? 1 : 0); });
  each("lumenfold_connection_rows", "gauge", "Rows that the connection holds.",
       [](const ConnectionHealth& c) { return Sample(static_cast<double>(c.rows)); });
  each("lumenfold_connection_deliveries_total", "counter", "Readings that succeeded.",
       [](const ConnectionHealth& c) { return Sample(static_cast<double>(c.deliveries)); });
  each("lumenfold_connection_failures_total", "counter", "Readings that failed.",
       [](const ConnectionHealth& c) { return Sample(static_cast<double>(c.failures)); });
}

void writeDecks(MetricsWriter& out, const DecksHealth& decks) {
  using State = DeckHealth::State;
  out.family("lumenfold_decks", "gauge", "Decks of the player's folder, by what becomes of them.");
  for (const State state : {State::OnShow, State::InTurn, State::NotNow, State::Refused}) {
    const auto count = std::count_if(decks.decks.begin(), decks.decks.end(),
                                     [state](const DeckHealth& deck) { return deck.state == state; });
    out.sample(static_cast<double>(count), "{state=\"" + std::string(wordFor(state)) + "\"}");
  }
  out.single("lumenfold_deck_changes_total", "counter", "Times that a deck took the place of another.",
             static_cast<double>(decks.changes));
  out.single("lumenfold_folder_trouble", "gauge", "1 while the player's folder cannot be read.",
             decks.problem.empty() ? 0 : 1);
}

/// What stands between quotation marks there: a path may hold anything.
std::string label(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '"' || c == '\\' || c == '\n') escaped += '\\';
    escaped += c == '\n' ? 'n' : c;
  }
  return escaped;
}

void writeHub(MetricsWriter& out, const Broadcast& broadcast) {
  const Publisher& hub = *broadcast.publisher();
  out.family("lumenfold_hub_up", "gauge", "1 while the hub's node takes messages.");
  for (const Publisher::Node& node : hub.nodes()) {
    if (node.isUp) out.sample(*node.isUp ? 1 : 0, "{node=\"" + label(node.address.name) + "\"}");
  }
  out.single("lumenfold_hub_messages_total", "counter", "Messages that a hub has taken.",
             static_cast<double>(hub.taken()));
  out.single("lumenfold_hub_failures_total", "counter", "Messages that a node of a hub did not take.",
             static_cast<double>(hub.failures()));
  out.single("lumenfold_hub_waiting", "gauge", "Messages that wait for a hub.",
             static_cast<double>(hub.waiting()));
  out.single("lumenfold_hub_views", "gauge", "Views that are published.",
             static_cast<double>(broadcast.viewsAtHubs()));
}

Json hubJson(const Broadcast& broadcast) {
  const Publisher& hub = *broadcast.publisher();
  Json nodes = Json::array();
  for (const Publisher::Node& node : hub.nodes()) {
    nodes.push_back({{"address", node.address.name}, {"up", nullptr}, {"since", nullptr}, {"why", node.why}});
    if (!node.isUp) continue;
    nodes.back()["up"] = *node.isUp;
    nodes.back()["since"] = secondsBetween(node.since, Publisher::Clock::now());
  }
  return {{"nodes", nodes},
          {"views", broadcast.viewsAtHubs()},
          {"taken", hub.taken()},
          {"failures", hub.failures()},
          {"waiting", hub.waiting()}};
}

void writeKnownScreens(MetricsWriter& out, const Screens& book) {
  out.family("lumenfold_screen_present", "gauge", "1 while the known screen is there.");
  std::set<std::string> missing;
  for (const Screens::Missing& screen : book.missing()) missing.insert(screen.name);
  for (const std::string& name : book.expected()) {
    out.sample(missing.contains(name) ? 0 : 1, "{screen=\"" + label(name) + "\"}");
  }
}

void writeDelays(MetricsWriter& out, const Histogram& delays) {
  out.family("lumenfold_screen_paint_delay_seconds", "histogram",
             "From a change of the data to its paint on a screen.");
  const auto count = static_cast<double>(delays.count());
  for (std::size_t i = 0; i < Histogram::bounds.size(); ++i) {
    std::array<char, 32> label{};
    std::snprintf(label.data(), label.size(), "{le=\"%g\"}", Histogram::bounds[i]);
    out.sample(static_cast<double>(delays.upTo(i)), label.data(), "_bucket");
  }
  out.sample(count, "{le=\"+Inf\"}", "_bucket");
  out.sample(delays.sum(), {}, "_sum");
  out.sample(count, {}, "_count");
}

}  // namespace

std::string healthJson(const Health& health, const Broadcast& broadcast) {
  Json connections = Json::array();
  for (const ConnectionHealth& connection : health.connections) {
    connections.push_back(connectionJson(connection));
  }
  Json standing = Json::array();
  for (const StandingSlide& slide : health.standing) {
    standing.push_back({{"slide", slide.slide}, {"age", rounded(slide.age)}, {"error", slide.error}});
  }
  Json screens = Json::array();
  std::size_t left = mostTold;
  for (const auto& [id, screen] : broadcast.screenBook().all()) {
    if (screen.course && left == 0) continue;
    if (screen.course) --left;
    screens.push_back(screenJson(screen, broadcast.newest(screen.view), broadcast.screenBook().now()));
  }
  Json json = {{"ready", health.isReady},    {"position", health.position},
               {"connections", connections}, {"standing", standing},
               {"screens", screens},         {"screensAtHubs", broadcast.screenBook().atHubs()}};
  if (broadcast.screenBook().expects()) json["missing"] = missingJson(broadcast.screenBook());
  if (broadcast.publisher() != nullptr) json["hub"] = hubJson(broadcast);
  if (health.decks) json["player"] = decksJson(*health.decks);
  return json::textOf(json);
}

std::string metricsText(const Health& health, const Broadcast& broadcast, std::uint64_t failedRequests) {
  MetricsWriter out;
  out.single("lumenfold_ready", "gauge", "1 while the show runs and its first slide is rendered.",
             health.isReady ? 1 : 0);
  out.single("lumenfold_slide", "gauge", "The slide on show; 0 when there is none.", health.position);
  out.single("lumenfold_screens", "gauge",
             "Screens with an open stream, and those at hubs that have reported.",
             static_cast<double>(broadcast.screenBook().all().size()));
  out.single("lumenfold_screens_at_hubs", "gauge", "Those of them at hubs.",
             static_cast<double>(broadcast.screenBook().atHubs()));
  out.single("lumenfold_programs", "gauge", "Programs with an open stream.",
             static_cast<double>(broadcast.programs()));
  out.single("lumenfold_request_failures_total", "counter", "Requests that the show could not answer.",
             static_cast<double>(failedRequests));
  out.single("lumenfold_standing_slides", "gauge", "Slides that could not be refreshed.",
             static_cast<double>(health.standing.size()));
  if (broadcast.publisher() != nullptr) writeHub(out, broadcast);
  if (health.decks) writeDecks(out, *health.decks);
  if (broadcast.screenBook().expects()) writeKnownScreens(out, broadcast.screenBook());
  writeConnections(out, health.connections);
  writeDelays(out, broadcast.screenBook().delays());
  return out.take();
}

std::optional<ScreenReport> parseScreenReport(std::string_view json) {
  constexpr std::int64_t longestHeld = 60'000;
  const Json report = Json::parse(json, nullptr, false);
  if (!report.is_object()) return std::nullopt;
  const auto number = [&](const char* name) -> std::optional<std::int64_t> {
    const auto found = report.find(name);
    const auto value = found == report.end() ? std::nullopt : json::wholeOf<std::int64_t>(*found);
    return value && *value >= 0 ? value : std::nullopt;
  };
  const auto text = [&](const char* name) {
    const auto found = report.find(name);
    return found != report.end() && found->is_string() ? found->get<std::string>() : std::string();
  };
  const auto slide = number("slide");
  const auto sequence = number("sequence");
  const auto held = number("held");
  if (!slide || !sequence || !held || *slide > 1'000'000 || *held > longestHeld) return std::nullopt;
  ScreenReport screen;
  screen.paint = {static_cast<int>(*slide), static_cast<std::uint64_t>(*sequence),
                  std::chrono::milliseconds(*held)};
  screen.screen = text("screen");
  screen.view = text("view");
  screen.run = text("run");
  const bool isAtHub = !screen.view.empty();
  if (!isScreenName(screen.screen) || (isAtHub && !viewNamed(screen.view))) return std::nullopt;
  return screen;
}

}  // namespace web
