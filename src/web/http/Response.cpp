#include "web/http/Response.h"

#include "json/Json.h"

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
  return fresh(status, "application/json", json::textOf({{"error", why}}));
}

}  // namespace web
