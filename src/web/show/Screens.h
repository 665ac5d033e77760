#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "web/http/KnownScreens.h"
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

/// Who reports a paint.
struct ScreenReport {
  /// The secret name that a stream's greeting gave, or the one that a screen at a hub has given itself.
  std::string screen;
  PaintReport paint;
  /// Of a screen at a hub: what it looks at, by name, and the run in which the event was counted. Else empty.
  std::string view;
  std::string run;
};

/// What is known of the screens, and how quickly they paint: of those with an open stream, and of those at
/// hubs, which nobody sees come and go. These are there for a while after each of their reports.
class Screens {
 public:
  using Clock = std::chrono::steady_clock;
  using Now = std::function<Clock::time_point()>;

  /// A screen at a hub reports at least once a minute.
  static constexpr std::chrono::seconds lease{150};
  /// Names of screens at hubs are anybody's.
  static constexpr std::size_t mostAtHubs = 100'000;

  struct Paint {
    int slide = 0;
    std::uint64_t sequence = 0;
    Clock::time_point at;
    /// From the data's change, in seconds; nothing for what was there before the screen.
    std::optional<double> delay;
  };
  /// How far the events of its view were when a screen at a hub reported.
  struct Course {
    Clock::time_point at;
    /// The number of the newest one.
    std::uint64_t newest = 0;
    /// Since when the one waits that follows its paint; nothing when that is not known.
    std::optional<Clock::time_point> waits;
  };
  struct Screen {
    /// Counts up from 1.
    std::uint64_t number = 0;
    View view;
    Clock::time_point opened;
    /// Where screens are known; else empty.
    KnownScreen known;
    std::optional<Paint> painted;
    /// A report before this is one too many.
    Clock::time_point mayReportFrom;
    /// Of a screen at a hub.
    std::optional<Course> course;
  };

  explicit Screens(Now now = Clock::now) : now_(std::move(now)) {}

  /// A new screen with a stream; returns the secret name under which it reports.
  std::string add(const View& view, KnownScreen known = {});
  void remove(const std::string& id);
  /// By its secret name; null when there is none.
  [[nodiscard]] Screen* find(std::string_view id);
  /// A screen at a hub, by the name that it has given itself, when it is new or looks at another view as
  /// well; null when there are too many of them, or when it has the name of one with a stream.
  Screen* atHub(const std::string& id, const View& view);
  /// Drops the screens at hubs that have not been heard of.
  void expire();
  /// Takes a report up. `changed` is when the painted event's cause happened. False
  /// when the screen reports more than five times a second.
  bool painted(Screen& screen, const PaintReport& report, std::optional<Clock::time_point> changed);

  /// The names of the known screens, which should be there, and what each is called by its key (nothing: it
  /// is not known any more).
  void expect(const std::vector<std::string>& names,
              const std::function<std::optional<std::string>(const std::string& key)>& nameOf);
  struct Missing {
    std::string name;
    /// When it was there last, or began to be expected.
    Clock::time_point since;
  };
  /// Those of the expected screens that are not there.
  [[nodiscard]] std::vector<Missing> missing() const;
  [[nodiscard]] std::vector<std::string> expected() const;
  /// Whether there are any.
  [[nodiscard]] bool expects() const { return !seen_.empty(); }

  /// By their secret names.
  [[nodiscard]] const std::map<std::string, Screen, std::less<>>& all() const { return screens_; }
  [[nodiscard]] std::size_t withStream() const { return screens_.size() - atHubs_; }
  [[nodiscard]] std::size_t atHubs() const { return atHubs_; }
  /// Of all paints so far, in seconds.
  [[nodiscard]] const Histogram& delays() const { return delays_; }
  [[nodiscard]] Clock::time_point now() const { return now_(); }

 private:
  Screen newScreen(const View& view);
  void noteSeen(const std::string& name, Clock::time_point at);
  void dropAtHubs(const std::function<bool(const Screen&)>& which);

  Now now_;
  std::map<std::string, Screen, std::less<>> screens_;
  std::size_t atHubs_ = 0;
  std::uint64_t count_ = 0;
  Histogram delays_;
  /// When each expected screen was there last, as far as it is not there now.
  std::map<std::string, Clock::time_point> seen_;
};

}  // namespace web
