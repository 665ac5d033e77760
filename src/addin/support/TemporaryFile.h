#pragma once

#include <string>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Error.h"
#include "host/services.h"

namespace LF2000 {

/// A new, empty file for the time that this object lives.
class TemporaryFile {
 public:
  /// Raises when none can be made.
  TemporaryFile() {
    std::string prefix;
    name_ = modGlobalFunctions::MakeTempFileName(prefix);
    if (name_.empty()) {
      throw basic::Error(basic::AdapterError, basic::DefaultSource, "No temporary file can be made.");
    }
  }
  ~TemporaryFile() {
    modGlobalFunctions::IgnoreErrors([this] { host::Current().files->Kill(name_); });
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  [[nodiscard]] const std::string& Name() const { return name_; }

 private:
  std::string name_;
};

}  // namespace LF2000
