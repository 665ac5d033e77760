// What the server answers, at every address and to every kind of client.
#include "web/show/Server.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <regex>

#include "web/ServerFixture.h"
#include "web/show/Broadcast.h"
#include "web/show/ClientFiles.h"
#include "web/show/Routes.h"

namespace web::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Json = nlohmann::json;

using ServerTest = ServerFixture;

TEST_F(ServerTest, ServesThePageWithThePresentSlideInIt) {
  show.shown.title = "A <b> & \"c\" {{version}}";
  show.shown.current->html += "{{title}}";
  show.shown.stylesheet = "styles-1";
  show.shown.kiosk = true;
  show.shown.blank = Blank::White;
  show.shown.width = 720.5;
  Client client = connect();
  const Answer page = client.get("/?from=bookmark");
  EXPECT_EQ(200, page.status);
  EXPECT_THAT(page.body, HasSubstr("<title>A &lt;b&gt; &amp; &quot;c&quot; {{version}}</title>"));
  EXPECT_THAT(page.body, HasSubstr("<div class=\"frame current\">" + show.shown.current->html + "</div>"));
  EXPECT_THAT(page.body, HasSubstr("<div class=\"frame\" inert>" + show.shown.next->html + "</div>"));
  EXPECT_THAT(page.body, HasSubstr("href=\"/assets/styles-1\""));
  EXPECT_THAT(page.body, HasSubstr("data-blank=\"white\" data-kiosk>"));
  EXPECT_THAT(page.body, HasSubstr("--slide-width: 720.5px; --slide-height: 540px"));
  EXPECT_EQ("no-store", page.headers.at("Cache-Control"));
  EXPECT_THAT(page.headers.at("Content-Security-Policy"),
              HasSubstr("default-src 'none'; script-src 'self';"));
  EXPECT_THAT(page.headers.at("Content-Security-Policy"), HasSubstr("; require-trusted-types-for 'script'"));
  EXPECT_THAT(page.headers.at("Content-Security-Policy"), Not(HasSubstr("eval")));

  client.send("HEAD / HTTP/1.1\r\nHost: localhost\r\n\r\n");
  const Answer head = client.answer(false);
  EXPECT_EQ(std::to_string(client.get("/").body.size()), head.headers.at("Content-Length"));
}

TEST_F(ServerTest, TellsBrowsersToKeepEveryAnswerFromOtherSites) {
  show.assets["pic"] = {std::make_shared<const std::string>("x"), "image/png"};
  for (const char* request :
       {"GET / HTTP/1.1\r\nHost: localhost\r\n\r\n", "GET /assets/pic HTTP/1.1\r\nHost: localhost\r\n\r\n",
        "GET /api/v1/state HTTP/1.1\r\nHost: localhost\r\n\r\n",
        "GET /nowhere HTTP/1.1\r\nHost: evil\r\n\r\n",
        "GET /screen/events HTTP/1.1\r\nHost: localhost\r\n\r\n", "nonsense\r\n\r\n"}) {
    Client client = connect();
    client.send(request);
    const Answer answer = client.answer();
    EXPECT_EQ("nosniff", answer.headers.at("X-Content-Type-Options")) << request;
    EXPECT_EQ("no-referrer", answer.headers.at("Referrer-Policy")) << request;
    EXPECT_EQ("same-origin", answer.headers.at("Cross-Origin-Opener-Policy")) << request;
    EXPECT_EQ("same-origin", answer.headers.at("Cross-Origin-Resource-Policy")) << request;
  }
}

TEST_F(ServerTest, ServesEveryFileThatThePageAndItsScriptsName) {
  Client client = connect();
  std::vector<std::string> open = {"/", "/remote"};
  std::size_t scripts = 0;
  for (std::size_t i = 0; i < open.size(); ++i) {
    const Answer file = client.get(open[i]);
    ASSERT_EQ(200, file.status) << open[i];
    EXPECT_EQ(i > 1, file.headers.at("Cache-Control").ends_with("immutable")) << open[i];
    if (file.headers.at("Content-Type").starts_with("text/javascript")) ++scripts;
    const std::regex name(R"re((?:src=|href=|from |import\()"(/client/[^"]*|\.[^"]*)")re");
    for (std::sregex_iterator found(file.body.begin(), file.body.end(), name), none; found != none; ++found) {
      const auto folder = std::filesystem::path(open[i]).parent_path();
      const std::string path = (folder / found->str(1)).lexically_normal().string();
      if (std::find(open.begin(), open.end(), path) == open.end()) open.push_back(path);
    }
  }
  EXPECT_GE(scripts, 5U);
  EXPECT_EQ(404, client.get("/client/0123456789ab/screen/screen.js").status);
  EXPECT_EQ(404, client.get("/client/" + std::string(clientVersion()) + "/screen/screen.html").status);
}

