#pragma once

#include <map>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string>

#include "opc/Package.h"
#include "render/paint/Assets.h"
#include "render/paint/Theme.h"
#include "render/text/Text.h"
#include "render/text/TextStyle.h"

// What a slide's shapes inherit: presentation, theme, master, layout. Made once for
// all slides of a layout and kept until one of these parts changes.

namespace render {

/// What a placeholder on a slide takes over from its layout and master; for other
/// shapes only the text defaults.
struct Inherited {
  /// Null nodes where there is no counterpart.
  pugi::xml_node layoutShape;
  pugi::xml_node masterShape;
  ListStyle listStyle;
  BodyProperties body;
};

class Inheritance {
 public:
  /// What a slide may have of its own instead of its layout's.
  struct Overrides {
    pugi::xml_node colorMap;  // a:overrideClrMapping
    opc::Part* theme = nullptr;
    [[nodiscard]] bool isEmpty() const { return !colorMap && theme == nullptr; }
  };

  Inheritance(opc::Part& presentation, opc::Part& layout, Assets& assets, const Overrides& slide);

  [[nodiscard]] opc::Part* layout() const { return layout_; }
  /// Null when the layout leads to none.
  [[nodiscard]] opc::Part* master() const { return master_; }
  [[nodiscard]] opc::Part* themePart() const { return themePart_; }
  [[nodiscard]] const Theme& theme() const { return theme_; }

  /// For resolving elements of `part`.
  [[nodiscard]] PaintContext paint(opc::Part* part) const;

  /// By p:ph, or a null node for shapes that are no placeholders.
  const Inherited& of(pugi::xml_node ph);

  /// The table style of an id, from the deck or built in; a null node if unknown.
  [[nodiscard]] pugi::xml_node tableStyle(std::string_view id);

 private:
  void overrideTheme(opc::Part& changed);

  opc::Part* presentation_;
  opc::Part* layout_;
  opc::Part* master_ = nullptr;
  opc::Part* themePart_ = nullptr;
  Assets* assets_;
  Theme theme_;
  ColorMap colorMap_;
  std::map<std::string, std::unique_ptr<Inherited>, std::less<>> inherited_;
};

}  // namespace render
