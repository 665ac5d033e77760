#pragma once

#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/file_watch.h"
#include "host/services.h"

namespace fakes {

/// Files by their paths, in memory.
class Files final : public host::Files {
 public:
  struct File {
    std::string content;
    double date = 46000.0;
    /// How many attempts to open it fail before one succeeds.
    int lockedAttempts = 0;
  };

  std::unique_ptr<host::InputFile> OpenForInput(std::string_view path) override {
    ++opens;
    File& file = Get(path);
    if (file.lockedAttempts > 0) {
      --file.lockedAttempts;
      throw basic::Error(70, "fake files", "Permission denied");
    }
    struct Input final : host::InputFile {
      std::string content;
      host::Bytes ReadAll() override {
        host::Bytes bytes{std::make_unique<char[]>(content.size() + 1), content.size()};
        std::memcpy(bytes.data.get(), content.data(), content.size());
        return bytes;
      }
    };
    auto input = std::make_unique<Input>();
    input->content = file.content;
    return input;
  }
  void Append(std::string_view path, std::string_view text) override {
    files[std::string(path)].content += text;
  }
  void Kill(std::string_view path) override {
    Get(path);
    files.erase(std::string(path));
  }
  void Name(std::string_view path, std::string_view newPath) override {
    if (files.contains(std::string(newPath))) throw basic::Error(58, "fake files", "File already exists");
    File& file = files[std::string(newPath)];
    file = std::move(Get(path));
    files.erase(std::string(path));
  }
  basic::Date FileDateTime(std::string_view path) const override {
    return {const_cast<Files*>(this)->Get(path).date};
  }
  std::string LocalPath(std::string_view path) const override {
    onLocalPath(path);
    return std::string(path);
  }
  std::string FileWithin(std::string_view folder, std::string_view name) const override {
    if (basic::StartsWith(name, "..") || basic::StartsWith(name, "/")) {
      throw basic::Error(70, "fake files", std::string(name) + " leads out of " + std::string(folder));
    }
    std::string path = basic::Replace(folder, "\\", "/");
    if (path.back() != '/') path += '/';
    path += basic::Replace(name, "\\", "/");
    const_cast<Files*>(this)->Get(path);
    return path;
  }
  std::string TempPath() const override { return "/tmp/"; }
  std::string TempFileName(std::string_view folder, std::string_view prefix) override {
    std::string name = std::string(folder) + std::string(prefix) + "1.tmp";
    files[name] = {};
    return name;
  }

  /// New content with a later date.
  void Write(const std::string& path, std::string content) {
    File& file = files[path];
    file.content = std::move(content);
    file.date += 0.001;
  }

  std::map<std::string, File> files;
  int opens = 0;
  /// Sees every path that is looked up. May throw, and may run the loop as a slow drive does.
  std::function<void(std::string_view)> onLocalPath = [](std::string_view) {};

 private:
  File& Get(std::string_view path) {
    const auto found = files.find(std::string(path));
    if (found == files.end()) throw basic::Error(53, "fake files", "File not found: " + std::string(path));
    return found->second;
  }
};

/// One watch, of which a test says when its files change.
class FileWatcher final : public host::FileWatcher {
 public:
  std::unique_ptr<host::FileWatch> CreateWatch(std::function<void(const std::string&)> changed) override {
    struct Watch final : host::FileWatch {
      explicit Watch(FileWatcher& owner) : watcher(owner) {}
      ~Watch() override {
        watcher.changed_ = {};
        watcher.goneInUse = watcher.goneInUse || watcher.inUse_;
      }
      void Files(const std::set<std::string>& paths) override {
        FileWatcher& owner = watcher;
        owner.watched = paths;
        owner.inUse_ = true;
        if (owner.onFiles) owner.onFiles();
        owner.inUse_ = false;
      }
      FileWatcher& watcher;
    };
    changed_ = std::move(changed);
    return std::make_unique<Watch>(*this);
  }
  /// Tells of the file if it is watched, once.
  void Change(const std::string& path) {
    if (changed_ && watched.erase(path) != 0) changed_(path);
  }

  std::set<std::string> watched;
  /// Runs while the watch is told its files.
  std::function<void()> onFiles;
  /// Whether the watch was destroyed by what ran then.
  bool goneInUse = false;

 private:
  bool inUse_ = false;
  std::function<void(const std::string&)> changed_;
};

}  // namespace fakes
