#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "runtime/FrmRuntimeTimer.h"
#include "web/show/Show.h"

namespace app {

/// Watches when each connection of the running show last delivered. A connection is stale
/// when it has been asked for longer than three of its intervals and has not delivered;
/// one that no slide in sight needs is not asked and does not age. A slide is stale when refreshing
/// it has failed for as long.
///
/// Ages are taken from host::Clock::TickCount, which no daylight saving moves; they are as
/// exact as look() is called often.
class Freshness {
 public:
  /// `form` gives what drives the show; null without one.
  explicit Freshness(std::function<LF2000::FrmRuntimeTimer*()> form) : form_(std::move(form)) {}

  /// Notes what has happened since the last look. True when a connection or a slide became
  /// stale or fresh again.
  bool look();
  /// By the connection's number formatted "000".
  [[nodiscard]] bool isStale(const std::string& connection) const { return stale_.contains(connection); }
  /// A slide that stands shows old values of every connection.
  [[nodiscard]] bool isStale(int slide) const { return staleSlides_.contains(slide); }
  [[nodiscard]] std::vector<web::ConnectionHealth> connections() const;
  [[nodiscard]] std::vector<web::StandingSlide> standingSlides() const;

 private:
  struct Seen {
    std::uint64_t deliveries = 0;
    std::uint64_t failures = 0;
    /// Milliseconds of TickCount, as the next one.
    std::optional<std::int64_t> delivered;
    /// Since when the connection has been asked without an answer.
    std::int64_t waitsSince = 0;
    std::optional<web::ConnectionHealth::Time> lastSuccess;
    std::optional<web::ConnectionHealth::Time> lastError;
    bool isUsed = false;
  };

  [[nodiscard]] std::set<std::string> findStale(const LF2000::FrmRuntimeTimer& form);

  std::function<LF2000::FrmRuntimeTimer*()> form_;
  std::map<std::string, Seen> seen_;
  std::set<std::string> stale_;
  std::set<int> staleSlides_;
};

}  // namespace app
