#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "web/show/Show.h"

namespace app {

/// A slide as a page that needs nothing beside it: its styles and pictures are
/// in it.
struct StandalonePage {
  std::string title;
  /// The slide's element; see web::SlideView::html.
  std::string slide;
  std::string_view styles;
  /// Gives the files that the slide refers to as "assets/NAME".
  std::function<std::optional<web::Asset>(std::string_view name)> asset;

  [[nodiscard]] std::string html() const;
};

}  // namespace app
