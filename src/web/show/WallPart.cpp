#include "web/show/WallPart.h"

#include <charconv>

namespace web {
namespace {

/// Takes a number from 1 off the text's beginning; 0 when none stands there.
int takeNumber(std::string_view& text) {
  int number = 0;
  const auto [end, failed] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (failed != std::errc() || number < 1) return 0;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

bool take(std::string_view& text, char sign) {
  if (text.empty() || text.front() != sign) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::optional<WallPart> wallPartNamed(std::string_view text) {
  WallPart part;
  part.columns = takeNumber(text);
  if (!take(text, 'x')) return std::nullopt;
  part.rows = takeNumber(text);
  if (!take(text, '/')) return std::nullopt;
  const int number = takeNumber(text);
  const bool isWall = part.columns >= 1 && part.columns <= mostScreensInLine && part.rows >= 1 &&
                      part.rows <= mostScreensInLine;
  if (!isWall || !text.empty() || number < 1 || number > part.columns * part.rows) return std::nullopt;
  part.column = (number - 1) % part.columns;
  part.row = (number - 1) / part.columns;
  return part;
}

}  // namespace web
