#pragma once

#include <functional>

#include "host/services.h"
#include "platform/FileHandle.h"

namespace platform {

/// An ordinary file opened for reading.
class InputFile final : public host::InputFile {
 public:
  explicit InputFile(std::string path);

  /// Fails on a file of 4 GB or more, and while another program has it locked.
  [[nodiscard]] host::Bytes ReadAll() override {
    return read([] {});
  }
  /// The same, telling after every piece that it gets on.
  [[nodiscard]] host::Bytes read(const std::function<void()>& gettingOn);

 private:
  FileHandle file_;
};

}  // namespace platform
