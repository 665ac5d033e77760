#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "web/show/Show.h"

namespace web {

/// The views that screens look at over hubs, by their names (ViewName.h). Nobody says when the last screen
/// goes, so each is in use for a while after it was last asked for.
class ViewsInUse {
 public:
  using Time = std::chrono::steady_clock::time_point;
  /// A screen reports at least once a minute.
  static constexpr std::chrono::seconds lease{150};
  /// Each costs drawing and a channel of the hub.
  static constexpr std::size_t most = 256;
  /// Of these, views of nothing: any address makes one.
  static constexpr std::size_t mostOfNothing = 32;

  /// Uses a view from now on, or goes on with it. False when there is no room for one more.
  bool use(const std::string& name, const View& view, Time now);
  /// Drops those that nobody has asked for; returns their names.
  std::vector<std::string> expire(Time now);
  /// Asks for the view of each name anew: the deck has changed.
  void resolve(const std::function<View(const std::string& name)>& view);

  [[nodiscard]] bool contains(std::string_view name) const { return uses_.find(name) != uses_.end(); }
  [[nodiscard]] std::vector<std::string> namesOf(const View& view) const;
  [[nodiscard]] bool shows(const View& view) const { return !namesOf(view).empty(); }
  [[nodiscard]] std::size_t size() const { return uses_.size(); }
  /// The view of a name; nothing when it is not in use.
  [[nodiscard]] std::optional<View> find(std::string_view name) const;
  [[nodiscard]] std::vector<std::string> names() const;

 private:
  struct Use {
    View view;
    Time until;
  };
  [[nodiscard]] bool hasRoomFor(const View& view) const;

  std::map<std::string, Use, std::less<>> uses_;
};

}  // namespace web
