// Reads a distribution folder of this machine's file system, or of a share.

#include "app/player/LocalFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <set>

#include "app/distribution/Digest.h"
#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "basic/Strings.h"
#include "opc/PackageFile.h"

namespace app {
namespace {

constexpr std::string_view DeckSuffix = ".pptx";
constexpr std::uint64_t LargestNote = std::uint64_t{4} << 20U;

/// An entry of a folder, never through a symbolic link.
process::Descriptor openIn(int folder, const std::string& name, int flags) {
  process::Descriptor entry(::openat(folder, name.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | flags));
  if (!entry.isOpen()) fail(errno == ELOOP ? "it is a symbolic link" : std::strerror(errno));
  return entry;
}

process::Descriptor openFile(int folder, const std::string& name) {
  process::Descriptor file = openIn(folder, name, O_NONBLOCK);
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) fail(std::strerror(errno));
  if (!S_ISREG(status.st_mode)) fail("it is no regular file");
  return file;
}

opc::FileState stateOf(int file) {
  const auto state = opc::stateOfFile("/proc/self/fd/" + std::to_string(file));
  if (!state) fail("its state cannot be told");
  return *state;
}

void readAll(int file, const DeckFolder::Take& take, const DeckFolder::GoOn& goOn) {
  std::string piece(std::size_t{1} << 20U, '\0');
  for (;;) {
    goOn();
    const ssize_t count = ::read(file, piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail(std::strerror(errno));
    if (count == 0) return;
    take(std::string_view(piece).substr(0, static_cast<std::size_t>(count)));
  }
}

/// Without the deck's suffix; empty for what is no deck. Programs that have a deck open lay such files beside
/// it that begin with a tilde.
std::string deckNameOf(const std::string& file) {
  if (file.size() <= DeckSuffix.size() || file.starts_with('.') || file.starts_with("~$")) return {};
  const std::size_t at = file.size() - DeckSuffix.size();
  return basic::EqualsIgnoreCase(std::string_view(file).substr(at), DeckSuffix) ? file.substr(0, at)
                                                                                : std::string();
}

std::string noteNameOf(const std::string& file) {
  if (file.starts_with('.') || !file.ends_with(Note::Suffix)) return {};
  return file.substr(0, file.size() - Note::Suffix.size());
}

}  // namespace

struct LocalFolder::Names {
  std::set<std::string> notes;
  /// Files of decks without a note.
  std::set<std::string> decks;
  bool hasIndex = false;
};

LocalFolder::LocalFolder(std::string path, Ticks ticks, GoOn goOn)
    : path_(std::move(path)), ticks_(std::move(ticks)), goOn_(std::move(goOn)) {}

FolderListing LocalFolder::list() try {
  watch();
  const process::Descriptor folder(::open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  struct stat status {};
  if (!folder.isOpen() || ::fstat(folder.get(), &status) != 0) fail(std::strerror(errno));
  const Names names = namesIn(folder);
  const bool isEmpty = names.notes.empty() && names.decks.empty() && !names.hasIndex;
  if (isEmpty && device_ != 0 && status.st_dev != device_) {
    fail("it is empty and lies on another device than before, so nothing seems to be mounted there");
  }
  if (!isEmpty) device_ = status.st_dev;

  std::erase_if(seen_, [&](const auto& each) {
    const std::string note = noteNameOf(each.first);
    return note.empty() ? !names.decks.contains(each.first) : !names.notes.contains(note);
  });
  FolderListing listing;
  for (const std::string& name : names.notes) addNote(folder, name, listing);
  for (const std::string& file : names.decks) addDeck(folder, file, listing);
  std::sort(listing.decks.begin(), listing.decks.end(),
            [](const ListedDeck& a, const ListedDeck& b) { return a.note.name < b.note.name; });
  return listing;
} catch (const basic::Error& error) {
  fail("The folder " + basic::InQuotes(path_) + " cannot be read: " + error.description + ".");
}

LocalFolder::Names LocalFolder::namesIn(const process::Descriptor& folder) {
  // It takes the descriptor along, and another position would be of use to nobody.
  process::Descriptor own(::openat(folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  const std::unique_ptr<DIR, int (*)(DIR*)> opened(own.isOpen() ? ::fdopendir(own.get()) : nullptr,
                                                   ::closedir);
  if (!opened) fail(std::strerror(errno));
  static_cast<void>(own.release());
  Names names;
  std::size_t count = 0;
  for (errno = 0; const dirent* entry = ::readdir(opened.get()); errno = 0) {
    if (++count > MostEntries) fail("it holds more than " + std::to_string(MostEntries) + " entries");
    const std::string file = entry->d_name;
    if (!isPlainName(file) || !basic::IsValidUtf8(file)) continue;
    if (const std::string name = noteNameOf(file); !name.empty()) names.notes.insert(name);
    if (!deckNameOf(file).empty()) names.decks.insert(file);
    if (file == Index::FileName) names.hasIndex = true;
  }
  if (errno != 0) fail(std::strerror(errno));
  std::erase_if(names.decks, [&](const std::string& file) { return names.notes.contains(deckNameOf(file)); });
  return names;
}

void LocalFolder::addNote(const process::Descriptor& folder, const std::string& name,
                          FolderListing& listing) {
  Seen& seen = seen_[name + std::string(Note::Suffix)];
  try {
    const process::Descriptor file = openFile(folder.get(), name + std::string(Note::Suffix));
    const opc::FileState state = stateOf(file.get());
    if (!seen.isRead || seen.state != state) {
      if (state.size > LargestNote) fail("its note is too large");
      seen = Seen{state, 0, false, {}, {}};
      std::string text;
      readAll(
          file.get(),
          [&](std::string_view bytes) {
            text += bytes;
            if (text.size() > LargestNote) fail("its note is too large");
          },
          goOn_);
      try {
        seen.note = Note::read(text);
        if (seen.note.name != name)
          seen.why = "Its note is that of another deck, " + basic::InQuotes(seen.note.name) + ".";
      } catch (const basic::Error& error) {
        seen.why = error.description;
      }
      seen.isRead = true;
    }
    if (seen.why.empty()) {
      listing.decks.push_back({seen.note, {}});
    } else {
      listing.unreadable.push_back({name, seen.why});
    }
  } catch (const basic::Error& error) {
    listing.unreadable.push_back({name, "Its note cannot be read: " + error.description + "."});
  }
}

/// A deck without a note has none to tell when it is whole: it counts when it has come to rest.
void LocalFolder::addDeck(const process::Descriptor& folder, const std::string& file,
                          FolderListing& listing) {
  Seen& seen = seen_[file];
  const std::string name = deckNameOf(file);
  try {
    const process::Descriptor opened = openFile(folder.get(), file);
    const opc::FileState state = stateOf(opened.get());
    if (seen.state != state) seen = Seen{state, ticks_(), false, {}, {}};
    if (!seen.isRead && ticks_() - seen.since < Rest) {
      listing.isBusy = true;
      listing.unreadable.push_back({name, "It is being written."});
      return;
    }
    if (!seen.isRead) {
      if (state.size > opc::MaximumPackageBytes) fail("it is too large");
      Digest digest;
      readAll(
          opened.get(), [&](std::string_view bytes) { digest.add(bytes); }, goOn_);
      seen.note = Note();
      seen.note.name = name;
      seen.note.files = {{file, state.size, digest.finish()}};
      seen.isRead = true;
    }
    listing.decks.push_back({seen.note, path_ + "/" + file});
  } catch (const basic::Error& error) {
    listing.unreadable.push_back({name, "It cannot be read: " + error.description + "."});
  }
}

void LocalFolder::read(const ListedDeck& deck, const SentFile& file, std::uint64_t from,
                       const Take& take) try {
  process::Descriptor at(::open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!at.isOpen()) fail(std::strerror(errno));
  std::vector<std::string> parts = basic::Split(file.path, '/');
  if (!deck.note.folder.empty()) parts.insert(parts.begin(), deck.note.folder);
  const std::string last = parts.back();
  parts.pop_back();
  for (const std::string& part : parts) at = openIn(at.get(), part, O_DIRECTORY);
  const process::Descriptor opened = openFile(at.get(), last);
  if (stateOf(opened.get()).size != file.size) fail("it has another size than its note says");
  if (::lseek(opened.get(), static_cast<off_t>(from), SEEK_SET) < 0) fail(std::strerror(errno));
  readAll(opened.get(), take, goOn_);
} catch (const basic::Error& error) {
  fail(basic::InQuotes(file.path) + " cannot be read: " + error.description + ".");
}

/// Again before each look: a folder that was gone and is there again is another one.
void LocalFolder::watch() {
  if (!changes_.isOpen()) changes_.reset(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (!changes_.isOpen()) return;
  static_cast<void>(
      ::inotify_add_watch(changes_.get(), path_.c_str(),
                          IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_CREATE | IN_ONLYDIR));
}

void LocalFolder::heard() {
  std::array<char, 16384> told;
  while (::read(changes_.get(), told.data(), told.size()) > 0) {
  }
}

}  // namespace app
