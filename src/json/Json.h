#pragma once

#include <concepts>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>

namespace json {

/// A JSON value (RFC 8259); the members of an object stand as they were set.
using Json = nlohmann::ordered_json;

/// As text, on one line or with `indent` blanks a level. Bytes that are no UTF-8 become U+FFFD:
/// what data files and decks hold must not stop what tells of it.
std::string textOf(const Json& json, int indent = -1);

/// The value where it is a whole number within the range of that type; nothing for any other. get<> would
/// convert 6e91 and 2^64-1, whatever comes of it.
template <std::integral Whole>
std::optional<Whole> wholeOf(const Json& json) {
  const auto within = [](auto number) {
    return std::in_range<Whole>(number) ? std::optional(static_cast<Whole>(number)) : std::nullopt;
  };
  if (json.is_number_unsigned()) return within(json.get<std::uint64_t>());
  if (json.is_number_integer()) return within(json.get<std::int64_t>());
  return std::nullopt;
}

/// The member of an object as such a number. Throws Json::exception where there is none.
template <std::integral Whole>
Whole wholeIn(const Json& object, const char* member) {
  const Json& value = object.at(member);
  const auto whole = wholeOf<Whole>(value);
  if (!whole) {
    throw Json::type_error::create(302, std::string("'") + member + "' is no whole number of its range",
                                   &value);
  }
  return *whole;
}

}  // namespace json
