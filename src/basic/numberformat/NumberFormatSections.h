#pragma once

// Inside NumberFormat: from the symbols of one section to what it shows.

#include "basic/numberformat/NumberFormatCode.h"
#include "basic/numberformat/NumberFormatMarks.h"

namespace basic {

/// A section for numbers, dates or times.
NumberFormatSection NumberSection(const NumberFormatMarks& marks);

/// A section for texts: @ and General stand for the text.
NumberFormatSection TextSection(const NumberFormatMarks& marks);

/// Inside NumberSection, by what the section shows.
void ParseNumberMarks(const std::vector<NumberFormatMark>& marks, NumberFormatSection& section);
void ParseDateMarks(const NumberFormatMarks& symbols, NumberFormatSection& section);
/// False if there is no fraction.
bool ParseFractionMarks(const std::vector<NumberFormatMark>& marks, NumberFormatSection& section);

/// Adds literal text, to a literal before it if there is one.
void AddLiteral(NumberFormatSection& section, std::string_view text);

/// Adds the whole part of a number, the marks before `end`: literals, places,
/// what commas and percent signs mean.
void AddWholePart(const std::vector<NumberFormatMark>& marks, std::size_t end, NumberFormatSection& section);

}  // namespace basic
