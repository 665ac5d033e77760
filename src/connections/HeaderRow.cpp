#include "connections/HeaderRow.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "basic/Strings.h"

namespace LF2000 {
namespace {

bool LooksLikeNames(const RecordFields& fields) {
  std::unordered_set<std::string> names;
  return std::all_of(fields.begin(), fields.begin() + static_cast<std::ptrdiff_t>(FilledFields(fields)),
                     [&](std::string_view field) {
                       const std::size_t first = field.find_first_not_of("+-.");
                       return first != std::string_view::npos && field.front() != ' ' &&
                              (field[first] < '0' || field[first] > '9') &&
                              names.insert(basic::UCase(field)).second;
                     });
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// A number, a date, a time, an amount: more digits than letters.
bool LooksLikeValue(std::string_view field) {
  return std::count_if(field.begin(), field.end(), IsDigit) >
         std::count_if(field.begin(), field.end(), IsLetter);
}

bool IsCapitals(std::string_view field) {
  return std::any_of(field.begin(), field.end(), IsLetter) && basic::UCase(field) == field;
}

bool HoldsBlank(std::string_view field) { return basic::Trim(field).find(' ') != std::string_view::npos; }

/// Whether what stands below a name is of another kind than the name.
bool IsUnlike(std::string_view name, const std::vector<std::string_view>& below) {
  const auto most = [&](auto&& is) {
    return 2 * std::count_if(below.begin(), below.end(), is) > static_cast<std::ptrdiff_t>(below.size());
  };
  if (most(LooksLikeValue)) return true;
  // A few texts may look alike by chance.
  constexpr std::size_t Enough = 2;
  if (below.size() < Enough) return false;
  const auto all = [&](auto&& is) { return std::all_of(below.begin(), below.end(), is); };
  if (!IsCapitals(name) && all(IsCapitals)) return true;
  if (!HoldsBlank(name) && most(HoldsBlank)) return true;
  const auto length = static_cast<std::size_t>(basic::Len(below.front()));
  const auto hasLength = [&](std::string_view field) {
    return static_cast<std::size_t>(basic::Len(field)) == length;
  };
  return below.size() > Enough && all(hasLength) && !hasLength(name);
}

}  // namespace

bool LooksLikeHeader(const std::vector<RecordFields>& records) {
  if (records.empty()) return false;
  const RecordFields& names = records.front();
  const std::size_t width = FilledFields(names);
  if (width == 0 || !LooksLikeNames(names) ||
      std::any_of(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(width), LooksLikeValue)) {
    return false;
  }
  // Words side by side with nothing below are names sooner than data.
  if (records.size() == 1) return width > 1;
  bool isUnlike = false;
  for (std::size_t column = 0; column < width; ++column) {
    std::vector<std::string_view> below;
    for (auto record = records.begin() + 1; record != records.end(); ++record) {
      if (column >= record->size() || (*record)[column].empty()) continue;
      below.push_back((*record)[column]);
      if (basic::EqualsIgnoreCase(below.back(), names[column])) return false;
    }
    isUnlike = isUnlike || IsUnlike(names[column], below);
  }
  return isUnlike;
}

std::size_t FilledFields(const RecordFields& fields) {
  const auto last =
      std::find_if(fields.rbegin(), fields.rend(), [](std::string_view field) { return !field.empty(); });
  return static_cast<std::size_t>(fields.rend() - last);
}

std::size_t HeaderRow(const std::vector<RecordFields>& records) {
  std::vector<std::size_t> widths;
  widths.reserve(records.size());
  for (const RecordFields& fields : records) widths.push_back(FilledFields(fields));
  const auto isAsWideAsMost = [&](std::vector<std::size_t>::const_iterator width) {
    const auto fitting =
        std::count_if(width + 1, widths.cend(), [&](std::size_t each) { return each <= *width; });
    const auto following = widths.cend() - width - 1;
    return following == 0 || 2 * fitting > following;
  };
  auto header = widths.cbegin();
  while (header != widths.cend() && !isAsWideAsMost(header)) ++header;
  if (header == widths.cbegin() || header == widths.cend()) return 0;

  const bool isAlone = header + 1 == widths.cend();
  if (*header < (isAlone ? std::size_t{3} : std::size_t{2})) return 0;
  const bool areTitles =
      2 * widths.front() <= *header &&
      std::all_of(widths.cbegin(), header, [&](std::size_t width) { return width < *header; });
  const auto index = static_cast<std::size_t>(header - widths.cbegin());
  return areTitles && LooksLikeNames(records[index]) ? index : 0;
}

}  // namespace LF2000
