// One inotify queue a watch, listened to after pauses that grow while a folder is busy.

#include "platform/FileWatcher.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <system_error>
#include <utility>
#include <vector>

#include "basic/Error.h"

namespace platform {
namespace {

namespace fs = std::filesystem;
using std::chrono::steady_clock;

// A folder where something changes all the time must not keep the loop busy: it is listened to after pauses
// that grow, until it has been quiet for so long.
constexpr std::chrono::milliseconds LongestPause{256};
constexpr std::chrono::milliseconds Quiet{150};

class Watch final : public host::FileWatch {
 public:
  Watch(boost::asio::io_context& context, FileWatcher::LocalPath localPath,
        std::function<void(const std::string&)> changed)
      : localPath_(std::move(localPath)), queue_(std::make_shared<Queue>(context, std::move(changed))) {}
  ~Watch() override { queue_->close(); }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  void Files(const std::set<std::string>& paths) override {
    if (!queue_->isOpen() && !queue_->open()) return;
    queue_->forget();
    for (const std::string& path : paths) {
      try {
        await(path);
      } catch (const basic::Error&) {
        // A path that this system cannot know is reported by who reads it.
      }
    }
    queue_->wait();
  }

 private:
  /// What the kernel has to tell; lives on until its last wait has ended.
  class Queue : public std::enable_shared_from_this<Queue> {
   public:
    Queue(boost::asio::io_context& context, std::function<void(const std::string&)> changed)
        : events_(context), timer_(context), changed_(std::move(changed)) {}

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    bool open() {
      descriptor_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
      return isOpen();
    }
    void close() {
      changed_ = nullptr;
      timer_.cancel();
      if (events_.is_open()) static_cast<void>(events_.release());
      if (isOpen()) ::close(std::exchange(descriptor_, -1));
    }
    /// Files and what was told of them up to now.
    void forget() {
      static_cast<void>(read());
      unused_ = std::exchange(folders_, {});
      awaited_.clear();
    }
    void await(const std::string& folder, std::string name, const std::string& path) {
      // The same folder gives the same number, another one of that name gives another.
      const int number =
          ::inotify_add_watch(descriptor_, folder.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO | IN_ONLYDIR);
      if (number < 0) return;
      folders_.insert(number);
      awaited_.insert_or_assign({number, std::move(name)}, path);
    }
    void wait() {
      for (const int number : unused_) {
        if (!folders_.contains(number)) ::inotify_rm_watch(descriptor_, number);
      }
      unused_.clear();
      waitForEvents();
    }

   private:
    using Place = std::pair<int, std::string>;  // number of the folder, name in it

    void waitForEvents() {
      // What nobody waits for may pile up in the kernel, which bounds it.
      if (isWaiting_ || awaited_.empty() || !isOpen()) return;
      isWaiting_ = true;
      waited_ = pause_;
      timer_.expires_after(pause_);
      timer_.async_wait([self = shared_from_this()](const auto& failure) {
        if (!failure) self->listen();
      });
    }
    void listen() {
      if (!isOpen()) return;
      listening_ = steady_clock::now();
      boost::system::error_code refused;
      events_.assign(descriptor_, refused);
      if (refused) return close();
      events_.async_wait(boost::asio::posix::stream_descriptor::wait_read,
                         [self = shared_from_this()](const auto& failure) {
                           if (!failure) self->heard();
                         });
    }
    void heard() {
      isWaiting_ = false;
      if (!isOpen()) return;
      // The loop would wake at every change, listened to or not.
      static_cast<void>(events_.release());
      const bool wasQuiet = steady_clock::now() - listening_ >= Quiet;
      pause_ = wasQuiet ? decltype(pause_){0} : std::clamp(pause_ * 2, decltype(pause_){1}, LongestPause);
      for (const std::string& path : read()) {
        const auto tell = changed_;  // which may destroy the watch
        if (tell) tell(path);
      }
      waitForEvents();
    }
    /// The awaited files that have changed; they are awaited no longer. One that changed more than once
    /// during a long pause never rests, and is left to who looks anyway.
    std::set<std::string> read() {
      std::map<std::string, int> changes;
      alignas(inotify_event) std::array<char, 16384> buffer;
      for (ssize_t size; (size = ::read(descriptor_, buffer.data(), buffer.size())) > 0;) {
        for (const char* at = buffer.data(); at < buffer.data() + size;) {
          inotify_event event{};
          std::memcpy(&event, at, sizeof event);
          const char* const name = at + sizeof event;
          at = name + event.len;
          if ((event.mask & IN_IGNORED) != 0) folders_.erase(event.wd);
          if (event.len == 0) continue;
          const auto found = awaited_.find(Place(event.wd, name));
          if (found != awaited_.end()) ++changes[found->second];
        }
      }
      std::erase_if(awaited_, [&](const auto& each) { return changes.contains(each.second); });
      const int most = waited_ == LongestPause ? 1 : std::numeric_limits<int>::max();
      std::set<std::string> changed;
      for (const auto& [path, count] : changes) {
        if (count <= most) changed.insert(path);
      }
      return changed;
    }

    int descriptor_ = -1;
    /// Holds the descriptor while it is listened to.
    boost::asio::posix::stream_descriptor events_;
    boost::asio::steady_timer timer_;
    std::function<void(const std::string&)> changed_;
    std::set<int> folders_;
    std::set<int> unused_;
    std::map<Place, std::string> awaited_;  // to the path as it was asked for
    bool isWaiting_ = false;
    std::chrono::milliseconds pause_{0};
    std::chrono::milliseconds waited_{0};
    steady_clock::time_point listening_;
  };

  void await(const std::string& path) {
    const std::optional<std::string> local = localPath_(path);
    if (!local) return;
    const fs::path file = *local;
    if (!file.has_filename()) return;
    awaitAt(file, path);
    std::error_code unknown;
    if (!fs::is_symlink(fs::symlink_status(file, unknown))) return;
    const fs::path target = fs::weakly_canonical(file, unknown);
    if (!unknown) awaitAt(target, path);
  }
  void awaitAt(const fs::path& file, const std::string& path) {
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    queue_->await(folder.string(), file.filename().string(), path);
  }

  FileWatcher::LocalPath localPath_;
  std::shared_ptr<Queue> queue_;
};

}  // namespace

std::unique_ptr<host::FileWatch> FileWatcher::CreateWatch(
    std::function<void(const std::string& path)> changed) {
  return std::make_unique<Watch>(loop_.context(), localPath_, std::move(changed));
}

}  // namespace platform
