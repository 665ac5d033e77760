#include "opc/FileVersions.h"

namespace opc {

FileVersions::Finding FileVersions::look(const std::optional<FileState>& state, Time now) {
  if (state != seen_) {
    seen_ = state;
    seenSince_ = now;
    return Finding::Nothing;
  }
  if (!state) return Finding::Nothing;
  if (state != settled_) {
    if (now - seenSince_ < Rest) return Finding::Nothing;
    settled_ = state;
    isTold_ = false;
  } else {
    if (!isBroken_) return Finding::Nothing;
    if (!isTold_ && now - seenSince_ >= Patience) {
      isTold_ = true;
      return Finding::StillBroken;
    }
    if (now - triedAt_ < Pause) return Finding::Nothing;
  }
  triedAt_ = now;
  isBroken_ = false;
  return Finding::Due;
}

}  // namespace opc
