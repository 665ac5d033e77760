#include "web/http/Guard.h"

#include <gtest/gtest.h>

#include <vector>

#include "web/http/Options.h"

namespace web {
namespace {

/// `origin` null: no Origin header.
bool isWelcome(const char* boundTo, const char* host, const char* origin = nullptr) {
  Options options;
  options.address = boundTo;
  options.allowedNames = {"board.example", "[2001:db8::5]"};
  Request request;
  request.host = host;
  request.hasOrigin = origin != nullptr;
  if (origin != nullptr) request.origin = origin;
  return !Guard(options, "lobby-pc").objection(request);
}

TEST(GuardTest, LetsInWhoeverAddressesThisServer) {
  const struct {
    const char* boundTo;
    std::vector<const char*> welcome;
    std::vector<const char*> refused;
  } cases[] = {
      {"127.0.0.1",
       {"localhost:8080", "LocalHost", "127.0.0.1:9", "[::1]:8080", "[2001:db8::5]", "board.example"},
       // First a foreign name that someone has pointed at 127.0.0.1.
       {"evil.example:8080", "localhost.evil.example", "192.168.1.5", "lobby-pc", "", "localhost:80x", "[::1",
        "[]", "localhost@evil.example"}},
      {"127.0.0.2", {"127.0.0.2"}, {}},
      {"::1", {"[::1]"}, {"[fe80::1]"}},
      {"0.0.0.0", {"192.168.1.5:8080", "[fe80::1]", "lobby-pc", "LOBBY-PC.local:8080"}, {"evil.example"}},
      {"::", {"10.0.0.1"}, {}},
  };
  for (const auto& c : cases) {
    for (const char* host : c.welcome) EXPECT_TRUE(isWelcome(c.boundTo, host)) << c.boundTo << " " << host;
    for (const char* host : c.refused) EXPECT_FALSE(isWelcome(c.boundTo, host)) << c.boundTo << " " << host;
  }
}

TEST(GuardTest, LetsInPagesOfItsOwnAlone) {
  EXPECT_TRUE(isWelcome("127.0.0.1", "localhost:8080", "http://localhost:8080"));
  // Behind something that adds TLS on the standard port.
  EXPECT_TRUE(isWelcome("127.0.0.1", "board.example", "https://board.example"));
  EXPECT_TRUE(isWelcome("127.0.0.1", "board.example", "https://board.example:443"));
  EXPECT_FALSE(isWelcome("127.0.0.1", "board.example", "http://board.example:443"));
  for (const char* origin :
       {"http://localhost:3000", "http://localhost", "http://evil.example", "http://evil.example:8080",
        "http://localhost:8080.evil.example", "null", "", "file://localhost:8080"}) {
    EXPECT_FALSE(isWelcome("127.0.0.1", "localhost:8080", origin)) << origin;
  }
}

TEST(GuardTokenTest, OnlyTheTokenItselfMayChangeSomething) {
  const auto mayChange = [](const char* token, std::string_view authorization) {
    Options options;
    options.token = token;
    Request request;
    request.authorization = authorization;
    return Guard(options, "").mayChange(request);
  };
  EXPECT_TRUE(mayChange("s3cret", "Bearer s3cret"));
  EXPECT_TRUE(mayChange("s3cret", "bearer s3cret"));
  for (const char* wrong : {"", "Bearer", "Bearer ", "Bearer s3cre", "Bearer s3cret ", "Bearer S3cret",
                            "Basic! s3cret", "s3cret"}) {
    EXPECT_FALSE(mayChange("s3cret", wrong)) << wrong;
  }
  EXPECT_FALSE(mayChange("", "Bearer "));
}

}  // namespace
}  // namespace web
