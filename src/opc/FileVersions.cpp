#include "opc/FileVersions.h"

namespace opc {

FileVersions::Finding FileVersions::look(const std::optional<FileState>& state, Time now) {
  if (state != seen_) {
    seen_ = state;
    seenSince_ = now;
    isBroken_ = false;
    return Finding::Nothing;
  }
  if (!state) return Finding::Nothing;
  if (state != settled_) {
    if (now - seenSince_ < Rest) return Finding::Nothing;
    settled_ = state;
    return Finding::Settled;
  }
  if (!isBroken_ || now - seenSince_ < Patience) return Finding::Nothing;
  isBroken_ = false;
  return Finding::StillBroken;
}

}  // namespace opc
