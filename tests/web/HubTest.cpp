// A show with a hub: what goes there, the state of which screens make a beginning, and screens that nobody
// sees but by their reports.

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "web/FakeHub.h"
#include "web/ServerFixture.h"
#include "web/show/Status.h"
#include "web/show/ViewName.h"
#include "web/show/ViewsInUse.h"

namespace web::test {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Json = nlohmann::json;

class HubTest : public ServerFixture {
 protected:
  HubTest() {
    hub.nodes = {hubNodeAt(node.address())};
    options.hubs = {"http://hub.example.org", "https://other.example.org:8443"};
    options.heartbeat = 20ms;
    options.now = [this] { return now; };
  }
  Json state(const std::string& view) {
    const Answer answer = connect().get("/screen/state/" + view);
    EXPECT_EQ(200, answer.status) << view;
    return Json::parse(answer.body);
  }
  /// The messages of a view that the hub has, beats apart.
  std::vector<Json> messages(const std::string& view) {
    std::vector<Json> all;
    for (const std::string& body : node.bodies(view)) {
      if (Json message = Json::parse(body); message["event"] != "beat") all.push_back(std::move(message));
    }
    return all;
  }
  bool untilMessages(const std::string& view, std::size_t count) {
    return until([&] { return messages(view).size() >= count; });
  }
  int report(const std::string& screen, const std::string& view, const Json& run, std::uint64_t sequence) {
    Client client = connect();
    return postPainted(client, Json({{"screen", screen},
                                     {"view", view},
                                     {"run", run},
                                     {"sequence", sequence},
                                     {"slide", 1},
                                     {"held", 0}})
                                   .dump());
  }
  Json health() { return jsonAt("/api/v1/health"); }

