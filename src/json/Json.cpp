#include "json/Json.h"

namespace json {

std::string textOf(const Json& json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace json
