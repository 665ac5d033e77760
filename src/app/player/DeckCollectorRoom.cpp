// What a collector holds in its cache, what it remembers and what it tells.

#include <algorithm>
#include <filesystem>
#include <utility>

#include "app/player/DeckCollector.h"
#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "opc/Files.h"

namespace app {
namespace {

namespace modSchedule = LF2000::modSchedule;

constexpr const char* MemoryFile = "known.json";
constexpr std::uint64_t LargestMemory = std::uint64_t{64} << 20U;

std::uint64_t sizeOf(const Note& note) {
  std::uint64_t sum = 0;
  for (const SentFile& file : note.files) {
    if (__builtin_add_overflow(sum, file.size, &sum)) fail("Its files are too large.");
  }
  return sum;
}

std::string megabytes(std::uint64_t bytes) {
  return std::to_string((bytes + (1U << 20U) - 1) >> 20U) + " MB";
}

}  // namespace

void DeckCollector::begin(basic::Date now) {
  now_ = now;
  const std::string file = (cache_.folder() / MemoryFile).string();
  if (!opc::stateOfFile(file)) return;
  try {
    known_ = KnownDecks::read(opc::readFile(file, LargestMemory).bytes);
  } catch (const basic::Error& error) {
    return hearer_.log("What the player knew of its decks cannot be read: " + error.description);
  }
  stored_ = known_;
  folder_.device(known_.device);
  std::vector<const KnownDeck*> decks;
  for (auto& [key, deck] : known_.decks) {
    if (!deck.version) continue;
    // The cache may have had another master.
    const ListedDeck& listed = deck.version->listed;
    if (options_.trust && !listed.note.isSignedBy(*options_.trust)) deck.version.reset();
    if (deck.version && isWanted(*deck.version)) decks.push_back(&deck);
  }
  std::stable_partition(decks.begin(), decks.end(), [&](const KnownDeck* each) {
    return modSchedule::IsOpen(each->version->tags.schedule, now_);
  });
  for (const KnownDeck* deck : decks) {
    const auto& files = deck->version->listed.note.files;
    if (!std::all_of(files.begin(), files.end(), [&](const SentFile& each) { return cache_.has(each); }))
      continue;
    try {
      lay(*deck->version, deck->shownAt);
      hearer_.changed();
    } catch (const basic::Error& error) {
      hearer_.log(basic::InQuotes(deck->name) + ": " + error.description);
    }
  }
}

/// For what the deck lacks. What it replaces does not count: it goes when the show has changed over.
void DeckCollector::makeRoom(const Wanted& wanted) {
  const Note& note = wanted.version.listed.note;
  const std::uint64_t all = sizeOf(note);
  std::uint64_t before = 0;
  if (const auto& version = known_.decks[wanted.key].version;
      version && held_.contains(versionOf(version->listed.note))) {
    before = sizeOf(version->listed.note);
  }
  std::uint64_t missing = 0;
  for (const SentFile& file : note.files) missing += cache_.has(file) ? 0 : file.size;
  if (missing == 0) return;
  const auto fits = [&] {
    const std::uint64_t held = cache_.bytes();
    return all <= options_.cacheBytes && held - std::min(held, before) + missing <= options_.cacheBytes;
  };
  while (!fits()) {
    if (all <= options_.cacheBytes && evictOne(wanted.isOn)) continue;
    fail("The cache has no room for it: it has " + megabytes(all) + ", the cache may hold " +
         megabytes(options_.cacheBytes) + ".");
  }
}

/// What it will never be the time of again goes first, then what was on show least recently. What nobody
/// waits for evicts nothing that will be shown.
bool DeckCollector::evictOne(bool isForShow) {
  const KnownDeck* least = nullptr;
  const auto rank = [this](const KnownDeck& deck) {
    return std::pair(isWanted(*deck.version), kept_.shownAt(versionOf(deck.version->listed.note)));
  };
  for (const auto& [key, deck] : known_.decks) {
    if (!deck.version) continue;
    const std::string id = versionOf(deck.version->listed.note);
    if (!held_.contains(id) || kept_.isKept(id)) continue;
    if (isWanted(*deck.version) && (!isForShow || modSchedule::IsOpen(deck.version->tags.schedule, now_)))
      continue;
    if (least == nullptr || rank(deck) < rank(*least)) least = &deck;
  }
  if (least == nullptr) return false;
  const std::string id = versionOf(least->version->listed.note);
  // Somebody may have asked for it just now.
  if (!kept_.remove(id)) return evictOne(isForShow);
  held_.erase(id);
  sweep();
  return true;
}

/// Former versions go when nobody shows them any more.
void DeckCollector::sweep() {
  std::set<std::string> counting;
  for (const auto& [key, deck] : known_.decks) {
    if (deck.version && isWanted(*deck.version)) counting.insert(versionOf(deck.version->listed.note));
  }
  std::erase_if(held_,
                [&](const auto& each) { return !counting.contains(each.first) && kept_.remove(each.first); });
  DeckCache::Needs needs{{}, coming_, {}};
  for (const auto& [id, note] : held_) {
    needs.versions.insert(id);
    for (const SentFile& file : note.files) needs.digests.insert(file.sha256);
  }
  cache_.keepOnly(needs);
}

void DeckCollector::store() {
  for (auto& [key, deck] : known_.decks) {
    if (!deck.version) continue;
    // Often enough for choosing what goes first.
    constexpr std::int64_t Hour = 3600;
    const std::int64_t shown = kept_.shownAt(versionOf(deck.version->listed.note));
    if (shown > deck.shownAt + Hour) deck.shownAt = shown;
  }
  if (known_ == stored_) return;
  try {
    opc::replaceFile((cache_.folder() / MemoryFile).string(), known_.text());
    stored_ = known_;
  } catch (const basic::Error& error) {
    if (std::exchange(storeFailure_, error.description) != error.description) hearer_.log(error.description);
  }
}

void DeckCollector::hinder(const std::string& key, const std::string& name, const std::string& why,
                           bool isRefusal) {
  const auto [at, isNew] = hindrances_.try_emplace(key);
  Hindrance& hindrance = at->second;
  if (isNew) hindrance.since = ticks_;
  hindrance.name = name;
  hindrance.why = why;
  hindrance.isRefusal = isRefusal;
  hindrance.isSeen = true;
}

void DeckCollector::tellHindrances() {
  for (auto& [key, hindrance] : hindrances_) {
    if (!hindrance.isSeen) {
      tellEnd(hindrance);
      continue;
    }
    if (!hindrance.isRefusal && ticks_ - hindrance.since < Patience) continue;
    if (std::exchange(hindrance.told, hindrance.why) != hindrance.why) {
      hearer_.log(basic::InQuotes(hindrance.name) + " is not taken: " + hindrance.why);
    }
  }
  std::erase_if(hindrances_, [](const auto& each) { return !each.second.isSeen; });
}

void DeckCollector::tellEnd(const Hindrance& hindrance) const {
  if (!hindrance.told.empty())
    hearer_.log("Nothing hinders " + basic::InQuotes(hindrance.name) + " any more.");
}

void DeckCollector::tellTrouble(const std::string& why) {
  if (std::exchange(trouble_, why) == why) return;
  hearer_.log(why.empty() ? "The distribution folder can be read again." : why);
  hearer_.changed();
}

}  // namespace app
