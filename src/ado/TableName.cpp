#include "ado/TableName.h"

#include <algorithm>
#include <array>
#include <optional>

#include "basic/Strings.h"

namespace ado {
namespace {

constexpr std::string_view Blanks = " \t\r\n";

bool isWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// Takes a part in quotes off the front, if it is one up to its end.
std::optional<std::string> takeQuoted(std::string_view& name) {
  const char opening = name.empty() ? ' ' : name.front();
  if (opening != '"' && opening != '`' && opening != '[') return std::nullopt;
  const char closing = opening == '[' ? ']' : opening;
  std::string part;
  for (std::size_t i = 1; i < name.size(); ++i) {
    if (name[i] != closing) {
      part += name[i];
    } else if (i + 1 == name.size() || name[i + 1] == '.') {
      name.remove_prefix(i + 1);
      return part;
    } else if (name[i + 1] == closing) {
      part += name[i++];
    } else {
      break;
    }
  }
  return std::nullopt;
}

std::string takePlain(std::string_view& name) {
  const std::size_t end = std::min(name.find('.'), name.size());
  std::string part(name.substr(0, end));
  name.remove_prefix(end);
  return part;
}

std::string quotedPart(const std::string& part, std::string_view quote) {
  return std::string(quote) + basic::Replace(part, quote, std::string(quote) + std::string(quote)) +
         std::string(quote);
}

}  // namespace

bool isStatement(std::string_view source) {
  static constexpr std::array<std::string_view, 20> Words = {
      "SELECT", "WITH",   "VALUES", "EXEC",   "EXECUTE", "CALL", "SHOW",  "DESCRIBE", "EXPLAIN", "PRAGMA",
      "TABLE",  "INSERT", "UPDATE", "DELETE", "CREATE",  "DROP", "ALTER", "SET",      "DECLARE", "TRANSFORM"};
  const std::size_t begin = source.find_first_not_of(" \t\r\n(;");
  if (begin == std::string_view::npos) return false;
  const std::string_view text = source.substr(begin);
  if (text.front() == '{' || basic::StartsWith(text, "--") || basic::StartsWith(text, "/*")) return true;
  const auto end =
      static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isWordCharacter) - text.begin());
  const std::string word = basic::UCase(text.substr(0, end));
  return end < text.size() && text[end] != '.' &&
         text.find_first_not_of(Blanks, end) != std::string_view::npos &&
         std::find(Words.begin(), Words.end(), word) != Words.end();
}

std::string quotedTableName(std::string_view name, std::string_view quote) {
  name = basic::Trim(name);
  if (quote.empty()) return std::string(name);
  std::string quoted;
  while (true) {
    const auto part = takeQuoted(name);
    quoted += quotedPart(part ? *part : takePlain(name), quote);
    if (name.empty()) return quoted;
    name.remove_prefix(1);
    quoted += '.';
  }
}

bool isPlainName(std::string_view name) {
  return !name.empty() &&
         std::all_of(name.begin(), name.end(), [](char c) { return isWordCharacter(c) || c == '.'; });
}

}  // namespace ado
