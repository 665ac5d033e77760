#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "web/show/Show.h"

namespace web {

/// What the address of a screen's page asks for, before the deck is asked what that is.
struct ViewAddress {
  /// 0 for what is no number of a slide.
  std::optional<int> slide;
  /// A shape's name, UTF-8; the first of that name where there is no slide.
  std::optional<std::string> shape;

  friend bool operator==(const ViewAddress&, const ViewAddress&) = default;
};

/// By "slide" and "shape" of a query ("slide=3&shape=A%20B").
ViewAddress viewAddressed(std::string_view query);

/// What it stands for in a show.
View viewAt(Show& show, const ViewAddress& address);

/// Its name in the addresses of states and as a channel of hubs (docs/hubs.md): "show", "slide-3",
/// "shape-436c6f636b", "slide-3-shape-436c6f636b".
std::string viewName(const ViewAddress& address);
/// The address of that name; nothing for what viewName() never returns, and for more than 2,000 characters.
std::optional<ViewAddress> viewNamed(std::string_view name);

}  // namespace web
