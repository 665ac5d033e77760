#pragma once

// Inside NumberFormat: what the sections show, appended to a text.

#include <string>
#include <string_view>

#include "basic/Locale.h"
#include "basic/numberformat/NumberFormat.h"
#include "basic/numberformat/NumberFormatCode.h"

namespace basic {

/// Sections of the kinds Number, Scientific and Fraction.
void AppendNumberSection(std::string& to, const NumberFormatSection& section, double value,
                         const Locale& locale);

void AppendDateSection(std::string& to, const NumberFormatSection& section, double serial,
                       const Locale& locale, DateSystem system);

/// With zeros in front up to `width`.
void AppendPadded(std::string& to, long long value, int width);

}  // namespace basic
