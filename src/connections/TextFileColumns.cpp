#include "connections/TextFileColumns.h"

#include <unordered_map>

#include "basic/Error.h"
#include "basic/Strings.h"

namespace LF2000 {
namespace {

[[noreturn]] void Fail(std::string description) {
  throw basic::Error(basic::AdapterError, basic::DefaultSource, std::move(description));
}

}  // namespace

std::vector<std::string> GeneratedColumnNames(std::size_t count) {
  std::vector<std::string> names;
  names.reserve(count);
  for (std::size_t i = 1; i <= count; ++i) names.push_back("Column" + std::to_string(i));
  return names;
}

void CheckColumnNames(const std::vector<std::string>& names) {
  std::unordered_map<std::string, std::size_t> positions;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string position = std::to_string(i + 1);
    if (names[i].empty()) {
      Fail("The first line holds the column names, but the name of column " + position + " is empty.");
    }
    const auto [same, isNew] = positions.emplace(basic::UCase(names[i]), i);
    if (!isNew) {
      Fail("Duplicated column name '" + names[i] + "' detected: columns " + std::to_string(same->second + 1) +
           " and " + position + " of the first line.");
    }
  }
}

}  // namespace LF2000
