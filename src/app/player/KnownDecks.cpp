// What a player remembers, as JSON.

#include "app/player/KnownDecks.h"

#include "app/distribution/Digest.h"
#include "app/wiring/Failure.h"
#include "basic/Conversion.h"
#include "basic/Strings.h"
#include "json/Json.h"

namespace app {
namespace {

constexpr int Format = 1;

json::Json jsonOf(const KnownDeck& deck) {
  json::Json json{{"name", deck.name}, {"highest", deck.highestSerial}, {"shown", deck.shownAt}};
  if (!deck.version) return json;
  const KnownVersion& version = *deck.version;
  const auto& schedule = version.tags.schedule;
  json["note"] = version.listed.note.json();
  json["path"] = version.listed.path;
  json["computers"] = version.tags.computers;
  json["start"] = basic::StoredDate(schedule.start);
  json["stop"] = basic::StoredDate(schedule.stop);
  json["days"] = schedule.days;
  json["hours"] = schedule.hours;
  return json;
}

KnownDeck deckOf(const json::Json& json) {
  KnownDeck deck;
  deck.name = json.at("name").get<std::string>();
  deck.highestSerial = json::wholeIn<std::int64_t>(json, "highest");
  deck.shownAt = json::wholeIn<std::int64_t>(json, "shown");
  if (!json.contains("note")) return deck;
  KnownVersion version;
  version.listed = {Note::of(json.at("note")), json.at("path").get<std::string>()};
  version.tags.computers = json.at("computers").get<std::vector<std::string>>();
  auto& schedule = version.tags.schedule;
  schedule.start = basic::CDate(json.at("start").get<std::string>());
  schedule.stop = basic::CDate(json.at("stop").get<std::string>());
  schedule.days = json.at("days").get<std::string>();
  schedule.hours = json.at("hours").get<std::string>();
  deck.version = std::move(version);
  return deck;
}

}  // namespace

KnownDecks KnownDecks::read(std::string_view text) try {
  const json::Json json = json::Json::parse(text);
  if (json::wholeIn<int>(json, "format") != Format) fail("It was written by another version of the program.");
  KnownDecks known;
  known.device = json::wholeIn<std::uint64_t>(json, "device");
  for (const auto& each : json.at("decks")) {
    KnownDeck deck = deckOf(each);
    known.decks.insert_or_assign(keyOf(deck.name), std::move(deck));
  }
  return known;
} catch (const json::Json::exception& error) {
  fail(error.what());
}

std::string KnownDecks::text() const {
  json::Json json{{"format", Format}, {"device", device}, {"decks", json::Json::array()}};
  for (const auto& [key, deck] : decks) json["decks"].push_back(jsonOf(deck));
  return json::textOf(json, 1) + "\n";
}

std::string KnownDecks::keyOf(std::string_view name) { return basic::UCase(name); }

std::string versionOf(const Note& note) {
  std::string text = note.name + '\n';
  for (const SentFile& file : note.files)
    text += file.sha256 + ' ' + std::to_string(file.size) + ' ' + file.path + '\n';
  return sha256(text).substr(0, 32);
}

}  // namespace app
