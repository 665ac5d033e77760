#pragma once

#include <filesystem>

#include "process/Descriptor.h"

namespace app {

/// Keeps other senders out of a distribution folder, by a lock (flock) of a file in it that stays there.
/// Where the file system knows no locks nothing is kept out.
class SendersLock {
 public:
  /// Waits up to 10 s. Throws basic::Error when another sender still holds it then.
  explicit SendersLock(const std::filesystem::path& folder);

 private:
  process::Descriptor file_;
};

}  // namespace app
