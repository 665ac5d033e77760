#pragma once

#include <optional>
#include <pugixml.hpp>

#include "render/paint/Paint.h"
#include "render/paint/Theme.h"

namespace render {

/// What the resolving of one part's elements needs: where names of colours and
/// relationships are looked up.
struct PaintContext {
  const Theme* theme = nullptr;
  ColorContext colors;
  /// The part whose relationships the elements name; may be null.
  opc::Part* part = nullptr;
  Assets* assets = nullptr;
};

/// The fill among the children of an element such as p:spPr; nothing when none is
/// stated. `groupFill` stands for a:grpFill.
std::optional<Fill> readFill(pugi::xml_node parent, const PaintContext& context,
                             const Fill* groupFill = nullptr);
/// One fill element.
std::optional<Fill> readFillElement(pugi::xml_node element, const PaintContext& context,
                                    const Fill* groupFill = nullptr);
/// a:blip and what stands beside it in p:blipFill or a:blipFill.
std::optional<PictureFill> readPicture(pugi::xml_node blipFill, const PaintContext& context);

/// Takes over what an a:ln states; the rest stays as it is.
void applyLine(Line& line, pugi::xml_node ln, const PaintContext& context);

/// The outer or preset shadow of an a:effectLst; see readEffects() for `turned`.
std::optional<Shadow> readShadow(pugi::xml_node effectList, const PaintContext& context, double turned = 0);

}  // namespace render
