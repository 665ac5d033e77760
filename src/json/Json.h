#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace json {

/// A JSON value (RFC 8259); the members of an object stand as they were set.
using Json = nlohmann::ordered_json;

/// As text, on one line or with `indent` blanks a level. Bytes that are no UTF-8 become U+FFFD:
/// what data files and decks hold must not stop what tells of it.
std::string textOf(const Json& json, int indent = -1);

}  // namespace json
