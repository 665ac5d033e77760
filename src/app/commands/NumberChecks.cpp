#include "app/commands/NumberChecks.h"

#include <charconv>
#include <string>

namespace app {

namespace {

template <typename Number>
CLI::Validator within(Number fewest, Number most, const std::string& what) {
  const auto check = [=](const std::string& text) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [read, failed] = std::from_chars(text.data(), end, number);
    const bool isGood = failed == std::errc() && read == end && number >= fewest && number <= most;
    return isGood ? std::string() : text + " is no " + what;
  };
  return {check, ""};
}

}  // namespace

CLI::Validator wholeNumber(std::int64_t fewest, std::int64_t most) {
  const bool isOpen = most == std::numeric_limits<std::int64_t>::max();
  return within(
      fewest, most,
      "whole number from " + std::to_string(fewest) + (isOpen ? " on" : " to " + std::to_string(most)));
}

CLI::Validator notNegative() { return within(0.0, std::numeric_limits<double>::max(), "number from 0 on"); }

}  // namespace app