  FakeHub node{loop};
  Screens::Clock::time_point now = Screens::Clock::now();
};

TEST(ViewName, StandsForOneAddress) {
  const std::pair<const char*, const char*> names[] = {{"", "show"},
                                                       {"part=2x1/1", "show"},
                                                       {"slide=3", "slide-3"},
                                                       {"slide=x", "slide-0"},
                                                       {"shape=Clock", "shape-436c6f636b"},
                                                       {"shape=%C3%A9&slide=2", "slide-2-shape-c3a9"},
                                                       {"shape=", "shape-"}};
  for (const auto& [query, name] : names) {
    const ViewAddress address = viewAddressed(query);
    EXPECT_EQ(viewName(address), name) << query;
    EXPECT_EQ(viewNamed(name), address) << name;
  }
  for (const char* none :
       {"", "shows", "slide-", "slide-03", "slide--3", "slide-3-", "slide-3x", "slide-3-show", "shape-4",
        "shape-4G", "shape-4A", "shape-41-", "slide-99999999999", "../show"}) {
    EXPECT_EQ(viewNamed(none), std::nullopt) << none;
  }
  EXPECT_EQ(viewNamed("shape-" + std::string(2000, '0')), std::nullopt);
}

TEST_F(HubTest, BeginsWithTheStateAndGoesOnWithoutAGap) {
  server();
  ASSERT_TRUE(until([&] { return node.bodies("show").size() == 1; })) << "for screens that were there before";
  node.posted.clear();
  const Json first = state("show");
  EXPECT_EQ(first["picture"]["title"], "Board");
  EXPECT_EQ(first["sequence"], 0);
  EXPECT_EQ(first["hubs"], Json(options.hubs));
  EXPECT_TRUE(state("slide-2")["hub"]["id"].is_null()) << "the hub has nothing of this view yet";
  ASSERT_TRUE(until([&] { return !state("slide-2")["hub"]["id"].is_null(); })) << "a beat gives it an id";

  server().shapesChanged({change(1, "Gate 8")});
  show.shown.title = "Arrivals";
  server().slideChanged();
  server().shapesChanged({change(3, "elsewhere")});
  ASSERT_TRUE(untilMessages("show", 2));
  const std::vector<Json> told = messages("show");
  EXPECT_EQ(told[0]["event"], "shapes");
  EXPECT_EQ(told[0]["sequence"], 1);
  EXPECT_EQ(told[0]["run"], first["run"]);
  EXPECT_EQ(told[0]["data"][0]["html"], "<p id=\"s1-sh2\">Gate 8</p>");
  EXPECT_EQ(told[1]["event"], "picture");
  EXPECT_EQ(told[1]["sequence"], 2);
  EXPECT_EQ(told[1]["data"]["title"], "Arrivals");

  const Json later = state("show");
  EXPECT_EQ(later["run"], first["run"]);
  EXPECT_EQ(later["picture"]["title"], "Arrivals");
  EXPECT_GE(later["sequence"], 2);
  // Screens of both ways are told by the same numbers.
  EXPECT_EQ(open("/screen/events").event().id, later["sequence"].get<std::uint64_t>());
}

TEST_F(HubTest, TellsOfLargeMessagesByTheirNumberAlone) {
  state("show");
  server().shapesChanged({change(1, std::string(70'000, 'x'))});
  ASSERT_TRUE(untilMessages("show", 1));
  const Json message = messages("show").front();
  EXPECT_EQ(message["event"], "fetch");
  EXPECT_EQ(message["sequence"], 1);
  EXPECT_FALSE(message.contains("data"));
  show.shown.title = std::string(190'000, 'x');
  server().slideChanged();
  show.shown.title += std::string(7'000, 'x');
  server().slideChanged();
  ASSERT_TRUE(untilMessages("show", 3));
  EXPECT_EQ(messages("show")[1]["event"], "picture") << "slides are awaited";
  EXPECT_EQ(messages("show")[2]["event"], "fetch");
}

TEST_F(HubTest, PublishesAViewForAsLongAsScreensReport) {
  const Json first = state("slide-2");
  EXPECT_THAT(show.watched, ElementsAre(2));
  server().shapesChanged({change(2, "a")});
  ASSERT_TRUE(untilMessages("slide-2", 1));

  for (int minutes = 0; minutes < 5; ++minutes) {
    now += 60s;
    EXPECT_EQ(200, report("screen-1", "slide-2", first["run"], 1));
    EXPECT_TRUE(
        until([&, sent = node.bodies("slide-2").size()] { return node.bodies("slide-2").size() > sent; }));
  }
  now += 150s;
  ASSERT_TRUE(until([&] { return show.watched.empty(); }));
  const std::size_t told = node.bodies("slide-2").size();
  server().shapesChanged({change(2, "b")});
  server().stateChanged();
  EXPECT_EQ(health()["hub"]["views"], 0);

  const Json again = state("slide-2");
  EXPECT_NE(again["run"], first["run"]) << "numbers were not counted meanwhile";
  ASSERT_TRUE(until([&] { return node.bodies("slide-2").size() > told; }));
  EXPECT_EQ(Json::parse(node.bodies("slide-2").back())["run"], again["run"]);
}

TEST_F(HubTest, FollowsAViewIntoAnotherDeck) {
  const Json first = state("slide-1-shape-736839");
  show.shown.deck = "other";
  show.shown.slideCount = 0;
  server().deckChanged();
  ASSERT_TRUE(untilMessages("slide-1-shape-736839", 1));
  const Json message = messages("slide-1-shape-736839").back();
  EXPECT_EQ(message["data"]["deck"], "other");
  EXPECT_TRUE(message["data"]["current"].is_null());
  EXPECT_NE(message["run"], first["run"]) << "it is another view by now";
}

TEST_F(HubTest, CountsScreensByTheirReportsAndNobodyTwice) {
  Client direct = open("/screen/events");
  direct.event();
  const std::string name = Json::parse(direct.hello())["screen"];
  Client client = connect();
  EXPECT_EQ(200, postPainted(client, R"({"slide":1,"held":0,"sequence":0,"screen":")" + name + "\"}"));
  EXPECT_EQ(404, report(name, "show", "x", 0)) << "it has a stream";
  const Json first = state("show");
  EXPECT_EQ(200, report("screen-1", "show", first["run"], 0));
  EXPECT_EQ(200, report("screen-2", "show", first["run"], 0));
  EXPECT_EQ(429, report("screen-2", "show", first["run"], 0));
  EXPECT_EQ(health()["screens"].size(), 3U);
  EXPECT_EQ(health()["screensAtHubs"], 2);
  EXPECT_EQ(server().screens(), 1U) << "open streams";

  now += 100s;
  EXPECT_EQ(200, report("screen-1", "show", first["run"], 0));
  now += 100s;
  EXPECT_TRUE(until([&] { return health()["screensAtHubs"] == 1; }));
  EXPECT_THAT(connect().get("/metrics").body, HasSubstr("lumenfold_screens 2\n"));
  EXPECT_THAT(connect().get("/metrics").body, HasSubstr("lumenfold_screens_at_hubs 1\n"));

  for (const char* wrong : {"short", "a\\u0022bcdefgh", "../../etc"})
    EXPECT_EQ(400, report(wrong, "show", "x", 0));
  EXPECT_EQ(400, report("screen-3", "slide-x", "x", 0));
}

TEST_F(HubTest, JudgesAScreenByWhatWasNewWhenItReported) {
  const Json first = state("show");
  server().shapesChanged({change(1, "a")}, now);
  EXPECT_EQ(200, report("screen-1", "show", first["run"], 1));
  const auto judgement = [&] { return jsonAt("/api/v1/status")["screens"][0]["state"]; };
  EXPECT_EQ(judgement(), "current");
  now += 40s;
  server().shapesChanged({change(1, "b")}, now);
  now += 19s;
  EXPECT_EQ(judgement(), "current") << "it reports once a minute";
  EXPECT_EQ(200, report("screen-1", "show", first["run"], 1));
  EXPECT_EQ(judgement(), "behind");
  now += 1s;
  EXPECT_EQ(200, report("screen-1", "show", "another run", 99));
  EXPECT_EQ(judgement(), "behind") << "numbers of another run say nothing";
}

TEST_F(HubTest, BoundsTheViewsInUse) {
  show.shown.slideCount = 1000;
  Client client = connect();
  int refused = 0;
  for (int slide = 1; slide <= 400; ++slide) {
    const int status = client.get("/screen/state/slide-" + std::to_string(slide)).status;
    if (status == 503) ++refused;
  }
  EXPECT_EQ(refused, 400 - static_cast<int>(ViewsInUse::most - 1));
  EXPECT_EQ(404, client.get("/screen/state/nothing").status);
  EXPECT_EQ(503, client.get("/screen/state/slide-2000").status);
  EXPECT_EQ(200, client.get("/screen/state/slide-1").status);
}

TEST_F(HubTest, LeavesRoomForViewsOfSomething) {
  Client client = connect();
  int refused = 0;
  for (int slide = 1001; slide <= 1100; ++slide) {
    if (client.get("/screen/state/slide-" + std::to_string(slide)).status == 503) ++refused;
  }
  EXPECT_EQ(refused, 100 - static_cast<int>(ViewsInUse::mostOfNothing));
  EXPECT_EQ(200, client.get("/screen/state/slide-2").status);
}

TEST_F(HubTest, LetsScreensOfOtherHubsLook) {
  Client client = connect();
  const Answer sister = client.get("/screen/state/show", "Origin: http://hub.example.org\r\n");
  EXPECT_EQ(sister.headers.at("Access-Control-Allow-Origin"), "http://hub.example.org");
  EXPECT_EQ(403, client.get("/screen/state/show", "Origin: http://elsewhere.example.org\r\n").status);
  EXPECT_EQ(403, client.get("/api/v1/state", "Origin: http://hub.example.org\r\n").status);
  EXPECT_EQ(0U, client.get("/screen/state/show").headers.count("Access-Control-Allow-Origin"));
  EXPECT_THAT(client.get("/").headers.at("Content-Security-Policy"),
              HasSubstr("connect-src 'self' http://hub.example.org https://other.example.org:8443"));
  EXPECT_THAT(client.get("/remote").headers.at("Content-Security-Policy"), Not(HasSubstr("hub.example.org")));
  client.send("GET /?slide=2 HTTP/1.1\r\nHost: other.example.org:8443\r\n\r\n");
  EXPECT_THAT(client.answer().body, HasSubstr("data-view=\"slide-2\""));
}

TEST_F(HubTest, TellsOfANodeThatIsAway) {
  node.answer = [](const FakeHub::Posted&) { return FakeHub::answerOf(503); };
  hub.firstPause = 1ms;
  state("show");
  ASSERT_TRUE(until([&] { return health()["hub"]["nodes"][0]["up"] == false; }));
  const Json status = jsonAt("/api/v1/status");
  EXPECT_EQ(status["hub"][0]["state"], "away");
  EXPECT_EQ(status["level"], "bad");
  EXPECT_THAT(connect().get("/metrics").body,
              HasSubstr("lumenfold_hub_up{node=\"" + node.address() + "\"} 0\n"));
  EXPECT_EQ(status["hub"][0]["address"], node.address());
  Publisher::Node one{{"one", "", ""}, false, "", {}};
  EXPECT_EQ(judged(one, true).level, Level::Warning) << "another node takes the messages";
}

TEST_F(HubTest, WithoutAHubNothingIsPublishedOrCountedByReports) {
  hub.nodes.clear();
  const Json first = state("slide-2");
  EXPECT_TRUE(first["hub"]["id"].is_null());
  EXPECT_TRUE(show.watched.empty());
  EXPECT_EQ(404, report("screen-1", "slide-2", first["run"], 0));
  show.broken = true;
  EXPECT_EQ(503, connect().get("/screen/state/show").status);
  EXPECT_THAT(errors, Contains("the deck is gone"));
}

}  // namespace
}  // namespace web::test
