#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/powerpoint.h"

/// The tag vocabulary: everything that the system remembers about a
/// presentation. Tags are found by the beginning of their names, never by exact
/// name; docs/tags.md describes every value.
namespace LF2000::modTags {

inline constexpr std::string_view Version = "CORVANE VERSION";
inline constexpr std::string_view DisplayType = "CORVANE DISPLAYTYPE";
inline constexpr std::string_view Connection = "CORVANE CONNECTION";
inline constexpr std::string_view Distribution = "CORVANE DISTRIBUTION";
inline constexpr std::string_view DistributionStart = "CORVANE DISTRIBUTION START";
inline constexpr std::string_view DistributionStop = "CORVANE DISTRIBUTION STOP";
inline constexpr std::string_view DistributionComputer = "CORVANE DISTRIBUTION COMPUTER";
inline constexpr std::string_view DistributionDays = "CORVANE DISTRIBUTION DAYS";
inline constexpr std::string_view DistributionHours = "CORVANE DISTRIBUTION HOURS";
inline constexpr std::string_view SlideProperties = "CORVANE SLIDE PROPERTIES";
inline constexpr std::string_view ScrollStep = "CORVANE SCROLLSTEP";
inline constexpr std::string_view ColumnType = "CORVANE COLUMN TYPE";
inline constexpr std::string_view ColumnTag = "CORVANE COLUMN TAG";
inline constexpr std::string_view ColumnName = "CORVANE COLUMN COLUMNNAME";
inline constexpr std::string_view ColumnRow = "CORVANE COLUMN ROW";
inline constexpr std::string_view ColumnDateFormat = "CORVANE COLUMN DATE FORMAT";
inline constexpr std::string_view ColumnObjectFolder = "CORVANE COLUMN OBJECT FOLDER";
/// Spelled so: it is the stored name, and existing presentations carry it.
inline constexpr std::string_view ColumnObjectExtension = "CORVANE COLUMN OBJECT EXTESION";

inline constexpr char FieldSeparator = '\t';

/// What every tag of the system begins with.
inline constexpr std::string_view Prefix = "CORVANE ";

/// Whether `name` is one of the tags of a shape, which is linked while it has any of them.
[[nodiscard]] bool IsColumnTag(std::string_view name);

/// Whether `name` is a tag of the key.
[[nodiscard]] bool Matches(std::string_view name, std::string_view key);

/// Whether the presentation is linked.
[[nodiscard]] bool HasVersionTag(PowerPoint::Presentation& presentation);

/// Number of tags of the key.
[[nodiscard]] std::int32_t CountTags(const PowerPoint::Tags& tags, std::string_view key);

/// Deletes every tag of the key, from the last to the first.
void RemoveTags(PowerPoint::Tags& tags, std::string_view key);

/// Calls `visit(rest of the name, value)` for every tag of the key, in tag order.
template <typename Visit>
void ForEachTag(const PowerPoint::Tags& tags, std::string_view key, Visit&& visit) {
  for (std::int32_t i = 1; i <= tags.Count(); ++i) {
    const std::string name = tags.Name(i);
    if (Matches(name, key)) visit(name.substr(key.size()), tags.Value(i));
  }
}

/// Whether the slide's scroll entry of that key is enabled. The key is converted
/// to a number; one that does not convert raises.
[[nodiscard]] bool ShapeScrollEnabled(PowerPoint::Slide& slide, std::string_view key);

}  // namespace LF2000::modTags
