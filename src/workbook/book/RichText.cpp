#include "workbook/book/RichText.h"

#include <charconv>
#include <cstdint>
#include <optional>

#include "basic/Strings.h"
#include "basic/Utf8.h"
#include "workbook/book/Xml.h"

namespace workbook {
namespace {

constexpr std::size_t MaximumCharacters = 32767;

/// The code unit of an escape that the text begins with.
std::optional<std::uint32_t> escapedUnit(std::string_view text) {
  if (text.size() < 7 || text[0] != '_' || text[1] != 'x' || text[6] != '_') return std::nullopt;
  std::uint32_t unit = 0;
  const auto [end, error] = std::from_chars(text.data() + 2, text.data() + 6, unit, 16);
  if (error != std::errc() || end != text.data() + 6) return std::nullopt;
  return unit;
}

bool isHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void appendUnescaped(std::string& to, std::string_view text) {
  constexpr std::size_t EscapeSize = 7;
  for (std::size_t mark = 0; (mark = text.find("_x", mark)) != std::string_view::npos;) {
    const auto unit = escapedUnit(text.substr(mark));
    if (!unit) {
      ++mark;
      continue;
    }
    to += text.substr(0, mark);
    text.remove_prefix(mark + EscapeSize);
    mark = 0;
    char32_t point = *unit;
    const auto low = isHighSurrogate(point) ? escapedUnit(text) : std::nullopt;
    if (low && isLowSurrogate(*low)) {
      point = 0x10000U + ((point - 0xD800U) << 10U) + (*low - 0xDC00U);
      text.remove_prefix(EscapeSize);
    }
    basic::AppendUtf8(to, point);
  }
  to += text;
}

std::string_view withoutWhiteEnds(std::string_view text) {
  constexpr std::string_view White = " \t\r\n";
  const std::size_t first = text.find_first_not_of(White);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(White) - first + 1);
}

/// All character data of an element; `storage` holds it where comments and CDATA
/// sections part it into pieces.
std::string_view characterData(pugi::xml_node element, std::string& storage) {
  if (!element.first_child()) return element.value();
  storage = element.value();
  for (pugi::xml_node piece : element.children()) storage += piece.value();
  return storage;
}

void appendText(std::string& to, pugi::xml_node element) {
  std::string storage;
  const std::string_view text = characterData(element, storage);
  const bool isKept = std::string_view(element.attribute("xml:space").value()) == "preserve";
  appendUnescaped(to, isKept ? text : withoutWhiteEnds(text));
}

}  // namespace

void appendEscapedText(std::string& to, pugi::xml_node element) {
  std::string storage;
  appendUnescaped(to, characterData(element, storage));
}

void appendRichText(std::string& to, pugi::xml_node item, std::string_view prefix) {
  const std::size_t begin = to.size();
  for (pugi::xml_node child : item.children()) {
    if (xml::isNamed(child, prefix, "t")) {
      appendText(to, child);
    } else if (xml::isNamed(child, prefix, "r")) {
      for (pugi::xml_node text : child.children()) {
        if (xml::isNamed(text, prefix, "t")) appendText(to, text);
      }
    }
  }
  if (to.size() - begin > MaximumCharacters) {
    const std::string_view text = std::string_view(to).substr(begin);
    to.resize(begin + basic::Left(text, MaximumCharacters).size());
  }
}

}  // namespace workbook
