// How the show is judged for people, and what they are told.

#include "web/show/Status.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "web/ServerFixture.h"

namespace web::test {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;
using Json = nlohmann::json;

std::string told(const Judgement& judgement) {
  static constexpr const char* levels[] = {"idle ", "good ", "warning ", "bad "};
  return levels[static_cast<int>(judgement.level)] + std::string(judgement.state);
}

ConnectionHealth fresh() {
  ConnectionHealth connection;
  connection.number = "001";
  connection.description = "Departures";
  connection.age = 0.5;
  connection.isUsed = true;
  connection.lastSuccess = std::chrono::system_clock::now();
  return connection;
}

TEST(Status, JudgesConnections) {
  EXPECT_EQ(told(judged(fresh())), "good fresh");
  ConnectionHealth failing = fresh();
  failing.isFailing = true;
  EXPECT_EQ(told(judged(failing)), "warning failing");
  failing.isStale = true;
  EXPECT_EQ(told(judged(failing)), "bad stale");
  ConnectionHealth resting = fresh();
  resting.isUsed = false;
  EXPECT_EQ(told(judged(resting)), "idle resting");
  resting.isFailing = true;
  EXPECT_EQ(told(judged(resting)), "warning failing") << "it will be needed again";
  ConnectionHealth waiting = fresh();
  waiting.age.reset();
  EXPECT_EQ(told(judged(waiting)), "warning waiting");
}

TEST(Status, JudgesSlidesThatStand) {
  EXPECT_EQ(told(judged(StandingSlide{2, 15, ""})), "warning standing");
  EXPECT_EQ(told(judged(StandingSlide{2, 16, ""})), "bad standing");
}

TEST(Status, JudgesTheShow) {
  ScreenState state = FakeShow().shown;
  EXPECT_EQ(told(judged(state)), "good running");
  state.blank = Blank::White;
  EXPECT_EQ(told(judged(state)), "warning white");
  state.blank = Blank::None;
  state.current->index = 0;
  EXPECT_EQ(told(judged(state)), "warning empty");
  state.current.reset();
  EXPECT_EQ(told(judged(state)), "warning opening");
  state.ended = true;
  EXPECT_EQ(told(judged(state)), "bad ended");
}

TEST(Status, JudgesScreensByWhatTheyHaveNotPainted) {
  const auto now = Screens::Clock::now();
  Screens::Screen screen;
  screen.opened = now - 14s;
  EXPECT_EQ(told(judged(screen, 3, {}, now)), "idle new");
  screen.opened = now - 16s;
  EXPECT_EQ(told(judged(screen, 3, {}, now)), "warning silent");
  screen.opened = now - 61s;
  EXPECT_EQ(told(judged(screen, 3, {}, now)), "bad silent");
  screen.painted = Screens::Paint{1, 3, now - 2h, {}};
  EXPECT_EQ(told(judged(screen, 3, {}, now)), "good current") << "nothing has changed for two hours";
  EXPECT_EQ(told(judged(screen, 4, now - 14s, now)), "good current") << "its next report may tell";
  EXPECT_EQ(told(judged(screen, 4, now - 16s, now)), "warning behind");
  EXPECT_EQ(told(judged(screen, 4, now - 61s, now)), "bad behind");
  EXPECT_EQ(told(judged(screen, 999, {}, now)), "bad behind");
}

TEST(Status, LeavesOutTheFoldersOfFiles) {
  const std::pair<const char*, const char*> cases[] = {
      {"'/srv/my data/flights.txt' cannot be opened: there is no such file.",
       "'flights.txt' cannot be opened: there is no such file."},
      {"Error in /srv/a/b.txt: Input/output error", "Error in b.txt: Input/output error"},
      {R"(File "C:\data\week 4\p.xlsx" (\\server\share\q.txt), ~/z.db.)", R"(File "p.xlsx" (q.txt), z.db.)"},
      {"../data/x.csv and ./y.csv", "x.csv and y.csv"},
      {"TCP/IP to http://host/path on 4/5, and /", "TCP/IP to http://host/path on 4/5, and /"},
      {"The table 'a/b' has no column 'Nach'", "The table 'a/b' has no column 'Nach'"},
      {"not closed '/a/b", "not closed 'b"},
      {"/a/", "a"},
      {"", ""},
  };
  for (const auto& [text, without] : cases) EXPECT_EQ(withoutFolders(text), without);
}

class StatusPageTest : public ServerFixture {
 protected:
  Json status() { return jsonAt("/api/v1/status"); }
};

TEST_F(StatusPageTest, TellsTheWorstOfAllWithoutSecretsOrFolders) {
  EXPECT_EQ(status()["level"], "warning") << "nobody sees the show";
  Client screen = open("/screen/events");
  screen.event();
  const std::string name = Json::parse(screen.hello())["screen"];
  show.condition.connections = {fresh()};
  Json well = status();
  EXPECT_EQ(well["level"], "good");
  EXPECT_EQ(well["screens"][0]["state"], "new");
  EXPECT_EQ(well["title"], "Board");

  ConnectionHealth stale = fresh();
  stale.isStale = true;
  stale.lastErrorTime = std::chrono::system_clock::now() - 10s;
  stale.lastError = "'/srv/boards/x.txt' cannot be read.";
  show.condition.connections.push_back(stale);
  show.condition.standing = {{3, 12.5, "No column 'To' in '/srv/boards/x.txt'."}};
  const std::string body = connect().get("/api/v1/status").body;
  const Json bad = Json::parse(body);
  EXPECT_EQ(bad["level"], "bad");
  EXPECT_EQ(bad["connections"][0]["level"], "good");
  EXPECT_EQ(bad["connections"][1]["error"]["text"], "'x.txt' cannot be read.");
  EXPECT_NEAR(bad["connections"][1]["error"]["age"].get<double>(), 10, 5);
  EXPECT_EQ(bad["slides"][0]["error"], "No column 'To' in 'x.txt'.");
  EXPECT_THAT(body, Not(HasSubstr(name))) << "who knows it reports in the screen's name";

  show.shown.title = "<Board>";
  const Answer page = connect().get("/status");
  EXPECT_EQ(page.status, 200);
  EXPECT_THAT(page.body, HasSubstr("&lt;Board&gt;"));
  EXPECT_THAT(page.body, Not(HasSubstr("{{")));
}

TEST_F(StatusPageTest, TellsWhatBecomesOfThePlayersDecks) {
  EXPECT_FALSE(status().contains("decks")) << "the show of one deck has no folder";
  using State = DeckHealth::State;
  DecksHealth decks;
  decks.decks = {{"A", State::OnShow, "", "2026-11-22 22:00:00"},
                 {"B", State::InTurn, "", ""},
                 {"C", State::NotNow, "Its time has ended.", ""},
                 {"D", State::Refused, "'/srv/decks/D.pptx' is not signed.", ""},
                 {"E", State::OnShow, "A newer version is not signed.", ""}};
  decks.changes = 7;
  show.condition.decks = decks;
  show.shown.slideCount = 3;
  Json told = status();
  std::vector<std::string> levels;
  for (const Json& deck : told["decks"]) levels.push_back(deck["level"]);
  EXPECT_THAT(levels, testing::ElementsAre("good", "good", "idle", "warning", "warning"));
  EXPECT_EQ(told["decks"][0]["until"], "2026-11-22 22:00:00");
  EXPECT_EQ(told["decks"][3]["problem"], "'D.pptx' is not signed.");
  const std::string metrics = connect().get("/metrics").body;
  EXPECT_THAT(metrics, HasSubstr("lumenfold_decks{state=\"on show\"} 2\n"));
  EXPECT_THAT(metrics, HasSubstr("lumenfold_deck_changes_total 7\n"));
  EXPECT_THAT(metrics, HasSubstr("lumenfold_folder_trouble 0\n"));

  show.condition.decks = DecksHealth{{}, 0, "'/mnt/decks' cannot be read."};
  show.shown.slideCount = 0;
  told = status();
  EXPECT_EQ(told["show"]["state"], "waiting");
  EXPECT_EQ(told["folder"], "'decks' cannot be read.");
  EXPECT_EQ(jsonAt("/api/v1/health")["player"]["problem"], "'/mnt/decks' cannot be read.");
}

}  // namespace
}  // namespace web::test
