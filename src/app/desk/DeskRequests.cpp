// The requests of pages, word by word, and who does what they ask for.

#include "app/desk/DeskRequests.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <utility>

#include "app/desk/DataRows.h"
#include "app/desk/DeskHistory.h"
#include "app/desk/DeskLinks.h"
#include "app/wiring/Failure.h"
#include "basic/Strings.h"
#include "model/modSample.h"
#include "pages/modConnectionPages.h"
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

/// Numbers of pages are whole; others would not fit where they go.
std::int64_t whole(const Json& json) {
  const auto number = json::wholeOf<std::int64_t>(json);
  if (!number) throw web::Refusal(400, "A whole number is expected.");
  return *number;
}

std::int64_t whole(const Json& body, const char* name, std::int64_t otherwise) {
  return body.contains(name) ? whole(body.at(name)) : otherwise;
}

/// Of a slide or a shape; 0, which none has, for what is no id.
std::uint32_t idOf(const Json& json) {
  const std::int64_t id = whole(json);
  return id > 0 && id <= std::numeric_limits<std::uint32_t>::max() ? static_cast<std::uint32_t>(id) : 0;
}

std::vector<std::uint32_t> idsOf(const Json& list) {
  if (!list.is_array()) throw web::Refusal(400, "Shapes are named by a list of their numbers.");
  std::vector<std::uint32_t> ids;
  for (const Json& each : list) ids.push_back(idOf(each));
  return ids;
}

LF2000::ConnectionKind kindOf(const std::string& name) {
  if (name == "text") return LF2000::ConnectionKind::TextFile;
  if (name == "database") return LF2000::ConnectionKind::Database;
  if (name == "workbook") return LF2000::ConnectionKind::Excel;
  throw web::Refusal(400, "A connection is to a text, a database or a workbook, not to '" + name + "'.");
}

}  // namespace

Json DeskRequests::act(DeskWindow& window, std::string_view path, const Json& body) const {
  using Act = void (DeskRequests::*)(DeskWindow&, const Json&) const;
  static constexpr std::array<std::pair<std::string_view, Act>, 8> acts = {
      {{"selection", &DeskRequests::select},
       {"cursor", &DeskRequests::setCursor},
       {"link", &DeskRequests::link},
       {"fill", &DeskRequests::fill},
       {"rename", &DeskRequests::rename},
       {"connect", &DeskRequests::connect},
       {"sample", &DeskRequests::trySample},
       {"preview", &DeskRequests::setPreview}}};
  for (const auto& [name, run] : acts) {
    if (path == name) return (this->*run)(window, body), nullptr;
  }
  const Words words = wordsOf(path);
  const std::string_view what = words.front();
  if (words.size() == 2) {
    if (what == "press") return press(window, words[1], body), nullptr;
    if (what == "commands") return command(window, words[1]);
    if (what == "choices") return choose(window, numberOf<int>(words[1]), body), nullptr;
    if (what == "repairs") {
      return parts_.findings.repair(parts_.application, parts_.open, numberOf<int>(words[1]),
                                    body.value("choice", "")),
             nullptr;
    }
  }
  if (words.size() == 3) {
    if (what == "forms") return form(window, words, body);
    if (what == "notices") return pressNotice(words), nullptr;
    if (what == "jobs" && words[2] == "cancel") {
      return parts_.jobs.cancel(numberOf<std::uint64_t>(words[1])), nullptr;
    }
  }
  failUnknown();
}

Json DeskRequests::look(std::string_view path, std::string_view query) const {
  const Words words = wordsOf(path);
  if (path == "roots") return parts_.roots.toJson();
  if (words.size() == 2 && words.front() == "slides") return slide(words[1]);
  if (words.size() == 2 && words.front() == "data") return data(words[1], query);
  if (words.size() == 3 && words.front() == "roots" && words[2] == "files") return files(words[1], query);
  failUnknown();
}

int DeskRequests::slideOf(const Json& body) const {
  const auto slide = parts_.open.slides.find(idOf(body.at("slide")));
  if (!slide) throw web::Refusal(404, "This slide is no longer in the deck.");
  return *slide;
}

void DeskRequests::select(DeskWindow& window, const Json& body) const {
  parts_.application.select(*window.document, slideOf(body), idsOf(body.value("shapes", Json::array())));
}

void DeskRequests::press(DeskWindow&, std::string_view id, const Json& body) const {
  deck::CommandBars& bars = parts_.application.bars();
  if (body.contains("index")) {
    constexpr std::int64_t most = 1000;
    bars.choose(id, static_cast<std::int32_t>(std::clamp<std::int64_t>(whole(body.at("index")), 0, most)));
  } else {
    bars.press(id);
  }
}

Json DeskRequests::command(DeskWindow& window, std::string_view name) const {
  if (name == "save") return parts_.save(), nullptr;
  if (name == "check") return parts_.findings.check(parts_.open), nullptr;
  if (name == "show") return {{"url", parts_.show()}};
  if (name != "undo" && name != "redo") failUnknown();
  const bool isUndo = name == "undo";
  const auto effect = isUndo ? parts_.edited.undo() : parts_.edited.redo();
  if (!effect) fail(isUndo ? "There is nothing to undo." : "There is nothing to redo.");
  takeUp(*effect, parts_.application, parts_.open, window);
  parts_.say(window, (isUndo ? "Undone: " : "Done again: ") + effect->label);
  return nullptr;
}

