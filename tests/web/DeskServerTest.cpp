// A desk's server: who is let in, what a request may hold, and how windows hear of changes.
#include "web/desk/DeskServer.h"

#include <gmock/gmock.h>

#include <boost/asio/io_context.hpp>

#include "web/Client.h"
#include "web/desk/DeskWindows.h"

namespace web::test {
namespace {

using json::Json;
using testing::ElementsAre;
using testing::HasSubstr;

class FakeDesk final : public Desk {
 public:
  void opened(const std::string& window) override { calls.push_back("opened " + window); }
  void forget(const std::string& window) override { calls.push_back("forgot " + window); }
  Json state(const std::string& window) override { return {{"window", window}, {"text", text}}; }
  void repeat(const std::string&) override {}
  Json act(const std::string& window, std::string_view path, const Json& body) override {
    calls.push_back(window + " " + std::string(path) + " " + json::textOf(body));
    if (path == "refused") throw Refusal(409, "It cannot be done now.");
    if (path == "failed") throw basic::Error(basic::AdapterError, "deck", "The deck says no.");
    if (path == "broken") throw std::runtime_error("internals");
    if (path == "number") return {{"number", body.at("number").get<int>()}};
    return nullptr;
  }
  Json look(std::string_view path, std::string_view query) override {
    return {{"path", path}, {"query", query}};
  }
  [[nodiscard]] std::string assets() const override { return "assets/0123456789abcdef/"; }
  std::optional<Asset> asset(std::string_view name) override {
    if (name != "a.png") return std::nullopt;
    return Asset{std::make_shared<const std::string>("bytes"), "image/png"};
  }
  std::optional<Asset> help(std::string_view name) override {
    calls.push_back("help " + std::string(name));
    return Asset{std::make_shared<const std::string>("<p>help</p>"), "text/html; charset=utf-8"};
  }
  Download deck() override { return {"Übersicht \"1\".pptx", std::make_shared<const std::string>("PK")}; }
  Download copy(std::string_view name) override {
    if (name != "1") throw Refusal(404, "No such copy.");
    return {"copy.pptx", std::make_shared<const std::string>("PK copy")};
  }
  void takeDeck(std::string bytes) override { calls.push_back("deck of " + std::to_string(bytes.size())); }

