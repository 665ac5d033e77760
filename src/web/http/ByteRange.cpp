#include "web/http/ByteRange.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "basic/Strings.h"

namespace web {
namespace {

/// Digits alone; a number too large to hold is the largest.
std::optional<std::uint64_t> position(std::string_view digits) {
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  std::uint64_t value = 0;
  const auto [end, failed] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return failed == std::errc() ? value : std::numeric_limits<std::uint64_t>::max();
}

}  // namespace

RangeWanted rangeWanted(std::string_view header, std::uint64_t size) {
  using Kind = RangeWanted::Kind;
  constexpr std::string_view unit = "bytes=";
  if (!basic::EqualsIgnoreCase(header.substr(0, unit.size()), unit)) return {};
  header.remove_prefix(unit.size());
  const std::size_t dash = header.find('-');
  if (dash == std::string_view::npos) return {};
  const auto from = position(header.substr(0, dash));
  const auto to = position(header.substr(dash + 1));
  if (dash == 0) {  // the last so many bytes
    if (!to) return {};
    if (*to == 0) return {Kind::Unsatisfiable};
    const std::uint64_t length = std::min(*to, size);
    return length == 0 ? RangeWanted{} : RangeWanted{Kind::Part, {size - length, length}};
  }
  const bool isOpen = dash + 1 == header.size();
  if (!from || (!to && !isOpen) || (to && *to < *from)) return {};
  if (*from >= size) return {Kind::Unsatisfiable};
  const std::uint64_t last = isOpen ? size - 1 : std::min(*to, size - 1);
  return {Kind::Part, {*from, last - *from + 1}};
}

}  // namespace web
