#include "platform/IniFile.h"

#include "basic/IniLine.h"
#include "basic/Strings.h"

namespace platform {
namespace {

std::string_view unquoted(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

IniFile parseIniFile(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);

  using Kind = basic::IniLine::Kind;
  IniFile file;
  std::string section;
  int number = 0;
  for (const std::string& whole : basic::Split(text, '\n')) {
    ++number;
    const basic::IniLine line = basic::ReadIniLine(whole);
    switch (line.kind) {
      case Kind::Nothing:
        break;
      case Kind::Section:
        section = line.name;
        break;
      case Kind::Entry:
        file.entries.push_back({section, std::string(line.name), std::string(unquoted(line.value))});
        break;
      case Kind::OpenSection:
        file.broken.push_back({number, "the name of a section ends with ]"});
        break;
      case Kind::NoKey:
        file.broken.push_back({number, "there is no key before the ="});
        break;
      case Kind::NoEquals:
        file.broken.push_back({number, "there is no = between a key and its value"});
        break;
    }
  }
  return file;
}

}  // namespace platform
