// A deck on its way into a distribution folder.

#include "app/distribution/DistributionFolder.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <memory>
#include <set>
#include <utility>

#include "app/distribution/DeckLinks.h"
#include "app/distribution/Digest.h"
#include "app/distribution/Enclosures.h"
#include "app/distribution/FolderContent.h"
#include "app/distribution/SendersLock.h"
#include "app/distribution/Signature.h"
#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "host/drives.h"
#include "host/services.h"

namespace app {

namespace {

namespace fs = std::filesystem;

void requireName(const std::string& name) {
  if (isPlainName(name) && !name.starts_with('.')) return;
  fail(basic::InQuotes(name) + " is no name under which a deck can be sent.");
}

std::string folderOf(const std::string& folder) { return host::Current().files->LocalPath(folder); }

std::optional<PrivateKey> keyOf(const std::string& file) {
  if (file.empty()) return std::nullopt;
  return PrivateKey::read(host::Current().files->LocalPath(file));
}

/// Done where the folder lies, with what it is given.
template <typename Work>
auto in(const std::string& folder, Work work) {
  return host::OnDrive(folder, [folder, work = std::move(work)](const host::Drives::GettingOn& gettingOn) {
    return work(FolderContent(folder), gettingOn);
  });
}

/// Its number is larger than that of the note before.
void number(Note& note, const std::optional<Note>& before, std::int64_t now) {
  note.serial = before ? std::max(now, before->serial + 1) : now;
}

void sign(Note& note, const std::optional<PrivateKey>& key) {
  if (key) note.sign(*key);
}

SentFile described(std::string path, const std::string& bytes) {
  return {std::move(path), bytes.size(), sha256(bytes)};
}

/// A folder of files. It goes again unless its deck's note tells of it in the end.
class Package {
 public:
  Package(std::string folder, std::string deck, std::int64_t now)
      : folder_(std::move(folder)),
        deck_(std::move(deck)),
        name_(in(folder_, [deck = deck_, now](const FolderContent& content, const auto&) {
          content.requireDistinct(deck);
          return content.addPackage(deck, now);
        })) {}
  ~Package() {
    try {
      in(folder_, [deck = deck_, name = name_](const FolderContent& content, const auto&) {
        const auto note = content.note(deck);
        if (!note || note->folder != name) content.dropPackage(name);
        return true;
      });
    } catch (const std::exception&) {
      return;  // The drive is gone; the next sending tidies up.
    }
  }
  Package(const Package&) = delete;
  Package& operator=(const Package&) = delete;

  [[nodiscard]] const std::string& name() const { return name_; }
  void add(const std::string& path, std::string bytes) {
    files_.push_back(described(path, bytes));
    in(folder_, [name = name_, path, bytes = std::move(bytes)](const FolderContent& content, const auto&) {
      content.addFile(name, path, bytes);
      return true;
    });
  }
  [[nodiscard]] const std::vector<SentFile>& files() const { return files_; }

