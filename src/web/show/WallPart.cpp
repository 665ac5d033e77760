#include "web/show/WallPart.h"

#include "web/http/Target.h"

namespace web {
namespace {

bool take(std::string_view& text, char sign) {
  if (text.empty() || text.front() != sign) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::optional<WallPart> wallPartNamed(std::string_view text) {
  const auto columns = takeNumber(text);
  if (!columns || !take(text, 'x')) return std::nullopt;
  const auto rows = takeNumber(text);
  if (!rows || !take(text, '/')) return std::nullopt;
  const auto number = takeNumber(text);
  const auto isInLine = [](int count) { return count >= 1 && count <= mostScreensInLine; };
  if (!number || !text.empty() || !isInLine(*columns) || !isInLine(*rows)) return std::nullopt;
  if (*number < 1 || *number > *columns * *rows) return std::nullopt;
  return WallPart{*columns, *rows, (*number - 1) % *columns, (*number - 1) / *columns};
}

}  // namespace web
