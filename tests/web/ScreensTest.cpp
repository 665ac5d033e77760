// Screens that look at something of their own, and what the server knows of all.

#include <gmock/gmock.h>

#include <cstdint>
#include <nlohmann/json.hpp>

#include "web/ServerFixture.h"

namespace web::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Json = nlohmann::json;

class ScreensTest : public ServerFixture {
 protected:
  static ShapeChange change(int slide, const std::string& id, bool isMirrored) {
    return {slide, id, "<p id=\"" + id + "\">new</p>", "Gate", "new", isMirrored};
  }
  static std::string ids(const Event& event) {
    std::string all;
    for (const Json& shape : Json::parse(event.data)) all += shape["id"].get<std::string>() + " ";
    return all;
  }
  /// Posts a report and returns the status.
  int report(Client& client, const std::string& screen, const std::string& body) {
    return postPainted(client,
                       body.starts_with('{') ? "{\"screen\":\"" + screen + "\"," + body.substr(1) : body);
  }
  Json health() { return jsonAt("/api/v1/health"); }
};

TEST_F(ScreensTest, GivesEachViewItsOwnChangesAndBuildsThemOnce) {
  show.shown.slideCount = 7;
  std::vector<Client> pinned;
  for (int i = 0; i < 50; ++i) pinned.push_back(open("/screen/events?slide=5"));
  Client mirror = open("/screen/events");
  Client shape = open("/screen/events?shape=sh9&slide=5");
  mirror.event();
  EXPECT_TRUE(Json::parse(shape.event().data)["transparent"]);
  for (Client& screen : pinned) EXPECT_EQ(5, Json::parse(screen.event().data)["current"]["index"]);
  EXPECT_EQ(1, (show.statesAsked[{View::Kind::Slide, 5, {}}]));
  EXPECT_THAT(show.watched, ElementsAre(5));

  server().shapesChanged({change(1, "s1-sh2", true), change(5, "s5-sh2", false), change(5, "s5-sh9", false)});
  const Event mirrored = mirror.event();
  EXPECT_EQ("s1-sh2 ", ids(mirrored));
  EXPECT_EQ("s5-sh9 ", ids(shape.event()));
  std::uint64_t last = 0;
  for (Client& screen : pinned) {
    const Event shapes = screen.event();
    EXPECT_EQ("s5-sh2 s5-sh9 ", ids(shapes));
    last = *shapes.id;
  }

  // The show moves on: only who follows it hears of it. Blanking reaches all.
  server().slideChanged();
  EXPECT_EQ(*mirrored.id + 1, mirror.event().id);
  show.shown.blank = Blank::Black;
  server().stateChanged();
  const Event black = pinned.front().event();
  EXPECT_EQ("black", Json::parse(black.data)["blank"]);
  EXPECT_EQ(last + 1, black.id);
  EXPECT_EQ("black", Json::parse(mirror.event().data)["blank"]);

  pinned.clear();
  shape.close();
  EXPECT_TRUE(until([&] { return server().screens() == 1; }));
  const auto asked = show.statesAsked;
  server().stateChanged();
  mirror.event();
  for (const auto& [view, times] : show.statesAsked) {
    if (view.kind != View::Kind::Show) {
      EXPECT_EQ(asked.at(view), times) << "nobody looks at slide " << view.slide;
    }
  }
  Client other = open("/screen/events?slide=3");
  other.event();
  EXPECT_THAT(show.watched, ElementsAre(3));
}

TEST_F(ScreensTest, ShowsNothingAtAnAddressThatMakesNoSense) {
  Client client = connect();
  for (const char* query : {"?slide=99", "?slide=-1", "?slide=x", "?slide=", "?shape=none&slide=99"}) {
    const Answer page = client.get(std::string("/") + query);
    EXPECT_EQ(200, page.status) << query;
    EXPECT_THAT(page.body, Not(HasSubstr("class=\"frame"))) << query;
    Client screen = open(std::string("/screen/events") + query);
    EXPECT_TRUE(Json::parse(screen.event().data)["current"].is_null()) << query;
  }
  EXPECT_EQ(200, client.get("/slides/2").status);
  EXPECT_EQ(404, client.get("/slides/99").status);
  EXPECT_EQ(404, client.get("/slides/x").status);
}

