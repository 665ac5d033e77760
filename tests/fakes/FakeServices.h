#pragma once

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "fakes/FakeRecordset.h"
#include "host/file_watch.h"
#include "host/services.h"

/// Everything that the system asks of a machine, in memory and on virtual time.
namespace fakes {

class Machine;

/// Timers on virtual time: Advance runs what falls due, in order. An interval counts from the
/// end of its timer's handler.
class Loop final : public host::Loop {
 public:
  class Timer final : public host::Timer {
   public:
    Timer(Loop& loop, std::function<void()> handler) : loop_(loop), handler_(std::move(handler)) {
      loop_.timers_.push_back(this);
    }
    ~Timer() override { std::erase(loop_.timers_, this); }
    std::int32_t Interval() const override { return interval_; }
    void Interval(std::int32_t milliseconds) override {
      interval_ = milliseconds;
      Wait();
    }
    bool Enabled() const override { return enabled_; }
    void Enabled(bool enabled) override {
      if (enabled && !enabled_) Wait();
      enabled_ = enabled;
    }

   private:
    friend class Loop;
    void Wait() { due_ = loop_.now_ + interval_ + loop_.lateness; }
    Loop& loop_;
    std::function<void()> handler_;
    std::int32_t interval_ = 0;
    bool enabled_ = false;
    bool running_ = false;
    std::int64_t due_ = 0;
  };

  std::unique_ptr<host::Timer> CreateTimer(std::function<void()> handler) override {
    return std::make_unique<Timer>(*this, std::move(handler));
  }
  void DoEvents() override {
    ++doEvents;
    if (onDoEvents) onDoEvents();
  }

  void Advance(std::int64_t milliseconds) {
    const std::int64_t end = now_ + milliseconds;
    while (Timer* next = NextDue(end)) {
      now_ = std::max(now_, next->due_);
      const auto handler = next->handler_;
      next->running_ = true;
      ++fired;
      handler();
      const bool isThere = std::find(timers_.begin(), timers_.end(), next) != timers_.end();
      if (!isThere) continue;
      next->running_ = false;
      next->Wait();
    }
    now_ = std::max(now_, end);
  }
  /// Time that a handler takes.
  void Pass(std::int64_t milliseconds) { now_ += milliseconds; }
  std::int64_t Now() const { return now_; }
  bool HasTimers() const { return !timers_.empty(); }

  /// Milliseconds by which timers fire late; those of this system's loop are by 8 and more.
  std::int64_t lateness = 0;
  int doEvents = 0;
  std::function<void()> onDoEvents;
  /// How often timers have fired.
  int fired = 0;

 private:
  Timer* NextDue(std::int64_t end) {
    Timer* next = nullptr;
    for (Timer* timer : timers_) {
      if (!timer->enabled_ || timer->running_ || timer->interval_ <= 0 || timer->due_ > end) continue;
      if (!next || timer->due_ < next->due_) next = timer;
    }
    return next;
  }

  std::vector<Timer*> timers_;
  std::int64_t now_ = 0;
};

/// 3 February 2026, 12:00:00 and what the loop's time adds to it.
class Clock final : public host::Clock {
 public:
  explicit Clock(const Loop& loop) : loop_(loop) {}
  basic::Date Now() const override {
    return basic::AddSeconds(start, static_cast<double>(loop_.Now() / 1000));
  }
  float Timer() const override {
    return static_cast<float>(std::fmod(timerStart + static_cast<double>(loop_.Now()) / 1000, 86400));
  }
  std::int64_t TickCount() const override { return loop_.Now(); }

  basic::Date start = basic::DateFrom(2026, 2, 3, 12, 0, 0);
  double timerStart = 43200;

