// What event streams carry, to readers that keep up, fall behind or vanish.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "web/ServerFixture.h"

namespace web::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Json = nlohmann::json;

using StreamTest = ServerFixture;

TEST_F(StreamTest, GivesScreensThePictureAndThenWhatChanges) {
  Client screen = open("/screen/events");
  const Event first = screen.event();
  EXPECT_EQ("picture", first.name);
  const Json picture = Json::parse(first.data);
  EXPECT_EQ("Board", picture["title"]);
  EXPECT_EQ(show.shown.current->html, picture["current"]["html"]);
  EXPECT_EQ(2, picture["next"]["index"]);
  EXPECT_EQ(1U, server().screens());

  server().shapesChanged({change(1, "Gate 8"), {3, "s3-sh1", "", "Far", "away"}});
  const Event shapes = screen.event();
  EXPECT_EQ("shapes", shapes.name);
  EXPECT_EQ(*first.id + 1, shapes.id);
  EXPECT_EQ(R"([{"slide":1,"id":"s1-sh2","html":"<p id=\"s1-sh2\">Gate 8</p>"}])", shapes.data);

  ShapeChange table = {1, "s1-sh5", "", "Table", {}};
  table.cells = {{3, "<td>a</td>"}, {7, "<td>b</td>"}};
  server().shapesChanged({table});
  EXPECT_EQ(R"([{"slide":1,"id":"s1-sh5","cells":[[3,"<td>a</td>"],[7,"<td>b</td>"]]}])",
            screen.event().data);

  // Nothing that a screen holds: no event, and no gap in the numbers.
  server().shapesChanged({{3, "s3-sh1", "", "Far", "away"}});
  show.shown.current = std::exchange(show.shown.next, std::nullopt);
  show.shown.blank = Blank::Black;
  server().slideChanged();
  const Event second = screen.event();
  EXPECT_EQ("picture", second.name);
  EXPECT_EQ(*shapes.id + 2, second.id);
  EXPECT_EQ(2, Json::parse(second.data)["current"]["index"]);
  EXPECT_TRUE(Json::parse(second.data)["next"].is_null());
  EXPECT_EQ("black", Json::parse(second.data)["blank"]);

  screen.close();
  EXPECT_TRUE(until([&] { return server().screens() == 0; }));
}

TEST_F(StreamTest, GivesProgramsTheStateAndThenValuesBySlide) {
  show.stateText = "{\"deck\":\"a\",\r\n \"running\":\rtrue}";
  Client program = open("/api/v1/events");
  const Event first = program.event();
  EXPECT_EQ("state", first.name);
  EXPECT_EQ(Json({{"deck", "a"}, {"running", true}}), Json::parse(first.data));
  EXPECT_EQ(1U, server().programs());
  EXPECT_EQ(0U, server().screens());

  server().shapesChanged({change(1, "Gate 8"), change(1, "Gate 9"), {3, "s3-sh1", "", "Far", "away"}});
  const Event values = program.event();
  EXPECT_EQ("values", values.name);
  EXPECT_EQ(*first.id + 1, values.id);
  EXPECT_EQ(Json::parse(R"([{"slide":1,"shapes":[{"name":"Gate","text":"Gate 8"},
                                                 {"name":"Gate","text":"Gate 9"}]},
                            {"slide":3,"shapes":[{"name":"Far","text":"away"}]}])"),
            Json::parse(values.data));

  show.shown.current = std::nullopt;
  show.shown.ended = true;
  server().slideChanged();
  const Event position = program.event();
  EXPECT_EQ("position", position.name);
  EXPECT_EQ(Json::parse(R"({"position":0,"slideCount":2,"blank":"none","ended":true})"),
            Json::parse(position.data));
  const Event end = program.event();
  EXPECT_EQ("end", end.name);
  EXPECT_EQ(*position.id + 1, end.id);
  EXPECT_EQ(R"({"reason":"show"})", end.data);
  server().slideChanged();
  server().slideChanged();
  EXPECT_EQ("position", program.event().name);
  EXPECT_EQ("position", program.event().name);
}

