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

}  // namespace

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
