#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "host/drives.h"
#include "platform/MountTable.h"

namespace platform {

/// Drives of other machines, asked on threads of their own while the loop runs.
///
/// One that does not get on for 2 s is silent: everything asked of it fails at
/// once, also what others are waiting for. Every 10 s what is asked of it next is
/// tried in the background, and still fails for who asks; when such a try is
/// answered within 2 s, the drive is asked as before. Looks that are repeated
/// (AskBriefly) keep nobody for more than 200 ms, all those of a drive together, so
/// that one that falls silent holds up no source that lies elsewhere. A thread that the kernel
/// does not let go is left to itself; of one drive there are 4 at most.
class NetworkDrives final : public host::Drives {
 public:
  using MountOf = std::function<std::optional<NetworkMount>(const std::string& path)>;

  /// The loop and the clock outlive this object.
  NetworkDrives(host::Loop& loop, host::Clock& clock, MountOf mountOf)
      : loop_(loop), clock_(clock), mountOf_(std::move(mountOf)) {}

  [[nodiscard]] bool IsLocal(const std::string& path) const override { return !mountOf_(path); }
  void Ask(const std::string& path, Work work) override;
  [[nodiscard]] bool AskBriefly(const std::string& path, std::shared_ptr<void>& underWay, Work work) override;

 private:
  struct Question;
  struct Drive {
    std::shared_ptr<const int> threads = std::make_shared<const int>(0);  // each thread holds it
    std::shared_ptr<Question> late;  // kept somebody for the whole moment
    std::shared_ptr<Question> lastTry;
    std::int64_t triedAt = 0;
    bool isSilent = false;
  };

  [[nodiscard]] bool ask(const std::string& path, std::shared_ptr<void>& underWay, const Work& work,
                         bool isBrief);
  [[nodiscard]] std::shared_ptr<Question> put(const Drive& drive, const Work& work);
  void tryAgain(Drive& drive, const Work& work);
  [[nodiscard]] bool waitFor(Question& question, Drive& drive, std::optional<std::int64_t> longest);

  host::Loop& loop_;
  host::Clock& clock_;
  MountOf mountOf_;
  /// By mount; what waits keeps its own alive.
  std::map<int, std::shared_ptr<Drive>> drives_;
};

}  // namespace platform