const std::string host = "Host: localhost\r\n";
const std::string token = "Authorization: Bearer s3cret\r\n";

/// A request of this server, with what follows its Host line.
std::string asked(const std::string& line, const std::string& rest = {}) {
  return line + " HTTP/1.1\r\n" + host + rest + "\r\n";
}

TEST_F(ServerTest, AnswersBadRequestsWithAnErrorInJson) {
  const std::string chunked = "Transfer-Encoding: chunked\r\n";
  const std::pair<int, std::string> cases[] = {
      {400, "\x16\x03\x01\x02garbage\r\n\r\n"},
      {400, "GET /\r\n\r\n"},
      {400, "GET / HTTP/1.1\r\n\r\n"},
      {400, asked("GET /", host)},
      {400, asked("POST /", "Content-Length: -1\r\n")},
      {400, asked("POST /", "Content-Length: 1\r\nContent-Length: 2\r\n") + "ab"},
      {400, asked("POST /", "Transfer-Encoding: gzip\r\n") + "GET /api/v1/state HTTP/1.1\r\n"},
      {400, asked("POST /", "Transfer-Encoding: gzip, chunked\r\n") + "0\r\n\r\n"},
      {400, asked("POST /", "Transfer-Encoding: chunked, chunked\r\n") + "0\r\n\r\n"},
      {400, asked("POST /", chunked + "Transfer-Encoding: identity\r\n") + "0\r\n\r\n"},
      {400, asked("POST /", "Content-Length: 5\r\n" + chunked) + "0\r\n\r\n"},
      {400, "POST / HTTP/1.0\r\n" + host + chunked + "\r\n0\r\n\r\n"},
      {417, asked("GET /", "Expect: 200-ok\r\n")},
      {413, asked("POST /", "Expect: 100-continue\r\nContent-Length: 1000000\r\n")},
      {403, asked("GET http://evil.example/")},
      {431, asked("GET /", "X: " + std::string(20000, 'x') + "\r\n")},
      {431, asked("GET /" + std::string(20000, 'x'))},
      {413, asked("POST /", "Content-Length: 1000000\r\n")},
      {403, "GET / HTTP/1.1\r\nHost: evil.example\r\n\r\n"},
      {403, asked("POST /api/v1/next", token + "Origin: http://evil.example\r\n")},
      {403, asked("GET /screen/events", "Origin: null\r\n")},
      {401, asked("POST /api/v1/next")},
      {404, asked("GET /api/v1/nothing")},
      {404, asked("GET /assets/../../etc/passwd")},
      {405, asked("GET /api/v1/next", token)},
      {405, asked("POST /api/v1/state", token)},
      {405, asked("POST /screen/events")},
      {505, "GET /screen/events HTTP/1.0\r\n" + host + "\r\n"},
      {400, asked("POST /api/v1/goto/", token)},
      {400, asked("POST /api/v1/goto/0", token)},
      {400, asked("POST /api/v1/goto/3x", token)},
      {400, asked("POST /api/v1/goto/99999999999", token)},
  };
  for (const auto& [status, bytes] : cases) {
    Client client = connect();
    client.send(bytes);
    const Answer answer = client.answer();
    EXPECT_EQ(status, answer.status) << bytes.substr(0, 200) << answer.body;
    EXPECT_FALSE(Json::parse(answer.body)["error"].get<std::string>().empty()) << bytes.substr(0, 200);
  }
  EXPECT_THAT(show.commands, ElementsAre());
  EXPECT_EQ(200, connect().get("/healthz").status);
}

TEST_F(ServerTest, TakesBodiesInChunksAndAfterAContinue) {
  Client client = connect();
  client.send(asked("POST /api/v1/next", token + "Transfer-Encoding: Chunked\r\n") + "2\r\n{}\r\n0\r\n\r\n");
  EXPECT_EQ(200, client.answer().status);
  client.send(asked("POST /api/v1/last", token + "Expect: 100-Continue\r\nContent-Length: 2\r\n"));
  EXPECT_EQ(100, client.answer().status);
  EXPECT_THAT(show.commands, ElementsAre("next"));
  client.send("{}");
  EXPECT_EQ(200, client.answer().status);
  EXPECT_THAT(show.commands, ElementsAre("next", "last"));
  // Nothing to wait for: the body is there already, or there is none.
  client.send(asked("POST /api/v1/first", token + "Expect: 100-continue\r\n"));
  EXPECT_EQ(200, client.answer().status);
}

