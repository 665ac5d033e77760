#pragma once

#include <chrono>
#include <optional>

#include "opc/Files.h"

namespace opc {

/// When a file that other programs write is worth reading: its state is another
/// one, and has stood for a moment. Fed by whoever looks at the file several
/// times a second.
class FileVersions {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// What is being written changes more often than that.
  static constexpr std::chrono::milliseconds Rest{500};
  /// A copy that has stalled for so long is no copy under way.
  static constexpr std::chrono::milliseconds Patience{5000};
  /// What could not be read is tried again after that, though its state stays: the fault may have
  /// been the disk's, the network's or the want of memory, and none of these shows in the state.
  static constexpr std::chrono::milliseconds Pause{5000};

  /// `known` is the state that was read before.
  explicit FileVersions(const FileState& known) : settled_(known), seen_(known) {}

  enum class Finding {
    Nothing,
    /// A new state has come to rest, or what was broken is due another try: read it, and call
    /// broken() if that fails.
    Due,
    /// What was found broken stays as it is. Told once for each state.
    StillBroken,
  };
  /// One look; a file that is not there is one that is being replaced.
  Finding look(const std::optional<FileState>& state, Time now);
  /// What Due meant could not be read.
  void broken() { isBroken_ = true; }

 private:
  /// What was given out last, and when.
  std::optional<FileState> settled_;
  Time triedAt_;
  std::optional<FileState> seen_;
  Time seenSince_;
  bool isBroken_ = false;  // what was given out last
  bool isTold_ = false;
};

}  // namespace opc
