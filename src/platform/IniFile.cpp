#include "platform/IniFile.h"

#include "basic/Strings.h"

namespace platform {
namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view Blanks = " \t\r";
  const std::size_t first = text.find_first_not_of(Blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

std::string_view unquoted(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

IniFile parseIniFile(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);

  IniFile file;
  std::string section;
  int number = 0;
  for (const std::string& whole : basic::Split(text, '\n')) {
    ++number;
    const std::string_view line = trimmed(whole);
    if (line.empty() || line.front() == ';' || line.front() == '#') continue;
    if (line.front() == '[') {
      if (line.back() == ']') {
        section = trimmed(line.substr(1, line.size() - 2));
      } else {
        file.broken.push_back({number, "the name of a section ends with ]"});
      }
      continue;
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
      file.broken.push_back({number, "there is no = between a key and its value"});
    } else if (equals == 0) {
      file.broken.push_back({number, "there is no key before the ="});
    } else {
      file.entries.push_back({section, std::string(trimmed(line.substr(0, equals))),
                              std::string(unquoted(trimmed(line.substr(equals + 1))))});
    }
  }
  return file;
}

}  // namespace platform
