// Decks, packages, notes and the index of a distribution folder.

#include "app/distribution/FolderContent.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <utility>

#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "basic/Strings.h"
#include "opc/Files.h"
#include "opc/SavingFile.h"

namespace app {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view DeckEnding = ".pptx";
constexpr std::uint64_t LargestNote = std::uint64_t{16} << 20U;

/// "20261122T101500123Z"
std::string stampOf(std::int64_t milliseconds) {
  const std::time_t seconds = milliseconds / 1000;
  std::tm utc{};
  ::gmtime_r(&seconds, &utc);
  std::array<char, 32> text{};
  const std::size_t size = std::strftime(text.data(), text.size(), "%Y%m%dT%H%M%S", &utc);
  std::array<char, 8> rest{};
  std::snprintf(rest.data(), rest.size(), "%03dZ", static_cast<int>(milliseconds % 1000));
  return std::string(text.data(), size) + rest.data();
}

bool isStamp(std::string_view text) {
  constexpr std::string_view Form = "00000000T000000000Z";
  if (text.size() != Form.size()) return false;
  for (std::size_t i = 0; i < Form.size(); ++i) {
    const bool isDigit = text[i] >= '0' && text[i] <= '9';
    if (Form[i] == '0' ? !isDigit : text[i] != Form[i]) return false;
  }
  return true;
}

template <typename Visit>
void forEachEntry(const fs::path& folder, Visit visit) {
  std::error_code stopped;
  for (fs::directory_iterator entry(folder, stopped), end; !stopped && entry != end;
       entry.increment(stopped)) {
    visit(*entry, entry->path().filename().string());
  }
  if (stopped)
    fail("The folder " + basic::InQuotes(folder.string()) + " cannot be read: " + stopped.message() + ".");
}

/// Stands beside the file that it is to become, flushed.
class PreparedFile {
 public:
  PreparedFile(fs::path target, std::string_view bytes) : target_(std::move(target)), file_(target_) {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    const bool isWritten = file_.descriptor() >= 0 && file_.write(bytes) &&
                           ::fchmod(file_.descriptor(), 0666U & ~mask) == 0 &&
                           ::fsync(file_.descriptor()) == 0 && file_.close();
    if (!isWritten) failWrite();
  }
  void put() {
    if (!file_.renameTo(target_, /*replacing=*/true)) failWrite();
  }

 private:
  [[noreturn]] void failWrite() const {
    fail(basic::InQuotes(target_.string()) + " cannot be written: " + std::strerror(errno) + ".");
  }

  fs::path target_;
  opc::SavingFile file_;
};

}  // namespace

FolderContent::FolderContent(fs::path path) : path_(std::move(path)) {
  std::error_code missing;
  if (fs::is_directory(path_, missing)) return;
  fail("The distribution folder " + basic::InQuotes(path_.string()) +
       (missing && missing != std::errc::no_such_file_or_directory
            ? " cannot be reached: " + missing.message() + "."
            : std::string(" is not there. Is its drive mounted?")));
}

std::optional<Note> FolderContent::note(const std::string& name) const {
  const std::string file = (path_ / (name + std::string(Note::Suffix))).string();
  if (!opc::stateOfFile(file)) return std::nullopt;
  try {
    return Note::read(opc::readContent(file, LargestNote).bytes);
  } catch (const basic::Error& error) {
    fail(basic::InQuotes(file) + " cannot be read: " + error.description);
  }
}

std::string FolderContent::deckPath(const std::string& name) const {
  return (path_ / (name + std::string(DeckEnding))).string();
}

bool FolderContent::holdsDeck(const std::string& name) const {
  return opc::stateOfFile(deckPath(name)).has_value();
}

