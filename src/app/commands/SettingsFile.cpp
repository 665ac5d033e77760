// Options of a verb from a file of KEY = VALUE lines.

#include "app/commands/SettingsFile.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <sstream>
#include <string_view>

#include "app/wiring/Failure.h"
#include "basic/IniLine.h"
#include "basic/Strings.h"
#include "basic/Utf8.h"
#include "host/drives.h"
#include "opc/Files.h"

namespace app {

namespace {

/// "port", "DECK".
std::string nameOf(const CLI::Option& option) {
  return option.get_lnames().empty() ? option.get_name() : option.get_lnames().front();
}

/// Null when there is none; a settings file names no other one.
CLI::Option* optionOf(CLI::App& verb, std::string_view key) {
  for (CLI::Option* option : verb.get_options()) {
    const std::string name = nameOf(*option);
    if (basic::EqualsIgnoreCase(name, key) && name != "config" && name != "help") return option;
  }
  return nullptr;
}

bool isFlag(const CLI::Option& option) { return option.get_items_expected_max() == 0; }

bool isOneOf(std::initializer_list<std::string_view> words, std::string_view value) {
  return std::any_of(words.begin(), words.end(),
                     [&](std::string_view word) { return basic::EqualsIgnoreCase(word, value); });
}

/// What is wrong with the line; empty when it was taken.
std::string take(CLI::App& verb, const basic::IniLine& line, const std::set<std::string>& given) {
  using Kind = basic::IniLine::Kind;
  constexpr std::size_t LongestKey = 100;
  if (line.kind == Kind::Nothing) return {};
  if (line.kind != Kind::Entry || line.name.size() > LongestKey)
    return "this is no line of the form KEY = VALUE";
  const std::string key(line.name);
  std::string value(line.value);
  CLI::Option* option = optionOf(verb, key);
  if (option == nullptr) return "there is no setting '" + key + "'";
  if (given.contains(nameOf(*option))) return {};
  if (value.empty()) return "'" + key + "' has no value";
  if (isFlag(*option)) {
    if (isOneOf({"no", "false", "off", "0"}, value)) return {};
    if (!isOneOf({"yes", "true", "on", "1"}, value)) return "'" + key + "' is yes or no, not '" + value + "'";
    value = "true";
  }
  try {
    option->add_result(value);
    option->run_callback();
  } catch (const CLI::ParseError& error) {
    return error.what();
  }
  return {};
}

std::string contentOf(const std::string& file) {
  constexpr std::uint64_t MostBytes = 1U << 20U;
  const std::string path = std::filesystem::absolute(file).string();
  try {
    std::string text =
        host::OnDrive(path, [path](const auto&) { return opc::readContent(path, MostBytes); }).bytes;
    if (text.starts_with(basic::Utf8Mark)) text.erase(0, basic::Utf8Mark.size());
    return text;
  } catch (const basic::Error& error) {
    fail(file + ": the settings cannot be read: " + error.description + ".");
  }
}

}  // namespace

std::set<std::string> optionsGiven(const CLI::App& verb) {
  std::set<std::string> given;
  for (const CLI::Option* option : verb.get_options()) {
    if (option->count() > 0) given.insert(nameOf(*option));
  }
  return given;
}

void requireGiven(const char* name, const std::string& value) {
  if (value.empty()) throw CLI::RequiredError(name);
}

void takeSettings(CLI::App& verb, const std::string& file, const std::set<std::string>& given) {
  std::istringstream in(contentOf(file));
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    const std::string wrong = take(verb, basic::ReadIniLine(line), given);
    if (!wrong.empty()) fail(file + ", line " + std::to_string(number) + ": " + wrong + ".");
  }
}

}  // namespace app