void DeskRequests::setCursor(DeskWindow& window, const Json& body) const {
  window.cursor = {body.at("connection").get<std::string>(), body.value("column", ""),
                   std::max<std::int64_t>(whole(body, "row", 1), 1)};
}

void DeskRequests::link(DeskWindow& window, const Json& body) const {
  ColumnLink wish;
  wish.connection = body.at("connection").get<std::string>();
  wish.column = body.at("column").get<std::string>();
  const bool isAtCursor = window.cursor.connection == wish.connection;
  const std::int64_t cursorRow = isAtCursor ? window.cursor.row : 1;
  const Json row = body.value("row", Json());
  wish.row = row.is_null() ? cursorRow : whole(row);
  wish.shapes = idsOf(body.at("shapes"));
  wish.slide = slideOf(body);
  wish.countsUp = body.value("countUp", false);
  parts_.say(window, linkColumn(parts_.open, wish));
}

void DeskRequests::fill(DeskWindow& window, const Json& body) const {
  RowFill wish;
  wish.connection = body.at("connection").get<std::string>();
  wish.columns = body.at("columns").get<std::vector<std::string>>();
  wish.row = whole(body, "row", 1);
  wish.step = whole(body, "step", 1);
  wish.shapes = idsOf(body.at("shapes"));
  wish.slide = slideOf(body);
  parts_.say(window, fillRows(parts_.open, wish));
}

void DeskRequests::rename(DeskWindow&, const Json& body) const {
  renameShape(parts_.open, slideOf(body), idOf(body.at("shape")), body.at("name").get<std::string>());
}

void DeskRequests::connect(DeskWindow& window, const Json& body) const {
  if (body.contains("number")) {
    return LF2000::modConnectionPages::OpenExisting(body.at("number").get<std::string>(), parts_.open.model);
  }
  const std::string path = body.value("path", "");
  const std::filesystem::path deck = parts_.open.presentation->FullName();
  if (!path.empty() && !parts_.roots.hold((deck.parent_path() / path).string())) {
    throw web::Refusal(404, "There is nothing of that name in the folders of this desk.");
  }
  LF2000::modConnectionPages::OpenNew(
      kindOf(body.at("kind").get<std::string>()), path, parts_.open.model,
      [cursor = &window.cursor, document = std::weak_ptr(window.document)](const std::string& number) {
        if (document.lock()) *cursor = {number, {}, 1};
      });
}

void DeskRequests::trySample(DeskWindow& window, const Json&) const {
  LF2000::modSample::Begin(*parts_.open.model);
  window.cursor = {std::string(LF2000::modSample::Number), {}, 1};
}

void DeskRequests::setPreview(DeskWindow&, const Json& body) const {
  using LF2000::DataPreview;
  const auto name = body.at("with").get<std::string>();
  const auto preview = name == "none"      ? DataPreview::NoRows
                       : name == "longest" ? DataPreview::LongestTexts
                                           : DataPreview::AsTheyAre;
  if (preview == DataPreview::AsTheyAre && name != "today") {
    throw web::Refusal(400, "Slides are previewed with today, none or longest.");
  }
  parts_.preview = preview;
  parts_.open.preview(preview);
}

Json DeskRequests::form(DeskWindow& window, const Words& words, const Json& body) const {
  const int id = numberOf<int>(words[1]);
  if (words[2] == "events") return parts_.forms.raise(window.name, id, body);
  if (words[2] == "close") return parts_.forms.queryClose(window.name, id), nullptr;
  failUnknown();
}

/// What lies beside the deck is named from there, so that both can be moved together.
void DeskRequests::choose(DeskWindow& window, int choice, const Json& body) const {
  if (!body.contains("root")) return parts_.forms.chosen(window.name, choice, std::nullopt);
  const std::filesystem::path path = parts_.roots.chosen(
      static_cast<int>(std::clamp<std::int64_t>(whole(body.at("root")), 0, 1000)), body.value("path", ""));
  const auto folder = std::filesystem::weakly_canonical(parts_.open.presentation->FullName()).parent_path();
  const auto relative = path.lexically_relative(folder);
  const bool isBelow = !relative.empty() && *relative.begin() != "..";
  parts_.forms.chosen(window.name, choice, isBelow ? relative.string() : path.string());
}

void DeskRequests::pressNotice(const Words& words) const {
  const int id = numberOf<int>(words[1]);
  if (words[2] == "dismiss") return parts_.notices.dismiss(id);
  parts_.notices.press(id, words[2]);
}

Json DeskRequests::slide(std::string_view id) const {
  const auto slide = parts_.open.slides.find(numberOf<std::uint32_t>(id));
  if (!slide) failUnknown();
  return {{"html", parts_.open.slides.html(*slide)}};
}

Json DeskRequests::data(std::string_view number, std::string_view query) const {
  constexpr std::int64_t page = 200;
  const auto connection = parts_.open.model->FindConnection(number);
  if (!connection) throw web::Refusal(404, "There is no such connection any more.");
  return dataRows(*connection, queryNumber(query, "from", 1), queryNumber(query, "count", page));
}

Json DeskRequests::files(std::string_view root, std::string_view query) const {
  Roots::Wish wish;
  wish.root = numberOf<int>(root);
  wish.path = web::queryField(query, "path").value_or("");
  wish.kinds = basic::Split(web::queryField(query, "kinds").value_or(""), ',');
  wish.isFoldersOnly = web::queryField(query, "what") == "folder";
  return parts_.roots.list(wish);
}

}  // namespace app
