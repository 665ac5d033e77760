#pragma once

#include <string_view>

#include "ado/ResultTable.h"

namespace ado {

/// What the characters of a cell mean by the type of its column.
enum class TextMeaning { Text, Integer, Real, Decimal, Boolean, Moment };

/// Adds a cell that came as characters. What does not read as its column means
/// it, which databases without fixed column types let happen, stays the text it
/// is. Moments are ISO 8601: a date, a time or both.
void addFromText(ResultTableBuilder& row, TextMeaning meaning, std::string_view text);

/// Adds a date with time of day. What no calendar of years 100 to 9999 and no
/// clock knows becomes text ("0044-03-15").
void addMoment(ResultTableBuilder& row, int year, int month, int day, int hour, int minute, int second);
/// Adds a time of day, likewise.
void addTime(ResultTableBuilder& row, int hour, int minute, int second);

}  // namespace ado
