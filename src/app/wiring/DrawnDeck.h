#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/wiring/LinkedShapes.h"
#include "deck/objects/Presentation.h"
#include "render/conversion/PictureConverter.h"
#include "render/html/SlideRenderer.h"
#include "web/show/Show.h"

namespace app {

/// The renderer of an open deck, with what the program knows beside the package: which shapes are linked,
/// what time it is, and a converter for pictures that browsers do not show.
class DrawnDeck {
 public:
  /// Reads the links. Pages name their files by this prefix and a NAME. The deck outlives this object.
  explicit DrawnDeck(deck::Presentation& deck, std::string assetPrefix = "assets/");
  DrawnDeck(const DrawnDeck&) = delete;
  DrawnDeck& operator=(const DrawnDeck&) = delete;

  [[nodiscard]] render::SlideRenderer& renderer() { return renderer_; }
  [[nodiscard]] const render::SlideRenderer& renderer() const { return renderer_; }
  /// Whoever draws calls renderer().forget() when it has got on, and draws anew.
  [[nodiscard]] render::PictureConverter& converter() { return converter_; }
  /// Reads the links of a slide, from 1, again: they have changed.
  void linksChanged(int slide);
  /// Of a slide, from 1, in drawing order.
  [[nodiscard]] const std::vector<LinkedShape>& linkedShapes(int slide) const;
  /// Null when the shape is not linked.
  [[nodiscard]] const LinkedShape* linkedShape(int slide, std::uint32_t id) const;
  /// A file of the pages drawn so far, by its NAME; nothing when there is none of that name.
  [[nodiscard]] std::optional<web::Asset> asset(std::string_view name) const;

 private:
  deck::Presentation& deck_;
  std::vector<std::vector<LinkedShape>> linked_;
  render::PictureConverter converter_;
  render::SlideRenderer renderer_;
};

}  // namespace app