TEST_F(StreamTest, TellsOfAnotherDeckAndResolvesViewsAnew) {
  Client screen = open("/screen/events");
  Client pinned = open("/screen/events?slide=2");
  Client program = open("/api/v1/events");
  screen.event();
  pinned.event();
  program.event();
  ASSERT_EQ(server().screens(), 2U);
  EXPECT_THAT(show.watched, testing::ElementsAre(2));

  show.shown.deck = "other";
  show.shown.slideCount = 1;
  show.stateText = R"({"slideCount":1})";
  server().deckChanged();
  const Event picture = screen.event();
  EXPECT_EQ("picture", picture.name);
  EXPECT_EQ("other", Json::parse(picture.data)["deck"]);
  const Event state = program.event();
  EXPECT_EQ("state", state.name);
  EXPECT_EQ(show.stateText, state.data);
  EXPECT_EQ("position", program.event().name);
  EXPECT_TRUE(until([&] { return !pinned.receive(); })) << "its slide may be another now";
  EXPECT_EQ(server().screens(), 1U);
  EXPECT_TRUE(show.watched.empty());
}

TEST_F(StreamTest, CarriesAnyTextUnharmed) {
  Client program = open("/api/v1/events");
  program.event();
  using namespace std::string_literals;
  for (const std::string& text : {"two\nlines\r\nand\rmore"s, "\0nul"s, "\u2028\u2029\u0085"s, "</script>"s,
                                  "data: x\n\nevent: end"s, "\\\"\x7f\x1b"s, "\U0001F6EB"s}) {
    server().shapesChanged({change(1, text)});
    EXPECT_EQ(text, Json::parse(program.event().data)[0]["shapes"][0]["text"]);
  }
  server().shapesChanged({change(1, "bad \xff byte")});
  EXPECT_EQ("bad \xEF\xBF\xBD byte", Json::parse(program.event().data)[0]["shapes"][0]["text"]);
}

TEST_F(StreamTest, GivesALatecomerThePresentAndEveryoneTheSame) {
  std::vector<Client> screens;
  for (int i = 0; i < 200; ++i) screens.push_back(open("/screen/events"));
  for (Client& screen : screens) screen.event();
  show.shown.title = "Changed";
  server().slideChanged();
  server().shapesChanged({change(1, "Gate 8")});
  for (Client& screen : screens) {
    EXPECT_THAT(screen.event().data, HasSubstr("Changed"));
    EXPECT_THAT(screen.event().data, HasSubstr("Gate 8"));
  }
  show.shown.current->html = "<section id=\"s1\">Gate 8</section>";
  Client late = open("/screen/events");
  const Event picture = late.event();
  EXPECT_THAT(picture.data, HasSubstr("Gate 8"));
  server().shapesChanged({change(1, "Gate 9")});
  EXPECT_EQ(*picture.id + 1, late.event().id);
}

/// A reader that does not read while `count` changes of 32 KiB come, and then
/// takes everything.
std::vector<Event> eventsAfterSleep(Client& sleeper, boost::asio::io_context& loop, Server& server,
                                    FakeShow& show, int count) {
  sleeper.open("/screen/events");
  runUntil(loop, [&] { return server.screens() == 1; });
  for (int i = 0; i < count; ++i) {
    const std::string text = std::to_string(i) + std::string(32 * 1024, '.');
    show.shown.current->html = "<section id=\"s1\"><p id=\"s1-sh2\">" + text + "</p></section>";
    server.shapesChanged({{1, "s1-sh2", "<p id=\"s1-sh2\">" + text + "</p>", "Gate", text}});
    loop.poll();
  }
  std::vector<Event> all;
  const std::string newest = '>' + std::to_string(count - 1) + '.';
  runUntil(loop, [&] {
    for (Event& event : sleeper.events()) all.push_back(std::move(event));
    return !all.empty() && all.back().data.find(newest) != std::string::npos;
  });
  return all;
}

TEST_F(StreamTest, LetsASlowScreenSkipToTheNewestState) {
  options.streamSendBuffer = 64 * 1024;
  Client sleeper = connect(16 * 1024);
  const std::vector<Event> events = eventsAfterSleep(sleeper, loop, server(), show, 400);
  ASSERT_FALSE(events.empty());
  EXPECT_LT(events.size(), 80U);
  std::size_t pictures = 0;
  for (std::size_t i = 0; i < events.size(); ++i) {
    if (events[i].name == "picture") ++pictures;
    if (i > 0 && events[i].name == "shapes") {
      EXPECT_EQ(*events[i - 1].id + 1, events[i].id);
    }
  }
  EXPECT_EQ(2U, pictures);
  EXPECT_EQ("picture", events.back().name);
  EXPECT_THAT(events.back().data, HasSubstr(">399."));
  // Awake again, it is served like all others.
  server().shapesChanged({change(1, "Gate 8")});
  const Event next = sleeper.event();
  EXPECT_EQ("shapes", next.name);
  EXPECT_EQ(*events.back().id + 1, next.id);
}

