#include "basic/IniLine.h"

namespace basic {
namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view Padding = " \t\r";
  const std::size_t first = text.find_first_not_of(Padding);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(Padding) - first + 1);
}

}  // namespace

IniLine ReadIniLine(std::string_view line) {
  using Kind = IniLine::Kind;
  line = trimmed(line);
  if (line.empty() || line.front() == ';' || line.front() == '#') return {};
  if (line.front() == '[') {
    if (line.back() != ']') return {Kind::OpenSection, {}, {}};
    return {Kind::Section, trimmed(line.substr(1, line.size() - 2)), {}};
  }
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return {Kind::NoEquals, {}, {}};
  if (equals == 0) return {Kind::NoKey, {}, {}};
  return {Kind::Entry, trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1))};
}

}  // namespace basic
