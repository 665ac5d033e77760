#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "host/services.h"

namespace platform {

/// How far something has come.
struct Progress {
  /// Steps done, of `maximum`; 0 of 0 where the number is not known.
  std::int32_t step = 0;
  std::int32_t maximum = 0;
  std::string caption;
  /// What is being done now; may be empty.
  std::string text;
};

/// One line on the terminal that is written over, cut to the terminal's width;
/// nothing where standard error is no terminal. Whoever wants to show it elsewhere
/// watches.
class ProgressMeter final : public host::ProgressMeter {
 public:
  /// Told of every change; null when the meter was closed. Does not throw. An
  /// empty one ends the watch.
  using Watcher = std::function<void(const Progress*)>;

  /// The descriptor stands for standard error.
  explicit ProgressMeter(int output = 2) : output_(output) {}

  void Show(std::string_view caption, std::int32_t maximum) override;
  void Text(std::string_view text) override;
  void Step() override;
  void Close() override;

  void watch(Watcher watcher) { watcher_ = std::move(watcher); }
  /// Null while no meter is open.
  [[nodiscard]] const Progress* progress() const { return progress_ ? &*progress_ : nullptr; }

 private:
  void changed() const;
  void draw() const;

  int output_;
  bool isTerminal_ = false;
  std::optional<Progress> progress_;
  Watcher watcher_;
};

}  // namespace platform
