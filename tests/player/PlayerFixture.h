#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/distribution/Digest.h"
#include "app/distribution/Note.h"
#include "app/distribution/Signature.h"
#include "app/player/DeckCache.h"
#include "app/player/DeckCollector.h"
#include "app/player/LocalFolder.h"
#include "app/player/WhyNot.h"
#include "basic/Date.h"
#include "support/DeckBuilder.h"
#include "support/TemporaryFolder.h"

namespace app::test {

using Tags = std::vector<std::pair<std::string, std::string>>;

/// A deck of one slide with that text, and the tags of its distribution (name behind the prefix, value).
inline std::string deckBytes(const std::string& text, const Tags& tags = {}) {
  support::DeckBuilder deck = support::DeckBuilder::of(support::textShape(2, "Text", text));
  Tags all;
  for (const auto& [name, value] : tags) all.emplace_back("CORVANE DISTRIBUTION " + name, value);
  if (!all.empty()) deck.presentationTags(all);
  return deck.bytes();
}

inline Tags forComputer(const std::string& name) { return {{"COMPUTER", name + "\t"}}; }

/// A distribution folder, as a sender fills it.
class SentFolder {
 public:
  /// Files by their paths, the deck first.
  using Files = std::vector<std::pair<std::string, std::string>>;

  [[nodiscard]] std::filesystem::path path() const { return folder_.path(); }

  Note note(const std::string& name, std::int64_t serial, const Files& files, const std::string& in = {}) {
    Note note;
    note.name = name;
    note.serial = serial;
    note.folder = in;
    note.way = in.empty() ? Way::Live : Way::Files;
    for (const auto& [path, bytes] : files) note.files.push_back({path, bytes.size(), sha256(bytes)});
    return note;
  }
  void put(const std::string& path, const std::string& bytes) {
    std::filesystem::create_directories((folder_.path() / path).parent_path());
    std::filesystem::remove(folder_.path() /
                            path);  // as a rename would: another file, not the same one rewritten
    static_cast<void>(folder_.write(path, bytes));
  }
  void put(const Note& note) { put(note.name + ".sent.json", note.json().dump()); }
  Note send(const std::string& name, std::int64_t serial, const Files& files, const std::string& in = {},
            const PrivateKey* by = nullptr) {
    for (const auto& [path, bytes] : files) put(in.empty() ? path : in + "/" + path, bytes);
    Note sent = note(name, serial, files, in);
    if (by != nullptr) sent.sign(*by);
    put(sent);
    return sent;
  }
  Note withdraw(const std::string& name, std::int64_t serial, const PrivateKey* by = nullptr) {
    Note sent = note(name, serial, {});
    sent.withdrawn = true;
    if (by != nullptr) sent.sign(*by);
    put(sent);
    return sent;
  }
  void remove(const std::string& path) { std::filesystem::remove_all(folder_.path() / path); }

 private:
  support::TemporaryFolder folder_;
};

/// A collector over a local folder, with a clock that the test moves. It is a Sunday.
struct CollectorTest : testing::Test {
  SentFolder folder;
  support::TemporaryFolder cacheFolder;
  KeptVersions kept;
  DeckCollector::Options options{"Board", std::nullopt, std::uint64_t{1} << 30U};
  basic::Date now = basic::DateFrom(2026, 11, 22, 12, 0, 0);
  std::int64_t ticks = 0;
  std::vector<std::string> log;
  /// Done whenever the collector tells of a change, also in the midst of a look.
  std::function<void()> changed = [] {};
  std::unique_ptr<DeckFolder> source;
  std::unique_ptr<DeckCache> cache;
  std::unique_ptr<DeckCollector> collector;

  /// A player that was not there, or is another time.
  void start() {
    collector.reset();
    cache.reset();
    cache = std::make_unique<DeckCache>(cacheFolder.path() / "cache");
    source = std::make_unique<LocalFolder>(
        folder.path().string(), [this] { return ticks; }, [] {});
    startOver(*source);
  }
  void startOver(DeckFolder& from) {
    collector = std::make_unique<DeckCollector>(
        from, *cache, kept, options,
        DeckCollector::Hearer{[this] { changed(); },
                              [this](const std::string& line) { log.push_back(line); }});
    collector->begin(now);
  }
  void look(std::int64_t after = 1000) {
    if (!collector) start();
    ticks += after;
    collector->look(now, ticks);
  }
  FolderDeck deck(const std::string& name) {
    for (const CollectedDeck& each : collector->decks()) {
      if (each.name == name) return judged(each, now);
    }
    FolderDeck unknown;
    unknown.why = "unknown";
    return unknown;
  }
  /// The names of the decks that are on, in their order.
  std::string shown() {
    std::string names;
    for (const CollectedDeck& each : collector->decks()) {
      if (judged(each, now).isOn) names += (names.empty() ? "" : " ") + each.name;
    }
    return names;
  }
  static std::string read(const std::string& file) {
    std::ifstream opened(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(opened), {}};
  }
  [[nodiscard]] std::size_t filesCached() const {
    const std::filesystem::directory_iterator files(cacheFolder.path() / "cache" / "content");
    return static_cast<std::size_t>(std::distance(files, {}));
  }
};

}  // namespace app::test
