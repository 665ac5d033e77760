// Files of a deck: in ranges, uncopied, and nobody waits for them.
#include <gmock/gmock.h>

#include "web/ServerFixture.h"
#include "web/show/Broadcast.h"
#include "web/show/Routes.h"

namespace web::test {
namespace {

class AssetTest : public ServerFixture {
 protected:
  void serve(std::string bytes) {
    show.assets["film"] = {std::make_shared<const std::string>(std::move(bytes)), "video/mp4"};
  }
  /// Who holds the bytes besides the show.
  long takers() { return show.assets["film"].bytes.use_count() - 1; }
};

TEST_F(AssetTest, GivesTheRangeThatIsAskedFor) {
  struct Case {
    const char* headers;
    int status;
    const char* contentRange;
    const char* body;
  };
  serve("0123456789");
  Client client = connect();
  for (const auto& [headers, status, contentRange, body] : std::initializer_list<Case>{
           {"", 200, "", "0123456789"},
           {"Range: bytes=0-3", 206, "bytes 0-3/10", "0123"},
           {"Range: bytes=9-9", 206, "bytes 9-9/10", "9"},
           {"Range: Bytes=7-", 206, "bytes 7-9/10", "789"},
           {"Range: bytes=8-99999999999999999999999", 206, "bytes 8-9/10", "89"},
           {"Range: bytes=-4", 206, "bytes 6-9/10", "6789"},
           {"Range: bytes=-11", 206, "bytes 0-9/10", "0123456789"},
           {"Range: bytes=0-3\r\nIf-Range: \"film\"", 206, "bytes 0-3/10", "0123"},
           // RFC 9110, 14.2: what cannot be satisfied is told, what is not understood is ignored.
           {"Range: bytes=10-", 416, "bytes */10", nullptr},
           {"Range: bytes=18446744073709551616-", 416, "bytes */10", nullptr},
           {"Range: bytes=-0", 416, "bytes */10", nullptr},
           {"Range: bytes=3-2", 200, "", "0123456789"},
           {"Range: bytes=-", 200, "", "0123456789"},
           {"Range: bytes=+1-2", 200, "", "0123456789"},
           {"Range: bytes=0-1,3-4", 200, "", "0123456789"},
           {"Range: lines=0-3", 200, "", "0123456789"},
           {"Range: bytes=0-3\r\nIf-Range: \"film-2\"", 200, "", "0123456789"},
           {"Range: bytes=0-3\r\nIf-Range: W/\"film\"", 200, "", "0123456789"},
           {"Range: bytes=0-3\r\nIf-None-Match: \"film\"", 304, "", ""},
       }) {
    Answer answer = client.get("/assets/film", headers + std::string(*headers == '\0' ? "" : "\r\n"));
    EXPECT_EQ(status, answer.status) << headers;
    EXPECT_EQ(contentRange, answer.headers["Content-Range"]) << headers;
    EXPECT_EQ(status < 300 ? "bytes" : "", answer.headers["Accept-Ranges"]) << headers;
    if (body != nullptr) {
      EXPECT_EQ(body, answer.body) << headers;
    }
  }
  client.send("HEAD /assets/film HTTP/1.1\r\nHost: localhost\r\nRange: bytes=0-3\r\n\r\n");
  const Answer head = client.answer(false);
  EXPECT_EQ(200, head.status);
  EXPECT_EQ("10", head.headers.at("Content-Length"));
  serve("");
  EXPECT_EQ(200, client.get("/assets/film", "Range: bytes=-5\r\n").status);
  EXPECT_EQ(416, client.get("/assets/film", "Range: bytes=0-\r\n").status);
}

TEST_F(AssetTest, LooksThroughNoBytes) {
  auto broadcast = std::make_shared<Broadcast>(loop, show, options);
  Routes routes(show, *broadcast, options);
  const std::string film(100'000, '.');
  show.assets["a"] = {std::make_shared<const std::string>(film), "video/mp4"};
  show.assets["b"] = {std::make_shared<const std::string>(film), "video/mp4"};
  Request request;
  request.method = "GET";
  request.host = "localhost";
  request.range = "bytes=0-0";
  request.path = "/assets/a";
  const Response first = routes.answer(request);
  request.path = "/assets/b";
  EXPECT_EQ(show.assets["b"].bytes, routes.answer(request).body)
      << "only who looks knows that they are equal";
}

TEST_F(AssetTest, SendsLargeOnesUncopiedAndNobodyWaits) {
  constexpr std::size_t size = 64 * 1024 * 1024;
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; i += 4096) bytes[i] = static_cast<char>(i / 4096 % 251);
  serve(bytes);
  Client screen = open("/screen/events");
  screen.event();
  std::vector<Client> films;
  for (int i = 0; i < 100; ++i) {
    films.push_back(connect(4096));
    films.back().send("GET /assets/film HTTP/1.1\r\nHost: localhost\r\n\r\n");
  }
  ASSERT_TRUE(until([&] { return takers() == 100; }));

  server().slideChanged();
  EXPECT_EQ("picture", screen.event().name);
  Client late = connect();
  const Answer end = late.get("/assets/film", "Range: bytes=" + std::to_string(size - 4096) + "-\r\n");
  EXPECT_EQ(bytes.substr(size - 4096), end.body);
  EXPECT_TRUE(late.get("/assets/film").body == bytes);

  films.clear();
  EXPECT_TRUE(until([&] { return takers() == 0; }));  // neither by a closed connection nor an answered one
}

}  // namespace
}  // namespace web::test