 private:
  std::string folder_;
  std::string deck_;
  std::string name_;
  std::vector<SentFile> files_;
};

constexpr std::size_t FormerPackages = 1;

/// Makes the sending known. `deck` is what goes into the folder itself.
void post(const std::string& folder, const Note& unnumbered, const std::optional<std::string>& deck,
          const std::optional<PrivateKey>& key, std::int64_t now) {
  in(folder, [unnumbered, deck, key, now](const FolderContent& content, const auto&) {
    const SendersLock lock(content.path());
    Note note = unnumbered;
    content.requireDistinct(note.name);
    number(note, content.note(note.name), now);
    sign(note, key);
    content.put(note, deck);
    content.tidy(note, FormerPackages);
    return true;
  });
}

void requireElsewhere(const host::Parcel& parcel, const std::string& folder) {
  std::error_code notThere;
  if (!fs::equivalent(fs::path(folder) / (parcel.Name + ".pptx"), parcel.Original, notThere)) return;
  fail("The deck itself lies in the distribution folder " + basic::InQuotes(folder) +
       ", where it would be replaced by what is sent. Keep it in another folder.");
}

/// Files that no other computer sees under their path.
void warnOfLocalFiles(const std::vector<host::Enclosure>& files, host::Sent& sent) {
  const host::Drives* const drives = host::Current().drives;
  std::set<std::string> told;
  for (const host::Enclosure& file : files) {
    const bool isPathOfThisSystem = file.Source.starts_with('/');
    if (!isPathOfThisSystem || (drives != nullptr && !drives->IsLocal(file.Source))) continue;
    if (!told.insert(file.Source).second) continue;
    sent.Warnings.push_back(basic::InQuotes(file.Source) + " (" + file.Reader +
                            ") lies on this machine alone: players need it under the same path.");
  }
}

host::Sent sendAlone(const host::Parcel& parcel, const std::string& folder, LinkedDeck deck,
                     const std::optional<PrivateKey>& key, std::int64_t now) {
  in(folder, [parcel](const FolderContent& content, const auto&) {
    requireElsewhere(parcel, content.path().string());
    return true;
  });
  const std::string file = parcel.Name + ".pptx";
  Note note;
  note.name = parcel.Name;
  note.way = parcel.Way;
  note.files = {described(file, deck.bytes)};
  post(folder, note, deck.bytes, key, now);
  host::Sent sent{(fs::path(folder) / file).string(), 1, deck.bytes.size(), {}};
  warnOfLocalFiles(parcel.Enclosures, sent);
  warnOfLocalFiles(deck.files, sent);
  return sent;
}

host::Sent sendPackage(const host::Parcel& parcel, const std::string& folder, LinkedDeck deck,
                       const std::optional<PrivateKey>& key, std::int64_t now) {
  host::Sent sent;
  std::vector<host::Enclosure> enclosures = parcel.Enclosures;
  enclosures.insert(enclosures.end(), deck.files.begin(), deck.files.end());
  const auto files = enclosedFiles(enclosures, sent.Warnings);
  Package package(folder, parcel.Name, now);
  package.add(parcel.Name + ".pptx", std::move(deck.bytes));
  for (const EnclosedFile& file : files) {
    std::string content;
    try {
      content = contentOf(file);
    } catch (const basic::Error& error) {
      sent.Warnings.push_back(missing(file.source, file.reader, error));
      continue;
    }
    package.add(file.path, std::move(content));
  }
  Note note;
  note.name = parcel.Name;
  note.way = parcel.Way;
  note.folder = package.name();
  note.files = package.files();
  post(folder, note, std::nullopt, key, now);
  sent.Place = (fs::path(folder) / package.name() / (parcel.Name + ".pptx")).string();
  sent.Files = note.files.size();
  for (const SentFile& file : note.files) sent.Bytes += file.size;
  return sent;
}

basic::Date localTime(std::int64_t milliseconds) {
  const std::time_t seconds = milliseconds / 1000;
  std::tm local{};
  ::localtime_r(&seconds, &local);
  return basic::DateFrom(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                         local.tm_sec);
}

}  // namespace

std::int64_t DistributionFolder::systemTime() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

host::Sent DistributionFolder::Send(const host::Parcel& parcel) {
  requireName(parcel.Name);
  const auto key = keyOf(parcel.KeyFile);
  const std::string folder = folderOf(parcel.Folder);
  const bool goAlong = parcel.Way == host::SendingWay::Files;
  host::EnclosurePlaces places = parcel.Places;
  LinkedDeck deck = withLinks(parcel.Presentation, parcel.Original, goAlong, places);
  return goAlong ? sendPackage(parcel, folder, std::move(deck), key, now_())
                 : sendAlone(parcel, folder, std::move(deck), key, now_());
}

void DistributionFolder::Withdraw(const std::string& folder, const std::string& name,
                                  const std::string& keyFile) {
  requireName(name);
  in(folderOf(folder), [name, key = keyOf(keyFile), now = now_()](const FolderContent& content, const auto&) {
    const SendersLock lock(content.path());
    const auto before = content.note(name);
    if (!before && !content.holdsDeck(name)) {
      fail(basic::InQuotes(content.path().string()) + " holds no deck " + basic::InQuotes(name) + ".");
    }
    Note note;
    note.name = name;
    note.way = before ? before->way : Way::Live;
    note.withdrawn = true;
    number(note, before, now);
    sign(note, key);
    content.put(note, std::nullopt);
    content.tidy(note, 0);
    return true;
  });
}

std::optional<host::LastSending> DistributionFolder::Last(const std::string& folder,
                                                          const std::string& name) {
  const auto note =
      in(folderOf(folder), [name](const FolderContent& content, const auto&) { return content.note(name); });
  if (!note) return std::nullopt;
  return host::LastSending{note->way, localTime(note->serial), note->withdrawn};
}

}  // namespace app
