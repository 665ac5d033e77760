// One look at a distribution folder: what counts, what is refused, and how its files come.

#include "app/player/DeckCollector.h"

#include <algorithm>
#include <exception>
#include <set>
#include <utility>

#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "opc/PackageFile.h"

namespace app {

namespace modSchedule = LF2000::modSchedule;

namespace {

constexpr std::int64_t FirstPause = 500;
constexpr std::int64_t LongestPause = 30'000;
/// A deck that came as it was sent and cannot be read is not read again all the time. Memory may have been
/// out.
constexpr std::int64_t DamagedPause = 600'000;

}  // namespace

DeckCollector::DeckCollector(DeckFolder& folder, DeckCache& cache, KeptVersions& kept, Options options,
                             Hearer hearer)
    : folder_(folder), cache_(cache), kept_(kept), options_(std::move(options)), hearer_(std::move(hearer)) {}

void DeckCollector::look(basic::Date now, std::int64_t ticks) {
  now_ = now;
  ticks_ = ticks;
  isSettled_ = false;
  FolderListing listing;
  try {
    listing = folder_.list();
  } catch (const basic::Error& error) {
    isSettled_ = true;
    return tellTrouble(error.description);
  }
  tellTrouble({});
  wasRead_ = true;
  isBusy_ = listing.isBusy;
  known_.device = folder_.device();

  twins_.clear();
  coming_.clear();
  for (auto& [key, hindrance] : hindrances_) hindrance.isSeen = false;
  std::map<std::string, std::string> names;  // as they are spelt, by key
  const auto isFirst = [&](const std::string& name) {
    const std::string& first = names.try_emplace(KnownDecks::keyOf(name), name).first->second;
    if (first != name) twins_.emplace(name, first);
    return first == name;
  };
  std::vector<Wanted> wanted;
  for (const ListedDeck& listed : listing.decks) {
    if (isFirst(listed.note.name)) consider(listed, wanted);
  }
  for (const UnreadableDeck& deck : listing.unreadable) {
    if (isFirst(deck.name)) hinder(KnownDecks::keyOf(deck.name), deck.name, deck.why, /*isRefusal=*/false);
  }
  // Who can write into the folder could otherwise take decks away without the key.
  std::erase_if(known_.decks, [&](const auto& each) {
    const bool isTrusted = options_.trust && (each.second.version || each.second.highestSerial > 0);
    return !isTrusted && !names.contains(each.first);
  });
  std::stable_partition(wanted.begin(), wanted.end(), [](const Wanted& each) { return each.isOn; });
  for (const Wanted& each : wanted) obtain(each);

  std::erase_if(attempts_, [&](const auto& each) { return !names.contains(each.first); });
  tellHindrances();
  sweep();
  store();
  isSettled_ = !isBusy_;
  hearer_.changed();
}

/// Nothing where it is taken.
std::string DeckCollector::refusalOf(const ListedDeck& listed, const KnownDeck& known) const {
  // What counts already was looked at when it was taken.
  if (!options_.trust || (known.version && known.version->listed == listed)) return {};
  const Note& note = listed.note;
  if (!listed.path.empty() || note.signature.empty()) {
    return "It is not signed, and this player takes signed decks alone.";
  }
  if (!note.isSignedBy(*options_.trust)) {
    return note.key == options_.trust->id()
               ? "Its signature does not fit: its note was changed after it was signed."
               : "It is signed with another key.";
  }
  if (note.serial < known.highestSerial) return "It is older than the version that was taken before.";
  return {};
}

void DeckCollector::consider(const ListedDeck& listed, std::vector<Wanted>& wanted) {
  const std::string key = KnownDecks::keyOf(listed.note.name);
  KnownDeck& known = known_.decks[key];
  known.name = listed.note.name;
  if (const std::string why = refusalOf(listed, known); !why.empty()) {
    return hinder(key, known.name, why, /*isRefusal=*/true);
  }
  if (listed.note.withdrawn) {
    known.version.reset();
    known.highestSerial = std::max(known.highestSerial, listed.note.serial);
    attempts_.erase(key);
    return;
  }
  const std::string id = versionOf(listed.note);
  try {
    KnownVersion version{listed, {}};
    if (known.version && versionOf(known.version->listed.note) == id) {
      version.tags = known.version->tags;
    } else if (isDue(key, id, false)) {
      version.tags = tagsOf(listed, known);
    } else {
      await(listed.note);
      return hinder(key, known.name, attempts_[key].why, /*isRefusal=*/false);
    }
    if (!isWanted(version) || held_.contains(id)) return take(key, version);
    const bool isOn = modSchedule::IsOpen(version.tags.schedule, now_);
    await(listed.note);
    wanted.push_back({key, std::move(version), isOn});
  } catch (const std::exception& error) {  // memory may be out as well: a deck is somebody else's file
    await(listed.note);
    failed(key, id, false, error.what());
    if (cache_.has(listed.note.files.front())) attempts_[key].due = ticks_ + DamagedPause;
  }
}

/// The deck alone is needed to know for whom the others are.
DeckTags DeckCollector::tagsOf(const ListedDeck& listed, const KnownDeck& known) {
  const SentFile& deck = listed.note.files.front();
  if (known.version && known.version->listed.note.files.front().sha256 == deck.sha256)
    return known.version->tags;
  if (deck.size > opc::MaximumPackageBytes) fail("It is too large for a deck.");
  put(listed, deck);
  return readDeckTags(cache_.pathOf(deck), deck.path);
}

void DeckCollector::obtain(const Wanted& wanted) {
  const ListedDeck& listed = wanted.version.listed;
  const std::string id = versionOf(listed.note);
  if (!isDue(wanted.key, id, wanted.isOn)) {
    return hinder(wanted.key, listed.note.name, attempts_[wanted.key].why, /*isRefusal=*/false);
  }
  try {
    makeRoom(wanted);
    for (const SentFile& file : listed.note.files) put(listed, file);
    lay(wanted.version, known_.decks[wanted.key].shownAt);
    take(wanted.key, wanted.version);
    hearer_.changed();
  } catch (const std::exception& error) {
    failed(wanted.key, id, wanted.isOn, error.what());
  }
}

void DeckCollector::put(const ListedDeck& listed, const SentFile& file) {
  cache_.put(
      file, [&](std::uint64_t from, const DeckCache::Take& take) { folder_.read(listed, file, from, take); });
}

void DeckCollector::lay(const KnownVersion& version, std::int64_t shownAt) {
  const std::string id = versionOf(version.listed.note);
  cache_.layOut(id, version.listed.note);
  held_.insert_or_assign(id, version.listed.note);
  kept_.add(id, shownAt);
}

void DeckCollector::take(const std::string& key, const KnownVersion& version) {
  KnownDeck& known = known_.decks[key];
  known.version = version;
  known.highestSerial = std::max(known.highestSerial, version.listed.note.serial);
  attempts_.erase(key);
  // That of the look before.
  if (const auto ended = hindrances_.find(key); ended != hindrances_.end()) {
    tellEnd(ended->second);
    hindrances_.erase(ended);
  }
}

void DeckCollector::await(const Note& note) {
  for (const SentFile& file : note.files) coming_.insert(file.sha256);
}

bool DeckCollector::isWanted(const KnownVersion& version) const {
  return version.tags.IsFor(options_.computer) && ScheduleComplaint(version.tags.schedule).IsEmpty() &&
         !IsOver(version.tags.schedule, now_);
}

bool DeckCollector::isDue(const std::string& key, const std::string& version, bool isOn) {
  const auto found = attempts_.find(key);
  if (found == attempts_.end() || found->second.version != version) return true;
  // What could wait until its time comes no longer can.
  return ticks_ >= found->second.due || (isOn && !found->second.isOn);
}

void DeckCollector::failed(const std::string& key, const std::string& version, bool isOn,
                           const std::string& why) {
  Attempt& attempt = attempts_[key];
  if (attempt.version != version) attempt = {version, isOn, why, 0, 0};
  attempt.isOn = isOn;
  attempt.why = why;
  attempt.pause = std::clamp(attempt.pause * 2, FirstPause, LongestPause);
  attempt.due = ticks_ + attempt.pause;
  hinder(key, known_.decks[key].name, why, /*isRefusal=*/false);
}

std::vector<CollectedDeck> DeckCollector::decks() const {
  std::vector<CollectedDeck> decks;
  std::set<std::string> keys;
  for (const auto& [key, known] : known_.decks) keys.insert(key);
  for (const auto& [key, hindrance] : hindrances_) keys.insert(key);
  for (const std::string& key : keys) {
    CollectedDeck deck;
    if (const auto hindrance = hindrances_.find(key); hindrance != hindrances_.end()) {
      deck.name = hindrance->second.name;
      deck.hindrance = hindrance->second.why;
    }
    if (const auto found = known_.decks.find(key); found != known_.decks.end()) {
      deck.name = found->second.name;
      deck.version = found->second.version;
    }
    if (deck.version) {
      const Note& note = deck.version->listed.note;
      deck.isForThisComputer = deck.version->tags.IsFor(options_.computer);
      const std::string id = versionOf(note);
      if (held_.contains(id)) deck.file = cache_.pathOf(id, note.files.front());
    }
    decks.push_back(std::move(deck));
  }
  for (const auto& [name, first] : twins_) {
    CollectedDeck deck;
    deck.name = name;
    deck.hindrance = "Its name differs from that of " + basic::InQuotes(first) + " in case alone.";
    decks.push_back(std::move(deck));
  }
  return decks;
}

}  // namespace app
