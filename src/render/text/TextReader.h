#pragma once

#include <functional>
#include <pugixml.hpp>
#include <string>

#include "basic/Date.h"
#include "render/text/Text.h"

namespace render {

/// What fields of a slide show; where one of these is empty, what was stored.
struct Fields {
  std::string slideNumber;
  /// Local time.
  std::function<basic::Date()> now;
};

/// Where the names in a text are looked up.
struct TextContext {
  PaintContext paint;
  Fields fields;
};

/// The paragraphs (ECMA-376 part 1, 21.1.2) of a p:txBody, a:txBody or their like over the formatting that it
/// inherits.
TextBody readText(pugi::xml_node txBody, const ListStyle& inherited, const BodyProperties& properties,
                  const TextContext& context);

/// A number from 1 on in one of the automatic numbering schemes of ECMA-376 part 1, 20.1.10.61
/// ("arabicPeriod", 3 -> "3."); decimal in schemes that are none.
std::string autoNumber(std::string_view scheme, int number);

/// Whether a typeface has pictures where others have letters.
bool isSymbolFont(std::string_view typeface);

/// Text of a symbol font (Wingdings, Symbol, Webdings) in characters that every
/// font has; as it is for other fonts.
std::string fromSymbolFont(std::string_view typeface, std::string_view text);

}  // namespace render
