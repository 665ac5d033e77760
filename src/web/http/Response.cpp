#include "web/http/Response.h"

#include <nlohmann/json.hpp>

namespace web {

Response Response::fresh(int status, std::string contentType, std::string body) {
  Response response;
  response.status = status;
  response.headers = {{"Content-Type", std::move(contentType)}, {"Cache-Control", "no-store"}};
  response.body = std::make_shared<const std::string>(std::move(body));
  return response;
}

Response Response::done() { return fresh(200, "application/json", R"({"ok":true})"); }

Response Response::error(int status, std::string_view why) {
  using Json = nlohmann::json;
  return fresh(status, "application/json",
               Json{{"error", why}}.dump(-1, ' ', false, Json::error_handler_t::replace));
}

}  // namespace web
