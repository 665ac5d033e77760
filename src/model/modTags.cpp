#include "model/modTags.h"

#include <algorithm>
#include <array>

#include "basic/Strings.h"
#include "model/clsSlide.h"

namespace LF2000::modTags {

bool IsColumnTag(std::string_view name) {
  static constexpr std::array Keys = {ColumnType,       ColumnTag,          ColumnName,           ColumnRow,
                                      ColumnDateFormat, ColumnObjectFolder, ColumnObjectExtension};
  return std::any_of(Keys.begin(), Keys.end(), [name](std::string_view key) { return Matches(name, key); });
}

bool Matches(std::string_view name, std::string_view key) { return basic::StartsWith(name, key); }

bool HasVersionTag(PowerPoint::Presentation& presentation) {
  const auto tags = presentation.Tags();
  for (std::int32_t i = 1; i <= tags->Count(); ++i) {
    if (Matches(tags->Name(i), Version)) return true;
  }
  return false;
}

std::int32_t CountTags(const PowerPoint::Tags& tags, std::string_view key) {
  std::int32_t count = 0;
  for (std::int32_t i = 1; i <= tags.Count(); ++i) {
    if (Matches(tags.Name(i), key)) ++count;
  }
  return count;
}

void RemoveTags(PowerPoint::Tags& tags, std::string_view key) {
  for (std::int32_t i = tags.Count(); i >= 1; --i) {
    const std::string name = tags.Name(i);
    if (Matches(name, key)) tags.Delete(name);
  }
}

bool ShapeScrollEnabled(PowerPoint::Slide& slide, std::string_view key) {
  clsSlide properties;
  ForEachTag(*slide.Tags(), ScrollStep, [&](const std::string& entry, const std::string& value) {
    properties.AddScrollInfo(entry, value);
  });
  return properties.ScrollEnabled(key);
}

}  // namespace LF2000::modTags
