#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "web/show/Histogram.h"
#include "web/show/Show.h"

namespace web {

/// What a screen says about its last paint.
struct PaintReport {
  /// From 1; 0 when it shows none.
  int slide = 0;
  /// Number of the newest event in it.
  std::uint64_t sequence = 0;
  /// How long the screen kept the report before it sent it.
  std::chrono::milliseconds held{0};
};

/// What is known of the screens with an open stream, and how quickly they paint.
class Screens {
 public:
  using Clock = std::chrono::steady_clock;

  struct Paint {
    int slide = 0;
    std::uint64_t sequence = 0;
    Clock::time_point at;
    /// From the data's change, in seconds; nothing for what was there before the screen.
    std::optional<double> delay;
  };
  struct Screen {
    /// Counts up from 1.
    std::uint64_t number = 0;
    View view;
    Clock::time_point opened;
    std::optional<Paint> painted;
    /// A report before this is one too many.
    Clock::time_point mayReportFrom;
  };

  /// A new screen; returns the secret name under which it reports.
  std::string add(const View& view);
  void remove(const std::string& id) { screens_.erase(id); }
  /// By its secret name; null when there is none.
  [[nodiscard]] Screen* find(std::string_view id);
  /// Takes a report up. `changed` is when the painted event's cause happened. False
  /// when the screen reports more than five times a second.
  bool painted(Screen& screen, const PaintReport& report, std::optional<Clock::time_point> changed);

  /// By their secret names.
  [[nodiscard]] const std::map<std::string, Screen, std::less<>>& all() const { return screens_; }
  /// Of all paints so far, in seconds.
  [[nodiscard]] const Histogram& delays() const { return delays_; }

 private:
  std::map<std::string, Screen, std::less<>> screens_;
  std::uint64_t count_ = 0;
  Histogram delays_;
};

}  // namespace web
