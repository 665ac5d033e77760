#pragma once

#include <cstdint>
#include <functional>

#include "host/services.h"
#include "platform/FileHandle.h"

namespace platform {

/// An ordinary file opened for reading.
class InputFile final : public host::InputFile {
 public:
  /// While a file of this size is read, which takes a quarter of a second, clocks and screens wait.
  static constexpr std::uint64_t MaximumSize = std::uint64_t{256} << 20U;

  explicit InputFile(std::string path);

  /// Fails on a file that is larger, and while another program has it locked.
  [[nodiscard]] host::Bytes ReadAll() override {
    return read([] {});
  }
  /// The same, telling after every piece that it gets on.
  [[nodiscard]] host::Bytes read(const std::function<void()>& gettingOn);

 private:
  FileHandle file_;
};

}  // namespace platform