TEST_F(StreamTest, SendsAFullPictureInsteadOfWhatStillWaits) {
  options.streamSendBuffer = 16 * 1024;
  Client sleeper = connect(4 * 1024);
  sleeper.open("/screen/events");
  ASSERT_TRUE(until([&] { return server().screens() == 1; }));
  for (int i = 0; i < 20; ++i) {
    server().shapesChanged({change(1, std::string(32 * 1024, '.'))});
    loop.poll();
  }
  show.shown.title = "Newest";
  server().slideChanged();
  std::vector<Event> events;
  ASSERT_TRUE(until([&] {
    for (Event& event : sleeper.events()) events.push_back(std::move(event));
    return !events.empty() && events.back().data.find("Newest") != std::string::npos;
  }));
  EXPECT_LT(events.size(), 20U);
  EXPECT_EQ(21U, *events.back().id - *events.front().id);
}

TEST_F(StreamTest, DropsAReaderThatNeverReads) {
  options.streamSendBuffer = 4 * 1024;
  options.writeTimeout = std::chrono::milliseconds(30);
  options.heartbeat = std::chrono::milliseconds(10);
  show.shown.current->html = std::string(6 * 1024 * 64, '.');
  Client dead = connect(4 * 1024);
  dead.open("/screen/events");
  ASSERT_TRUE(until([&] { return server().screens() == 1; }));
  EXPECT_TRUE(until([&] { return server().screens() == 0; }));
}

TEST_F(StreamTest, ShowsSignsOfLife) {
  options.heartbeat = std::chrono::milliseconds(10);
  Client screen = open("/screen/events");
  Client program = open("/api/v1/events");
  EXPECT_EQ(10, Json::parse(screen.event().data)["heartbeat"]);
  program.event();
  for (int i = 0; i < 3; ++i) {
    const Event beat = screen.event();
    EXPECT_EQ("beat", beat.name);
    EXPECT_FALSE(beat.id);
    EXPECT_FALSE(beat.data.empty());  // or browsers would not show it to the script
    EXPECT_EQ("", program.event().name);
  }
}

TEST_F(StreamTest, EndsItsStreamsWhenItStops) {
  options.stopTimeout = std::chrono::hours(1);
  Client screen = open("/screen/events");
  Client program = open("/api/v1/events");
  const Event picture = screen.event();
  program.event();
  server().stop();
  for (Client* client : {&screen, &program}) {
    const Event end = client->event();
    EXPECT_EQ("end", end.name);
    EXPECT_EQ(R"({"reason":"server"})", end.data);
    EXPECT_TRUE(client->isComplete());
    EXPECT_EQ("", client->receiveAll());
  }
  server().shapesChanged({change(1, "late")});
  EXPECT_TRUE(until([&] { return loop.stopped(); }));
  EXPECT_EQ(0U, server().screens() + server().programs());
}

TEST_F(StreamTest, CutsAReaderThatHoldsUpItsEnd) {
  options.stopTimeout = std::chrono::milliseconds(20);
  options.streamSendBuffer = 4 * 1024;
  show.shown.current->html = std::string(1024 * 1024, '.');
  Client asleep = connect(4 * 1024);
  asleep.open("/screen/events");
  ASSERT_TRUE(until([&] { return server().screens() == 1; }));
  server().stop();
  EXPECT_TRUE(until([&] { return loop.stopped(); }));
  EXPECT_EQ(0U, server().screens());
}

TEST_F(StreamTest, CanBeDestroyedInTheMidstOfEverything) {
  Client screen = open("/screen/events");
  screen.event();
  Client idle = connect();
  EXPECT_EQ(200, idle.get("/healthz").status);
  Client waiting = open("/api/v1/events");
  server().shapesChanged({change(1, "Gate 8")});
  idle.send("GET / HTTP/1.1\r\n");
  server_.reset();
  loop.restart();
  loop.run();  // what was pending finds nobody to call
}

}  // namespace
}  // namespace web::test