TEST_F(ScreensTest, KnowsWhatEachScreenHasPaintedAndHowLate) {
  Client screen = open("/screen/events");
  const Event first = screen.event();
  const std::string name = Json::parse(screen.hello())["screen"];
  Client client = connect();
  EXPECT_TRUE(health()["screens"][0]["painted"].is_null());

  const auto changed = std::chrono::steady_clock::now();
  server().shapesChanged({change(1, "s1-sh2", true)}, changed);
  const auto newest = *screen.event().id;
  EXPECT_EQ(200, report(client, name, R"({"slide":1,"held":0,"sequence":)" + std::to_string(newest) + "}"));
  const Json known = health()["screens"][0];
  EXPECT_EQ("show", known["view"]["kind"]);
  EXPECT_EQ(newest, known["newest"]);
  EXPECT_EQ(newest, known["painted"]["sequence"]);
  EXPECT_EQ(1, known["painted"]["slide"]);
  EXPECT_GE(known["painted"]["delay"], 0);
  EXPECT_THAT(client.get("/metrics").body, HasSubstr("lumenfold_screen_paint_delay_seconds_count 1\n"));
  EXPECT_EQ(std::string::npos, client.get("/api/v1/health").body.find(name))
      << "the name is the screen's own";

  // A busy machine may be too slow to report too often.
  EXPECT_TRUE(until([&] { return report(client, name, R"({"slide":1,"held":0,"sequence":2})") == 429; }));
  EXPECT_EQ(404, report(client, "01234567", R"({"slide":1,"held":0,"sequence":2})"));
  for (const char* wrong :
       {"", "[]", "{}", R"({"slide":-1,"held":0,"sequence":2})", R"({"slide":1,"held":1e9,"sequence":2})",
        R"({"slide":1,"held":0)", R"({"slide":1,"held":0,"sequence":2,"view":"slide-02","run":"a"})"}) {
    EXPECT_EQ(400, report(client, name, wrong)) << wrong;
  }
  screen.close();
  EXPECT_TRUE(until([&] { return server().screens() == 0; }));
  EXPECT_TRUE(health()["screens"].empty());
}

TEST_F(ScreensTest, TellsHowConnectionsDoToPeopleAndPrometheus) {
  Client client = connect();
  EXPECT_EQ(503, client.get("/readyz").status);
  show.condition.isReady = true;
  show.condition.position = 2;
  ConnectionHealth good;
  good.number = "001";
  good.age = 0.5;
  ConnectionHealth bad;
  bad.number = "002";
  bad.lastError = "gone";
  good.lastSuccess = ConnectionHealth::Time(std::chrono::seconds(86400));
  bad.lastErrorTime = good.lastSuccess;
  bad.isStale = bad.isFailing = true;
  bad.failures = 3;
  show.condition.connections = {good, bad};
  show.condition.standing = {{3, 12.5, "no column"}};

  EXPECT_EQ(200, client.get("/readyz").status);
  const Json connections = health()["connections"];
  EXPECT_EQ("1970-01-02T00:00:00Z", connections[0]["lastSuccess"]);
  EXPECT_EQ(0.5, connections[0]["age"]);
  EXPECT_TRUE(connections[0]["lastError"].is_null());
  EXPECT_EQ("gone", connections[1]["lastError"]["text"]);
  EXPECT_TRUE(connections[1]["age"].is_null());
  EXPECT_TRUE(connections[1]["stale"]);
  EXPECT_FALSE(connections[0]["failing"]);
  EXPECT_TRUE(connections[1]["failing"]);
  EXPECT_EQ(Json({{"slide", 3}, {"age", 12.5}, {"error", "no column"}}), health()["standing"][0]);

  const Answer metrics = client.get("/metrics");
  EXPECT_EQ("text/plain; version=0.0.4; charset=utf-8", metrics.headers.at("Content-Type"));
  for (const char* line : {"lumenfold_ready 1\n", "lumenfold_slide 2\n", "lumenfold_standing_slides 1\n",
                           "lumenfold_connection_age_seconds{connection=\"001\"} 0.5\n",
                           "lumenfold_connection_stale{connection=\"002\"} 1\n",
                           "# TYPE lumenfold_connection_failures_total counter\n",
                           "lumenfold_connection_failures_total{connection=\"002\"} 3\n",
                           "lumenfold_screen_paint_delay_seconds_bucket{le=\"+Inf\"} 0\n"}) {
    EXPECT_THAT(metrics.body, HasSubstr(line));
  }
  EXPECT_THAT(metrics.body, Not(HasSubstr("age_seconds{connection=\"002\"}")));
}

TEST_F(ScreensTest, MarksAndHidesElementsByRulesOfTheMoment) {
  show.shown.marked = {"s1-sh2", "s1-sh3"};
  show.shown.hidden = {"s1-sh4"};
  const std::string rules = Json::parse(open("/screen/events").event().data)["rules"];
  EXPECT_THAT(rules, HasSubstr("#s1-sh2::after,#s1-sh3::after{content"));
  EXPECT_THAT(rules, HasSubstr("#s1-sh4{visibility:hidden}"));
  EXPECT_THAT(connect().get("/").body, HasSubstr("<style id=\"rules\">" + rules + "</style>"));
}

}  // namespace
}  // namespace web::test
