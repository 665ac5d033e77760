// The port's calls on files, each on the drive that its path lies on.

#include "platform/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "host/drives.h"
#include "platform/FileHandle.h"
#include "platform/InputFile.h"
#include "platform/LocalTime.h"

namespace platform {

namespace {

/// A file of another machine, opened for each reading: a descriptor whose server
/// is gone could not be closed without waiting for it.
class DistantFile final : public host::InputFile {
 public:
  explicit DistantFile(std::string path) : path_(std::move(path)) {
    host::OnDrive(path_, [path = path_](const auto&) {
      const platform::InputFile probe(path);
      return true;
    });
  }
  [[nodiscard]] host::Bytes ReadAll() override {
    return host::OnDrive(
        path_, [path = path_](const auto& gettingOn) { return platform::InputFile(path).read(gettingOn); });
  }

 private:
  std::string path_;
};

}  // namespace

std::unique_ptr<host::InputFile> Files::OpenForInput(std::string_view path) {
  std::string file = paths_.translate(path);
  const host::Drives* const drives = host::Current().drives;
  if (drives != nullptr && !drives->IsLocal(file)) return std::make_unique<DistantFile>(std::move(file));
  return std::make_unique<InputFile>(std::move(file));
}

void Files::Append(std::string_view path, std::string_view text) {
  constexpr unsigned EveryoneByUmask = 0666;
  FileHandle file(paths_.translate(path), O_WRONLY | O_APPEND | O_CREAT, EveryoneByUmask);
  while (!text.empty()) {
    const ssize_t count = ::write(file.descriptor(), text.data(), text.size());
    if (count >= 0) {
      text.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      failOnFile(file.path(), "written", errno);
    }
  }
  file.close();
}

void Files::Kill(std::string_view path) {
  const std::string file = paths_.translate(path);
  if (::unlink(file.c_str()) != 0) failOnFile(file, "deleted", errno);
}

void Files::Name(std::string_view path, std::string_view newPath) {
  const std::string file = paths_.translate(path);
  const std::string renamed = paths_.translate(newPath);
  const bool isTaken = ::access(renamed.c_str(), F_OK) == 0;
  if (isTaken || ::rename(file.c_str(), renamed.c_str()) != 0) {
    failOnFile(file, "renamed to '" + renamed + "'", isTaken ? EEXIST : errno);
  }
}

basic::Date Files::FileDateTime(std::string_view path) const {
  const PathRules::Search search = paths_.search(path);
  const Seen seen = states_.at(std::string(path), search.path, [find = search.find] {
    Seen found{find(), {}};
    if (::stat(found.file.c_str(), &found.status) != 0) failOnFile(found.file, "found", errno);
    return found;
  });
  return localDate(dates_.of(seen.file, seen.status));
}

std::string Files::LocalPath(std::string_view path) const { return paths_.translate(path); }

std::string Files::FileWithin(std::string_view folder, std::string_view name) const {
  const PathRules::Search search = paths_.searchWithin(folder, name);
  return places_.at(std::string(folder).append(1, '\n').append(name), search.path, search.find);
}

std::string Files::TempPath() const {
  const char* const named = std::getenv("TMPDIR");
  std::string folder = named != nullptr && *named == '/' ? named : "/tmp";
  if (folder.back() != '/') folder += '/';
  return folder;
}

std::string Files::TempFileName(std::string_view folder, std::string_view prefix) {
  std::string name = paths_.translate(folder);
  if (name.back() != '/') name += '/';
  if (prefix.find('/') != std::string_view::npos) {
    failOnFile(std::string(prefix), "cannot begin a file name: it holds a separator");
  }
  name.append(prefix).append("XXXXXX");
  const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
  if (descriptor < 0) failOnFile(name, "created", errno);
  ::close(descriptor);
  return name;
}

}  // namespace platform
