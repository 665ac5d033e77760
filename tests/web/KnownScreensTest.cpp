// Looking takes a token: who is let in, what it is called, and how it is cut off.

#include <gmock/gmock.h>

#include <map>
#include <nlohmann/json.hpp>

#include "web/ServerFixture.h"
#include "web/http/Cookie.h"
#include "web/http/KnownScreens.h"
#include "web/show/Status.h"

namespace web::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Json = nlohmann::json;

/// Their keys are their tokens backwards.
class FakeScreens : public KnownScreens {
 public:
  /// Names by token.
  std::map<std::string, std::string> known = {{"t-one", "HALL1"}, {"t-two", "HALL \"2\""}};

  static std::string keyOf(std::string_view token) { return {token.rbegin(), token.rend()}; }
  [[nodiscard]] std::optional<KnownScreen> withToken(std::string_view token) const override {
    const auto found = known.find(std::string(token));
    if (found == known.end()) return std::nullopt;
    return KnownScreen{found->second, keyOf(token)};
  }
  [[nodiscard]] std::optional<std::string> nameOf(std::string_view key) const override {
    const auto screen = withToken(keyOf(key));
    return screen ? std::optional(screen->name) : std::nullopt;
  }
  [[nodiscard]] std::vector<std::string> names() const override {
    std::vector<std::string> names;
    for (const auto& [token, name] : known) names.push_back(name);
    return names;
  }
};