void FolderContent::requireDistinct(const std::string& name) const {
  forEachEntry(path_, [&](const fs::directory_entry&, const std::string& entry) {
    for (const std::string_view suffix : {DeckEnding, Note::Suffix}) {
      if (!entry.ends_with(suffix)) continue;
      const std::string other = entry.substr(0, entry.size() - suffix.size());
      if (other == name || !basic::EqualsIgnoreCase(other, name)) continue;
      fail(basic::InQuotes(path_.string()) + " holds a deck called " + basic::InQuotes(other) +
           " already. Names of decks must differ in more than the case of letters.");
    }
  });
}

std::string FolderContent::addPackage(const std::string& name, std::int64_t milliseconds) const {
  for (;; ++milliseconds) {
    const std::string package = name + "." + stampOf(milliseconds);
    std::error_code failed;
    if (fs::create_directory(path_ / package, failed)) return package;
    if (failed) {
      fail("No folder can be made in " + basic::InQuotes(path_.string()) + ": " + failed.message() + ".");
    }
  }
}

void FolderContent::addFile(const std::string& package, const std::string& file,
                            std::string_view bytes) const {
  const fs::path path = path_ / package / file;
  std::error_code failed;
  fs::create_directories(path.parent_path(), failed);
  if (failed)
    fail(basic::InQuotes(path.parent_path().string()) + " cannot be made: " + failed.message() + ".");
  opc::replaceFile(path.string(), bytes);
}

void FolderContent::dropPackage(const std::string& package) const {
  std::error_code ignored;
  fs::remove_all(path_ / package, ignored);
}

std::vector<Note> FolderContent::notes() const {
  std::vector<Note> notes;
  forEachEntry(path_, [&](const fs::directory_entry& entry, const std::string& file) {
    if (!file.ends_with(Note::Suffix)) return;
    try {
      Note note = Note::read(opc::readContent(entry.path().string(), LargestNote).bytes);
      if (note.name + std::string(Note::Suffix) == file) notes.push_back(std::move(note));
    } catch (const basic::Error&) {
      // Of another version, or no note: players of the folder itself pass it over as well.
      return;
    }
  });
  return notes;
}

void FolderContent::put(const Note& note, const std::optional<std::string>& deck) const {
  const fs::path index = path_ / Index::FileName;
  std::vector<Note> told = notes();
  std::erase_if(told, [&](const Note& each) { return each.name == note.name; });
  told.push_back(note);

  std::optional<PreparedFile> content;
  if (deck) content.emplace(deckPath(note.name), *deck);
  PreparedFile noteFile(path_ / (note.name + std::string(Note::Suffix)), json::textOf(note.json(), 1) + "\n");
  PreparedFile indexFile(index, Index::text(told));
  if (content) content->put();
  noteFile.put();
  indexFile.put();
  opc::flushFolder(path_.string());

  // Where senders cannot lock each other out, the last of them tells of all notes in the end.
  for (auto present = notes(); Index::text(present) != Index::text(told); present = notes()) {
    told = std::move(present);
    opc::replaceFile(index.string(), Index::text(told));
  }
}

std::vector<std::string> FolderContent::packages(const std::string& name) const {
  std::vector<std::string> found;
  forEachEntry(path_, [&](const fs::directory_entry& entry, const std::string& folder) {
    const bool isPackage =
        folder.starts_with(name + ".") && isStamp(std::string_view(folder).substr(name.size() + 1));
    std::error_code ignored;
    if (isPackage && entry.is_directory(ignored)) found.push_back(folder);
  });
  // The newest first.
  std::sort(found.rbegin(), found.rend());
  return found;
}

void FolderContent::tidy(const Note& note, std::size_t keeps) const {
  const bool isAlone = !note.withdrawn && note.folder.empty();
  std::error_code ignored;
  if (!isAlone) fs::remove(deckPath(note.name), ignored);
  for (const std::string& package : packages(note.name)) {
    if (package == note.folder) continue;
    if (keeps > 0) {
      --keeps;
    } else {
      dropPackage(package);
    }
  }
}

}  // namespace app
