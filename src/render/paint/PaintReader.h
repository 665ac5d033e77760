#pragma once

#include <optional>
#include <pugixml.hpp>

#include "render/paint/Paint.h"
#include "render/paint/Theme.h"

namespace render {

/// What the resolving of one part's elements needs: where names of colours and
/// relationships are looked up.
struct PaintContext {
  /// May be null: then names of fonts and styles mean nothing.
  const Theme* theme = nullptr;
  ColorContext colors;
  /// The part whose relationships the elements name; may be null.
  opc::Part* part = nullptr;
  /// Where pictures come to; may be null, then none is read.
  Assets* assets = nullptr;
};

// Elements of fills and lines (ECMA-376 part 1, 20.1.8) resolved. What cannot be read counts as not stated; a
// gradient keeps 256 stops, a dash pattern 64 lengths.

/// The fill among the children of an element such as p:spPr; nothing when none is
/// stated. `groupFill` stands for a:grpFill.
std::optional<Fill> readFill(pugi::xml_node parent, const PaintContext& context,
                             const Fill* groupFill = nullptr);
/// One fill element; nothing when it is none. A picture that cannot be shown gives NoFill.
std::optional<Fill> readFillElement(pugi::xml_node element, const PaintContext& context,
                                    const Fill* groupFill = nullptr);
/// a:blip and what stands beside it in p:blipFill or a:blipFill; nothing without a picture that can be shown.
std::optional<PictureFill> readPicture(pugi::xml_node blipFill, const PaintContext& context);

/// Takes over what an a:ln states; the rest stays as it is.
void applyLine(Line& line, pugi::xml_node ln, const PaintContext& context);

}  // namespace render