TEST_F(ServerTest, HearsAClientOutBeforeItHangsUp) {
  Client client = connect();
  client.send(asked("POST /", "Content-Length: 300000\r\n") + std::string(300000, 'x'));
  EXPECT_EQ(413, client.answer().status);
  EXPECT_EQ("", client.receiveAll());
  client.send("more");
  EXPECT_FALSE(client.wasCut());  // or some systems would have thrown the answer away
}

TEST_F(ServerTest, KeepsAConnectionThroughGoodAndBadRequestsSentAtOnce) {
  Client client = connect();
  // The last one names the host in its address, which counts.
  client.send(asked("GET /healthz") + asked("GET /nowhere") +
              "GET HTTP://localhost/api/v1/state HTTP/1.1\r\nHost: elsewhere.example\r\n\r\n");
  EXPECT_EQ(R"({"status":"ok"})", client.answer().body);
  EXPECT_EQ(404, client.answer().status);
  EXPECT_EQ(show.stateText, client.answer().body);
}

TEST_F(ServerTest, ServesAssetsForCachesToKeep) {
  show.assets["pic-1"] = {std::make_shared<const std::string>("\x89PNG\0\r\n", 7), "image/png"};
  show.assets["odd"] = {std::make_shared<const std::string>("x"), "text/html\r\nSet-Cookie: a=b"};
  Client client = connect();
  const Answer picture = client.get("/assets/pic-1");
  EXPECT_EQ(*show.assets["pic-1"].bytes, picture.body);
  EXPECT_EQ("image/png", picture.headers.at("Content-Type"));
  EXPECT_THAT(picture.headers.at("Cache-Control"), HasSubstr("immutable"));
  EXPECT_THAT(picture.headers.at("Content-Security-Policy"), HasSubstr("sandbox"));
  const std::string tag = picture.headers.at("ETag");
  EXPECT_EQ(304, client.get("/assets/pic-1", "If-None-Match: \"other\", W/" + tag + "\r\n").status);
  EXPECT_EQ(200, client.get("/assets/pic-1", "If-None-Match: \"pic\"\r\n").status);
  EXPECT_EQ(404, client.get("/assets/pic-2").status);
  EXPECT_EQ(0U, client.get("/assets/odd").headers.count("Set-Cookie"));
}

TEST_F(ServerTest, OutlivesAShowThatFails) {
  show.broken = true;
  Client client = connect();
  const Answer answer = client.get("/");
  EXPECT_EQ(500, answer.status);
  EXPECT_THAT(answer.body, Not(HasSubstr("the deck is gone")));
  EXPECT_EQ("", open("/screen/events").receiveAll());
  EXPECT_THAT(errors, ElementsAre("the deck is gone", "the deck is gone"));
  EXPECT_EQ(200, client.get("/healthz").status);
}

TEST_F(ServerTest, SaysWhichPortIsInUseAndWhatToDo) {
  options.port = server().port();
  try {
    Server second(loop, show, options);
    FAIL() << "took a port in use";
  } catch (const basic::Error& error) {
    EXPECT_THAT(error.description, HasSubstr("Port " + std::to_string(options.port)));
    EXPECT_THAT(error.description, HasSubstr("--port"));
  }
  options.address = "lobby";
  EXPECT_THROW(Server(loop, show, options), basic::Error);
}

TEST_F(ServerTest, TakesOnlySoManyConnectionsButHearsTheOperatorAndTheWatchdog) {
  options.maxConnections = 1;
  options.maxGuests = 2;
  options.guestTimeout = std::chrono::hours(1);
  show.condition.isReady = true;
  Client only = open("/screen/events");
  only.event();
  const Answer refused = connect().get("/");
  EXPECT_EQ(503, refused.status);
  EXPECT_TRUE(Json::parse(refused.body).contains("error"));
  EXPECT_EQ("15", refused.headers.at("Retry-After"));
  std::vector<Client> silent;
  for (int i = 0; i < 5; ++i) {
    silent.push_back(connect());
    loop.poll();
  }
  EXPECT_EQ("", silent[0].receiveAll()) << "the first guest makes room";
  EXPECT_EQ(503, connect().post("/api/v1/next", "Bearer guess").status);
  EXPECT_EQ(503, open("/screen/events").answer().status);
  for (const char* path :
       {"/healthz", "http://localhost/healthz", "/readyz?probe", "/status", "/api/v1/status"}) {
    Client watchdog = connect();
    EXPECT_EQ(200, watchdog.get(path).status) << path;
    EXPECT_EQ("", watchdog.receiveAll()) << "one request a guest";
  }
  EXPECT_EQ(200, connect().post("/api/v1/next", "Bearer s3cret").status);
  EXPECT_THAT(show.commands, ElementsAre("next"));
  only.close();
  EXPECT_TRUE(until([&] { return connect().get("/").status == 200; }));
}