 private:
  const Loop& loop_;
};

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
    return std::string(folder) + std::string(prefix) + "1.tmp";
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

class Module final : public host::Module {
 public:
  std::string Title() const override { return "Corvane Lumenfold 2000"; }
  std::string EXEName() const override { return "lumenfold"; }
  std::string Path() const override { return "/addin"; }
  std::int32_t Major() const override { return 1; }
  std::int32_t Minor() const override { return 2; }
  std::int32_t Revision() const override { return 3; }
};

class Settings final : public host::Settings {
 public:
  std::string GetSetting(std::string_view application, std::string_view section,
                         std::string_view key) const override {
    if (application != "Corvane Lumenfold 2000" || section != "Info") return {};
    const auto found = info.find(std::string(key));
    return found == info.end() ? std::string() : found->second;
  }
  std::string Location() const override { return "/home/settings.ini"; }
  std::map<std::string, std::string> info;
};

class MessageBox final : public host::MessageBox {
 public:
  struct Shown {
    std::string text;
    std::int32_t style;
    std::string title;
  };
  host::MsgBoxResult MsgBox(std::string_view text, std::int32_t style, std::string_view title) override {
    shown.push_back({std::string(text), style, std::string(title)});
    return answer;
  }
  std::vector<Shown> shown;
  host::MsgBoxResult answer = host::MsgBoxResult::Yes;
};

class Meter final : public host::ProgressMeter {
 public:
  void Show(std::string_view caption, std::int32_t maximum) override {
    log.push_back("show " + std::string(caption) + " " + std::to_string(maximum));
  }
  void Text(std::string_view text) override { log.emplace_back(text); }
  void Step() override { log.emplace_back("step"); }
  void Close() override { log.emplace_back("close"); }
  std::vector<std::string> log;
};

class Shell final : public host::Shell {
 public:
  bool ShellExecute(std::string_view verb, std::string_view file, std::int32_t showCommand) override {
    executed.push_back(std::string(verb) + " " + std::string(file) + " " + std::to_string(showCommand));
    return true;
  }
  std::int64_t HtmlHelp(std::int64_t, std::string_view file, std::uint32_t command,
                        std::uint32_t data) override {
    executed.push_back("help " + std::string(file) + " " + std::to_string(command) + " " +
                       std::to_string(data));
    return 7;
  }
  std::optional<std::string> ComputerName() const override { return computer; }
  std::optional<Browsed> BrowseForFolder(std::int64_t, std::string_view, std::optional<std::int32_t>,
                                         std::uint32_t flags) override {
    browseFlags = flags;
    return browsed;
  }
  std::vector<std::string> executed;
  std::optional<std::string> computer = "GATE7";
  std::optional<Browsed> browsed;
  std::uint32_t browseFlags = 0;
};

/// Keys with typed values; a handle is a place in the list, plus one.
class Registry final : public host::Registry {
 public:
  struct Value {
    std::uint32_t type;
    std::vector<unsigned char> data;
  };
  static constexpr std::int32_t NotFound = 2;

  std::int32_t OpenKey(Key, std::string_view subkey, std::uint32_t, Key& opened) override {
    const auto found = std::find(names_.begin(), names_.end(), subkey);
    if (found == names_.end()) return NotFound;
    opened = static_cast<Key>(found - names_.begin()) + 1;
    ++openKeys;
    return 0;
  }
  std::int32_t CreateKey(Key root, std::string_view subkey, Key& opened) override {
    if (readOnly) return 5;
    if (std::find(names_.begin(), names_.end(), subkey) == names_.end()) names_.emplace_back(subkey);
    return OpenKey(root, subkey, 0, opened);
  }
  std::int32_t DeleteKey(Key, std::string_view subkey) override {
    return std::erase(names_, subkey) ? 0 : NotFound;
  }
  std::int32_t CloseKey(Key) override {
    --openKeys;
    return 0;
  }
  std::int32_t QueryValue(Key key, std::string_view name, std::uint32_t& type,
                          std::vector<unsigned char>* data, std::uint32_t& size) override {
    const auto found = values_.find({key, std::string(name)});
    if (found == values_.end()) return NotFound;
    type = found->second.type;
    if (data && size != 0 && found->second.data.size() > size) return 234;
    size = static_cast<std::uint32_t>(found->second.data.size());
    if (data) *data = found->second.data;
    return 0;
  }
  std::int32_t SetValue(Key key, std::string_view name, std::uint32_t type,
                        const std::vector<unsigned char>& data) override {
    values_[{key, std::string(name)}] = {type, data};
    return 0;
  }
  std::int32_t DeleteValue(Key key, std::string_view name) override {
    return values_.erase({key, std::string(name)}) ? 0 : NotFound;
  }

  bool readOnly = false;
  int openKeys = 0;

 private:
  std::vector<std::string> names_;
  std::map<std::pair<Key, std::string>, Value> values_;
};

/// One of each, in force while the machine lives. Starts the system afresh.
class Machine {
 public:
  Machine();
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  Loop loop;
  Clock clock{loop};
  Files files;
  Module module;
  Settings settings;
  MessageBox messageBox;
  Meter meter;
  Shell shell;
  Registry registry;
  DataObjects ado;

  /// Replaces the data components, for a test that brings its own.
  void UseAdo(ADODB::Factory* factory);
  void UseExcel(Excel::Factory* factory);
  /// A machine that tells of changes of files.
  void UseFileWatcher(host::FileWatcher* watcher);
  /// One that queues what may wait.
  void UseJobs(host::Jobs* jobs);
  /// One with somebody who looks at forms.
  void UseForms(Forms::View* view);

 private:
  host::Services services_;
};

}  // namespace fakes
