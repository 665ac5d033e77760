#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "host/services.h"

namespace host {

/// The drives that files lie on. One of another machine may keep whoever touches
/// it waiting for ever; it is asked through here, so that the loop goes on.
class Drives {
 public:
  /// Called by work that takes long, to tell that it gets on.
  using GettingOn = std::function<void()>;
  using Work = std::function<void(const GettingOn&)>;

  virtual ~Drives() = default;
  /// Whether a path, as this system knows it, lies on this machine. Touches
  /// nothing that does not.
  [[nodiscard]] virtual bool IsLocal(const std::string& path) const = 0;
  /// Does work that touches the file or the folder of that path and nothing else
  /// that may be elsewhere: at once when it is local, otherwise on another thread
  /// while the loop runs. What the work throws comes out. Of a drive that does not
  /// answer, an error; the work goes on alone then, so it owns what it uses.
  virtual void Ask(const std::string& path, Work work) = 0;
  /// The same, but who asks is kept for a moment only. False when there is no
  /// answer yet: the work goes on, `underWay` stands for it, and the next call with
  /// that asks for its answer instead of beginning anew.
  [[nodiscard]] virtual bool AskBriefly(const std::string& path, std::shared_ptr<void>& underWay,
                                        Work work) = 0;
};

/// The result of such work; where the host knows no drives, it is just done.
template <typename Work>
auto OnDrive(const std::string& path, Work work) {
  using Result = decltype(work(Drives::GettingOn()));
  Drives* const drives = Current().drives;
  if (drives == nullptr || drives->IsLocal(path)) return work(Drives::GettingOn([] {}));
  const auto result = std::make_shared<std::optional<Result>>();
  drives->Ask(path, [result, work = std::move(work)](const Drives::GettingOn& gettingOn) {
    result->emplace(work(gettingOn));
  });
  return std::move(**result);
}

}  // namespace host