TEST_F(ServerTest, LetsTheRemoteControlInWhenItIsFull) {
  options.maxConnections = 1;
  options.keptSeats = 1;
  show.assets["pic"] = {std::make_shared<const std::string>("x"), "image/png"};
  Client only = open("/screen/events");
  only.event();
  EXPECT_EQ(200, connect().get("/remote").status);
  EXPECT_EQ(200, connect().get("/client/" + std::string(clientVersion()) + "/remote/remote.js").status);
  EXPECT_EQ(503, connect().post("/api/v1/pass", "Bearer guess").status);
  std::string pass = connect().post("/api/v1/pass", "Bearer s3cret").headers.at("Set-Cookie");
  EXPECT_THAT(pass, HasSubstr("; HttpOnly; SameSite=Strict"));
  pass = "Cookie: theme=dark; " + pass.substr(0, pass.find(';')) + "\r\n";

  EXPECT_EQ(503, connect().get("/assets/pic").status);
  EXPECT_EQ(200, connect().get("/assets/pic", pass).status);
  Client remote = connect();
  remote.open("/remote/events", pass);
  EXPECT_EQ("picture", remote.event().name);
  EXPECT_TRUE(Json::parse(remote.hello())["screen"].is_null());
  EXPECT_EQ(1U, server().screens()) << "a remote control is none";
  server().slideChanged();
  EXPECT_EQ("picture", remote.event().name);
  EXPECT_EQ(503, connect().get("/remote/events", pass).status) << "one seat was kept";
  remote.close();
  EXPECT_TRUE(until([&] { return connect().get("/remote/events", pass).status == 200; }));
  EXPECT_EQ(401, connect().post("/api/v1/next", "", pass).status) << "a pass steers nothing";
}

TEST_F(ServerTest, SharesOnePageAmongAllWhoReadIt) {
  show.shown.current->html = std::string(100'000, '.');
  auto broadcast = std::make_shared<Broadcast>(loop, show, options);
  Routes routes(show, *broadcast, options);
  Request request;
  request.method = "GET";
  request.path = "/";
  request.host = "localhost";
  const auto first = routes.answer(request).body;
  EXPECT_EQ(first, routes.answer(request).body);
  request.path = "/remote";
  EXPECT_NE(first, routes.answer(request).body);
  request.path = "/";
  show.shown.current->html.back() = '!';
  const auto second = routes.answer(request).body;
  EXPECT_NE(*first, *second);
  EXPECT_EQ(second, routes.answer(request).body);
  const std::string file = "/client/" + std::string(clientVersion()) + "/core/slides.js";
  request.path = file;
  const auto script = routes.answer(request).body;
  EXPECT_EQ(script, routes.answer(request).body);
}

TEST_F(ServerTest, HangsUpOnConnectionsThatSayNothing) {
  options.requestTimeout = std::chrono::milliseconds(20);
  Client silent = connect();
  EXPECT_EQ("", silent.receiveAll());
  Client slow = connect();
  slow.send("GET / HTTP/1.1\r\nHo");
  EXPECT_EQ("", slow.receiveAll());
}

TEST_F(ServerTest, HangsUpOnConnectionsThatAskNoMore) {
  options.idleTimeout = std::chrono::milliseconds(20);
  Client idle = connect();
  EXPECT_EQ(200, idle.get("/healthz").status);
  EXPECT_EQ("", idle.receiveAll());
}

TEST_F(ServerTest, AnswersTheCommandThatStopsIt) {
  options.stopTimeout = std::chrono::hours(1);
  show.onEnd = [&] { server().stop(); };
  Client idle = connect();
  EXPECT_EQ(200, idle.get("/healthz").status);
  Client client = connect();
  const Answer answer = client.post("/api/v1/end", "Bearer s3cret");
  EXPECT_EQ(200, answer.status);
  EXPECT_EQ("close", answer.headers.at("Connection"));
  EXPECT_EQ("", idle.receiveAll());
  client.close();
  EXPECT_TRUE(until([&] { return loop.stopped(); }));  // as nothing is left to do
}

}  // namespace
}  // namespace web::test
