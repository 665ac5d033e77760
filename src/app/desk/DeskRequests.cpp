// The requests of pages, word by word, and who answers them.

#include "app/desk/DeskRequests.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>

#include "app/desk/DataRows.h"
#include "app/desk/DeskLinks.h"
#include "web/desk/Desk.h"
#include "web/http/Target.h"

namespace app {

using json::Json;

namespace {

std::vector<std::string_view> wordsOf(std::string_view path) {
  std::vector<std::string_view> words;
  while (true) {
    const std::size_t slash = std::min(path.find('/'), path.size());
    words.push_back(path.substr(0, slash));
    if (slash == path.size()) return words;
    path.remove_prefix(slash + 1);
  }
}

[[noreturn]] void failUnknown() { throw web::Refusal(404, "There is nothing at this address."); }

template <typename Number>
Number numberOf(std::string_view text) {
  Number number = 0;
  const auto [end, failed] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (failed != std::errc() || end != text.data() + text.size()) failUnknown();
  return number;
}

std::int64_t queryNumber(std::string_view query, std::string_view name, std::int64_t otherwise) {
  const auto text = web::queryField(query, name);
  return text ? numberOf<std::int64_t>(*text) : otherwise;
}

}  // namespace

Json DeskRequests::act(DeskWindow& window, std::string_view path, const Json& body) const {
  const Words words = wordsOf(path);
  const std::string_view what = words.front();
  if (words.size() == 1) {
    if (what == "selection") return select(window, body), nullptr;
    if (what == "cursor") return setCursor(window, body), nullptr;
    if (what == "link") return link(window, body), nullptr;
  }
  if (words.size() == 2 && what == "press") return press(words, body), nullptr;
  if (words.size() == 3 && what == "notices") {
    const int id = numberOf<int>(words[1]);
    if (words[2] == "dismiss") return notices_.dismiss(id), nullptr;
    return notices_.press(id, words[2]), nullptr;
  }
  if (words.size() == 3 && what == "jobs" && words[2] == "cancel") {
    return jobs_.cancel(numberOf<std::uint64_t>(words[1])), nullptr;
  }
  failUnknown();
}

Json DeskRequests::look(std::string_view path, std::string_view query) const {
  const Words words = wordsOf(path);
  if (words.size() == 2 && words.front() == "slides") return slide(words[1]);
  if (words.size() == 2 && words.front() == "data") return data(words[1], query);
  failUnknown();
}

int DeskRequests::slideOf(const Json& body) const {
  const auto slide = open_.slides.find(body.at("slide").get<std::uint32_t>());
  if (!slide) throw web::Refusal(404, "This slide is no longer in the deck.");
  return *slide;
}

void DeskRequests::select(DeskWindow& window, const Json& body) const {
  application_.select(*window.document, slideOf(body),
                      body.value("shapes", Json::array()).get<std::vector<std::uint32_t>>());
}

void DeskRequests::press(const Words& words, const Json& body) const {
  deck::CommandBars& bars = application_.bars();
  if (body.contains("index")) {
    bars.choose(words[1], body.at("index").get<std::int32_t>());
  } else {
    bars.press(words[1]);
  }
}

void DeskRequests::setCursor(DeskWindow& window, const Json& body) const {
  window.cursor = {body.at("connection").get<std::string>(), body.value("column", ""),
                   std::max<std::int64_t>(body.value("row", std::int64_t{1}), 1)};
}

void DeskRequests::link(DeskWindow& window, const Json& body) const {
  ColumnLink wish;
  wish.connection = body.at("connection").get<std::string>();
  wish.column = body.at("column").get<std::string>();
  const bool isAtCursor = window.cursor.connection == wish.connection;
  const std::int64_t cursorRow = isAtCursor ? window.cursor.row : 1;
  const Json row = body.value("row", Json());
  wish.row = row.is_null() ? cursorRow : row.get<std::int64_t>();
  wish.shapes = body.at("shapes").get<std::vector<std::uint32_t>>();
  wish.slide = slideOf(body);
  wish.countsUp = body.value("countUp", false);
  linkColumn(open_, wish);
}

Json DeskRequests::slide(std::string_view id) const {
  const auto slide = open_.slides.find(numberOf<std::uint32_t>(id));
  if (!slide) failUnknown();
  return {{"html", open_.slides.html(*slide)}};
}

Json DeskRequests::data(std::string_view number, std::string_view query) const {
  constexpr std::int64_t page = 200;
  const auto connection = open_.model->FindConnection(number);
  if (!connection) throw web::Refusal(404, "There is no such connection any more.");
  return dataRows(*connection, queryNumber(query, "from", 1), queryNumber(query, "count", page));
}

}  // namespace app