  std::string text = "first";
  std::vector<std::string> calls;
};

class DeskServerTest : public testing::Test {
 protected:
  DeskServerTest() {
    options.port = 0;
    options.token = "s3cret";
    options.onError = [this](const basic::Error& error) { errors.push_back(error.description); };
    server = std::make_unique<DeskServer>(loop, desk, options);
  }
  Client connect() { return {loop, server->port(), 0}; }
  Answer ask(const std::string& method, const std::string& path, const std::string& body = {},
             const std::string& token = "s3cret") {
    Client client = connect();
    client.send(method + " " + path + " HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer " + token +
                "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    return client.answer();
  }
  Answer post(const std::string& path, const std::string& body = {}) {
    return ask("POST", "/api/v1/desk/windows/" + window + "/" + path, body);
  }

  boost::asio::io_context loop;
  FakeDesk desk;
  Options options;
  std::vector<std::string> errors;
  std::unique_ptr<DeskServer> server;
  const std::string window = "abcdefghijklmnop";
};

TEST_F(DeskServerTest, TakesTheTokenForEverythingOfTheDeck) {
  const std::string api = "/api/v1/desk/";
  for (const char* path : {"roots", "deck", "copies/1", "windows/abcdefghijklmnop/events", "no/where"}) {
    EXPECT_EQ(401, ask("GET", api + path, {}, "s3creT").status) << path;
    EXPECT_EQ(401, ask("POST", api + path, {}, "").status) << path;
  }
  EXPECT_THAT(desk.calls, ElementsAre());
  Client client = connect();
  EXPECT_EQ(200, client.get("/assets/0123456789abcdef/a.png").status);
  EXPECT_EQ(404, client.get("/assets/0123456789abcdee/a.png").status);
  EXPECT_EQ(404, client.get("/assets/a.png").status);
  EXPECT_EQ(200, client.get("/help/index.html").status);
  for (const char* path : {"/help/../x", "/help/..", "/help/a/b.html", "/help/%2e%2e", "/help/"}) {
    EXPECT_EQ(404, client.get(path).status) << path;
  }
  EXPECT_THAT(desk.calls, ElementsAre("help index.html"));
  EXPECT_THAT(ask("GET", api + "data/001?from=3").body, HasSubstr(R"("query":"from=3")"));
}

TEST_F(DeskServerTest, AnswersWhatADeskDoesAndWhyItDoesNot) {
  EXPECT_EQ(R"({"ok":true})", post("selection", R"({"slide": 256})").body);
  EXPECT_EQ(R"({"ok":true})", post("commands/save").body);
  EXPECT_THAT(desk.calls, ElementsAre(window + R"( selection {"slide":256})", window + " commands/save {}"));
  const std::pair<std::string, std::string> cases[] = {
      {"refused", "{}"},
      {"failed", "{}"},
      {"broken", "{}"},
      {"number", "{}"},
      {"number", "[1]"},
      {"number", "{\"number\""},
      {"number", "{\"number\": \"one\"}"},
      {"number", R"({"values":)" + std::string(200'000, '[') + std::string(200'000, ']') + "}"}};
  std::vector<int> statuses;
  for (const auto& [path, body] : cases) statuses.push_back(post(path, body).status);
  EXPECT_THAT(statuses, ElementsAre(409, 409, 500, 400, 400, 400, 400, 400));
  EXPECT_THAT(errors, ElementsAre("internals"));
  EXPECT_EQ(404, ask("POST", "/api/v1/desk/windows/short/selection").status);
  EXPECT_EQ(404, ask("POST", "/api/v1/desk/windows/abcdefghijklmn.p/selection").status);
  EXPECT_EQ(405, ask("GET", "/api/v1/desk/windows/" + window + "/selection").status);
}

TEST_F(DeskServerTest, TakesLongBodiesOfThoseWhoHoldTheTokenAlone) {
  const std::string long1 = "{\"text\":\"" + std::string(900'000, 'x') + "\"}";
  EXPECT_EQ(200, post("selection", long1).status);
  EXPECT_EQ(413, ask("POST", "/api/v1/desk/windows/" + window + "/selection", long1, "wrong").status);
  EXPECT_EQ(413, post("selection", std::string(1'100'000, ' ')).status);
  desk.calls.clear();
  EXPECT_EQ(200, ask("POST", "/api/v1/desk/deck", std::string(3'000'000, 'x')).status);
  EXPECT_THAT(desk.calls, ElementsAre("deck of 3000000"));
  const Answer download = ask("GET", "/api/v1/desk/deck");
  EXPECT_EQ("PK", download.body);
  EXPECT_EQ("attachment; filename=\"__bersicht _1_.pptx\"; filename*=UTF-8''%C3%9Cbersicht%20%221%22.pptx",
            download.headers.at("Content-Disposition"));
  EXPECT_EQ("PK copy", ask("GET", "/api/v1/desk/copies/1").body);
  EXPECT_EQ(404, ask("GET", "/api/v1/desk/copies/2").status);
}

TEST_F(DeskServerTest, TellsAWindowWhatIsItsOwnAndAllOfItWhenItComesBack) {
  const std::string authorization = "Authorization: Bearer s3cret\r\n";
  const std::string path = "/api/v1/desk/windows/" + window + "/events";
  Client client = connect();
  client.open(path, authorization);
  EXPECT_THAT(client.event().data, HasSubstr(R"("text":"first")"));
  EXPECT_TRUE(server->isOpen(window));
  server->send("ponmlkjihgfedcba", "say", {{"text", "to another one"}});
  server->send(window, "say", {{"text", "to this one"}});
  const Event said = client.event();
  EXPECT_EQ(R"({"text":"to this one"})", said.data);
  client.close();
  ASSERT_TRUE(runUntil(loop, [&] { return !server->isOpen(window); }));
  // Nobody was told meanwhile.
  desk.text = "second";
  Client again = connect();
  again.open(path, authorization);
  const Event state = again.event();
  EXPECT_THAT(state.data, HasSubstr(R"("text":"second")"));
  EXPECT_GT(state.id, said.id);
}

TEST_F(DeskServerTest, ForgetsAWindowThatHasBeenAwayForTenMinutes) {
  const std::string authorization = "Authorization: Bearer s3cret\r\n";
  const std::string stays = "ponmlkjihgfedcba";
  std::chrono::steady_clock::time_point now;
  int looks = 0;
  options.heartbeat = std::chrono::milliseconds(5);
  server = std::make_unique<DeskServer>(loop, desk, options, [&] {
    ++looks;
    return now;
  });
  Client client = connect();
  client.open("/api/v1/desk/windows/" + window + "/events", authorization);
  Client other = connect();
  other.open("/api/v1/desk/windows/" + stays + "/events", authorization);
  static_cast<void>(client.event());
  client.close();
  ASSERT_TRUE(runUntil(loop, [&] { return !server->isOpen(window); }));
  // At each beat the clock is looked at once.
  const auto passBeats = [&] {
    const int some = looks + 3;
    ASSERT_TRUE(runUntil(loop, [&] { return looks >= some; }));
  };
  now += DeskWindows::KeptFor;
  passBeats();
  EXPECT_THAT(desk.calls, ElementsAre("opened " + window, "opened " + stays));
  now += std::chrono::seconds(1);
  passBeats();
  EXPECT_THAT(desk.calls, ElementsAre("opened " + window, "opened " + stays, "forgot " + window));

  Client again = connect();
  again.open("/api/v1/desk/windows/" + window + "/events", authorization);
  static_cast<void>(again.event());
  now += 2 * DeskWindows::KeptFor;
  passBeats();
  EXPECT_EQ("opened " + window, desk.calls.back()) << "who is there is not away, whatever the clock says";
}

TEST_F(DeskServerTest, ServesSoManyWindowsAndNoMore) {
  const std::string authorization = "Authorization: Bearer s3cret\r\n";
  std::vector<Client> clients;
  for (std::size_t i = 0; i < DeskWindows::MostStreams; ++i) {
    clients.push_back(connect());
    clients.back().open("/api/v1/desk/windows/abcdefghijklmn" + std::to_string(10 + i) + "/events",
                        authorization);
    clients.back().event();
  }
  EXPECT_EQ(503, ask("GET", "/api/v1/desk/windows/abcdefghijklmn99/events").status);
}

}  // namespace
}  // namespace web::test
