// Which files go with a deck, and what is in them.

#include "app/distribution/Enclosures.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "app/distribution/Note.h"
#include "app/distribution/SqliteCopy.h"
#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "basic/Strings.h"
#include "host/drives.h"

namespace app {

namespace {

namespace fs = std::filesystem;

/// A folder of pictures, not a disk.
constexpr std::size_t MostFiles = 5000;

bool isPicture(const std::string& extension) {
  constexpr std::string_view Known[] = {"png", "jpg", "jpeg", "gif", "bmp", "webp",
                                        "svg", "tif", "tiff", "emf", "wmf"};
  return std::any_of(std::begin(Known), std::end(Known),
                     [&](std::string_view each) { return basic::EqualsIgnoreCase(each, extension); });
}

bool isHidden(const fs::path& path) { return path.filename().string().starts_with('.'); }

/// Paths below the folder, in order. Links to folders are not followed: they might lead round in a circle.
std::vector<std::string> filesBelow(const std::string& folder, const std::string& extension,
                                    const host::Drives::GettingOn& gettingOn) {
  std::vector<std::string> found;
  std::error_code stopped;
  fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, stopped);
  for (; !stopped && entry != fs::recursive_directory_iterator(); entry.increment(stopped)) {
    gettingOn();
    std::error_code ignored;
    const fs::path& path = entry->path();
    if (isHidden(path)) {
      entry.disable_recursion_pending();
      continue;
    }
    const std::string ending = path.extension().string();
    const std::string kind = ending.empty() ? ending : ending.substr(1);
    const bool isWanted = extension.empty() ? isPicture(kind) : basic::EqualsIgnoreCase(kind, extension);
    if (!isWanted || !entry->is_regular_file(ignored)) continue;
    found.push_back(path.lexically_relative(folder).generic_string());
    if (found.size() > MostFiles) {
      fail("it holds more than " + std::to_string(MostFiles) + " pictures; give them a folder of their own.");
    }
  }
  if (stopped) fail(stopped.message() + ".");
  std::sort(found.begin(), found.end());
  return found;
}

class Collection {
 public:
  explicit Collection(std::vector<std::string>& warnings) : warnings_(warnings) {}

  void add(const host::Enclosure& enclosure) try {
    if (!enclosure.IsFolder) return put(enclosure.Source, enclosure.Path, enclosure.Reader);
    const std::string folder = host::Current().files->LocalPath(enclosure.Source);
    const auto names =
        host::OnDrive(folder, [folder, extension = enclosure.Extension](const auto& gettingOn) {
          return filesBelow(folder, extension, gettingOn);
        });
    const std::string below = enclosure.Path.empty() ? enclosure.Path : enclosure.Path + "/";
    for (const std::string& name : names) put(folder + "/" + name, below + name, enclosure.Reader);
  } catch (const basic::Error& error) {
    warnings_.push_back(missing(enclosure.Source, enclosure.Reader, error));
  }
  std::vector<EnclosedFile> take() { return std::move(files_); }

 private:
  void put(const std::string& source, const std::string& path, const std::string& reader) {
    const auto parts = basic::Split(path, '/');
    if (!std::all_of(parts.begin(), parts.end(), isPlainName)) {
      fail("its name holds a character that no file of a distribution folder may have.");
    }
    if (paths_.insert(path).second) files_.push_back({source, path, reader});
  }

  std::vector<std::string>& warnings_;
  std::vector<EnclosedFile> files_;
  std::set<std::string> paths_;
};

}  // namespace

std::vector<EnclosedFile> enclosedFiles(const std::vector<host::Enclosure>& enclosures,
                                        std::vector<std::string>& warnings) {
  Collection collection(warnings);
  for (const host::Enclosure& enclosure : enclosures) collection.add(enclosure);
  return collection.take();
}

std::string missing(const std::string& source, const std::string& reader, const basic::Error& error) {
  return basic::InQuotes(source) + " (" + reader + ") did not go along: " + error.description;
}

std::string contentOf(const EnclosedFile& file) {
  const host::Bytes bytes = host::Current().files->OpenForInput(file.source)->ReadAll();
  std::string content(bytes.data.get(), bytes.size);
  if (!isSqlite(content)) return content;
  const std::string path = host::Current().files->LocalPath(file.source);
  return host::OnDrive(path, [path](const auto&) { return sqliteCopy(path); });
}

}  // namespace app