class KnownScreensTest : public ServerFixture {
 protected:
  KnownScreensTest() {
    options.screens = &screens;
    options.now = [this] { return now; };
    show.assets["pic"] = {std::make_shared<const std::string>("x"), "image/png"};
  }
  Answer enter(const std::string& token, const std::string& moreHeaders = {}) {
    Client client = connect();
    const std::string body = Json({{"token", token}}).dump();
    client.send("POST /screen/enter HTTP/1.1\r\nHost: localhost\r\n" + moreHeaders +
                "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    return client.answer();
  }
  Client stream(std::string_view path, const std::string& token) {
    Client client = connect();
    client.open(path, "Cookie: a=b; lumenfold_screen=" + token + "\r\n");
    client.event();
    return client;
  }
  /// "NAME state" of each screen, as the status page has them.
  std::vector<std::string> told() {
    std::vector<std::string> told;
    const Json status = jsonAt("/api/v1/status");
    for (const Json& screen : status["screens"]) {
      told.push_back(screen.value("name", "?") + " " + screen["level"].get<std::string>() + " " +
                     screen["state"].get<std::string>());
    }
    return told;
  }

  FakeScreens screens;
  std::chrono::steady_clock::time_point now = std::chrono::steady_clock::now();
};

TEST(CookieTest, IsFoundByItsWholeName) {
  EXPECT_EQ("1", cookieNamed("a=1", "a"));
  EXPECT_EQ("2", cookieNamed("xa=1;  a=2; a=3", "a"));
  EXPECT_EQ("=", cookieNamed("b=;a==", "a"));
  for (const char* none : {"", "a", "ab=1", "b=a=1", ";;", "a ;b=1"})
    EXPECT_EQ("", cookieNamed(none, "a")) << none;
}

TEST_F(KnownScreensTest, NothingOfTheShowIsSeenWithoutAToken) {
  Client client = connect();
  for (const char* path : {"/slides/1", "/assets/pic", "/screen/events", "/remote/events", "/api/v1/events",
                           "/api/v1/state", "/screen/state/show", "/screen/time", "/nowhere"}) {
    for (const char* header : {"", "Cookie: lumenfold_screen=t-none\r\n", "Authorization: Bearer t-none\r\n",
                               "Cookie: xlumenfold_screen=t-one\r\n", "Cookie: lumenfold_screen=\r\n"}) {
      const Answer answer = client.get(path, header);
      EXPECT_EQ(401, answer.status) << path << " " << header;
      EXPECT_THAT(answer.body, HasSubstr("lumenfold screen add")) << path;
    }
  }
  for (const char* path : {"/", "/?slide=2", "/remote"}) {
    const Answer page = client.get(path);
    EXPECT_EQ(401, page.status) << path;
    EXPECT_THAT(page.body, HasSubstr("screen/enter.js")) << path;
    EXPECT_THAT(page.body, Not(HasSubstr("Board"))) << path;
  }
  EXPECT_EQ(401, client.post("/screen/painted", "").status);
  EXPECT_EQ(401, client.post("/api/v1/next", "").status);
  EXPECT_EQ(401, client.get("/screen/check").status);
  for (const char* path :
       {"/healthz", "/metrics", "/status", "/api/v1/status", "/api/v1/health", "/screen/enter"}) {
    EXPECT_EQ(200, client.get(path).status) << path;
  }
}

TEST_F(KnownScreensTest, AScreenIsSetUpOnceAndLooksFromThenOn) {
  options.hubs = {"http://hub.example.org"};
  EXPECT_EQ(401, enter("t-none").status);
  EXPECT_EQ(403, enter("t-one", "Origin: https://evil.example\r\n").status);
  const Answer entered = enter("t-one", "Origin: http://localhost\r\n");
  EXPECT_EQ(Json({{"ok", true}, {"screen", "HALL1"}, {"steers", false}, {"hubs", options.hubs}}),
            Json::parse(entered.body));
  EXPECT_FALSE(entered.headers.contains("Access-Control-Allow-Origin"));
  const Answer enteredFromHub = enter("t-one", "Origin: http://hub.example.org\r\n");
  EXPECT_EQ("http://hub.example.org", enteredFromHub.headers.at("Access-Control-Allow-Origin"));
  EXPECT_EQ("true", enteredFromHub.headers.at("Access-Control-Allow-Credentials"));
  EXPECT_EQ("lumenfold_screen=t-one; Path=/; Max-Age=31536000; HttpOnly; SameSite=Lax",
            entered.headers.at("Set-Cookie"));
  EXPECT_THAT(enter("t-one", "Origin: https://localhost\r\n").headers.at("Set-Cookie"),
              testing::EndsWith("; Secure"));
  Client client = connect();
  for (const char* header : {"Cookie: lumenfold_screen=t-one\r\n", "Authorization: Bearer t-two\r\n",
                             "Authorization: Bearer s3cret\r\n"}) {
    EXPECT_THAT(client.get("/", header).body, HasSubstr("data-known")) << header;
    EXPECT_EQ(200, client.get("/assets/pic", header).status) << header;
    const Answer checked = client.get("/screen/check", header);
    EXPECT_EQ(204, checked.status) << header;
    EXPECT_FALSE(checked.headers.contains("Content-Length"));
  }
  // A screen's token steers nothing, and the one for steering is no screen's.
  EXPECT_EQ(401, client.post("/api/v1/next", "Bearer t-one").status);
  const Answer steering = enter("s3cret");
  EXPECT_EQ(true, Json::parse(steering.body)["steers"]);
  EXPECT_THAT(steering.headers.at("Set-Cookie"), StartsWith("pass-"));
  EXPECT_THAT(steering.headers.at("Set-Cookie"), Not(HasSubstr("s3cret")));
  const std::string pass = steering.headers.at("Set-Cookie");
  EXPECT_EQ(200, client.get("/remote", "Cookie: " + pass.substr(0, pass.find(';')) + "\r\n").status);
  for (const char* body : {"", "[]", "{}", R"({"token":7})", "\xFF"}) {
    client.send("POST /screen/enter HTTP/1.1\r\nHost: localhost\r\nContent-Length: " +
                std::to_string(std::string_view(body).size()) + "\r\n\r\n" + body);
    EXPECT_EQ(401, client.answer().status) << body;
  }
}

TEST_F(KnownScreensTest, WhoIsRevokedIsCutAtOnceOnEveryStream) {
  Client one = stream("/screen/events", "t-one");
  Client pinned = stream("/screen/events?slide=2", "t-one");
  Client remote = stream("/remote/events", "t-one");
  Client program = stream("/api/v1/events", "t-one");
  Client two = stream("/screen/events", "t-two");
  Client operators = connect();
  operators.open("/api/v1/events", "Authorization: Bearer s3cret\r\n");
  operators.event();
  server().screensChanged();
  EXPECT_EQ(3U, server().screens()) << "nothing has changed";

  screens.known = {{"t-new", "HALL1"}, {"t-two", "HALL 3"}};
  server().screensChanged();
  for (Client* client : {&one, &pinned, &remote, &program}) {
    EXPECT_TRUE(until([client] { return !client->receive(); }));
  }
  EXPECT_EQ(1U, server().screens());
  EXPECT_EQ(1U, server().programs());
  const Json health = jsonAt("/api/v1/health");
  EXPECT_EQ("HALL 3", health["screens"][0]["name"]) << "one that is called otherwise goes on";
  EXPECT_EQ("HALL1", health["missing"][0]["name"]);
  EXPECT_EQ(401, connect().get("/screen/check", "Cookie: lumenfold_screen=t-one\r\n").status);
  server().slideChanged();
  EXPECT_EQ("picture", two.event().name);
  EXPECT_EQ("position", operators.event().name);
}

TEST_F(KnownScreensTest, ScreensAreToldByNameAlsoThoseThatAreNotThere) {
  Client one = stream("/screen/events", "t-one");
  EXPECT_THAT(told(), ElementsAre("HALL1 idle new", "HALL \"2\" idle missing"));
  now += 16s;
  EXPECT_THAT(told()[1], "HALL \"2\" warning missing");
  now += 45s;
  EXPECT_THAT(told()[1], "HALL \"2\" bad missing");
  const std::string metrics = connect().get("/metrics").body;
  EXPECT_THAT(metrics, HasSubstr("lumenfold_screen_present{screen=\"HALL1\"} 1\n"));
  EXPECT_THAT(metrics, HasSubstr("lumenfold_screen_present{screen=\"HALL \\\"2\\\"\"} 0\n"));

  // Missing is counted from when it was there last.
  Client two = stream("/screen/events", "t-two");
  now += 100s;
  two.close();
  EXPECT_TRUE(until([&] { return server().screens() == 1; }));
  EXPECT_EQ("HALL \"2\" idle missing", told()[1]);
  now += 16s;
  EXPECT_EQ("HALL \"2\" warning missing", told()[1]);
  screens.known.erase("t-two");
  server().screensChanged();
  EXPECT_EQ(1U, told().size());
}

}  // namespace
}  // namespace web::test
