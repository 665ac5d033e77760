// What a player with a key takes.

#include "player/PlayerFixture.h"

namespace app::test {
namespace {

struct TrustTest : CollectorTest {
  PrivateKey key = PrivateKey::generate();
  TrustTest() { options.trust = key.publicKey(); }
  Note send(std::int64_t serial, const std::string& text) {
    return folder.send("A", serial, {{"A.pptx", deckBytes(text)}}, {}, &key);
  }
};

TEST_F(TrustTest, TakesSignedDecksAloneAndKeepsTheLastGoodOne) {
  send(5, "good");
  look();
  ASSERT_EQ(shown(), "A");
  const std::string good = deck("A").version;

  const auto refused = [&](const Note& note, const std::string& why) {
    folder.put(note);
    const std::size_t lines = log.size();
    for (int i = 0; i < 3; ++i) look(60'000);
    EXPECT_EQ(deck("A").version, good) << why;
    EXPECT_TRUE(deck("A").isOn);
    EXPECT_NE(deck("A").why.find(why), std::string::npos) << deck("A").why;
    EXPECT_EQ(log.size(), lines + 1) << "each is told once";
  };
  const std::string evil = deckBytes("evil");
  const PrivateKey other = PrivateKey::generate();
  folder.put("A.pptx", evil);
  Note note = folder.note("A", 6, {{"A.pptx", evil}});
  refused(note, "It is not signed");
  note.sign(other);
  refused(note, "It is signed with another key.");
  note.sign(key);
  note.serial = 7;
  refused(note, "Its signature does not fit");
  Note replayed = folder.note("A", 4, {{"A.pptx", evil}});
  replayed.sign(key);
  refused(replayed, "It is older than the version that was taken before.");
  // Tampered with: the note is right, the deck is not.
  std::string next = deckBytes("next");
  Note right = folder.note("A", 8, {{"A.pptx", next}});
  right.sign(key);
  next.back() ^= 1;
  folder.put("A.pptx", next);
  refused(right, "is not what its note says.");
}

TEST_F(TrustTest, RefusesWhatItHasNoGoodVersionOf) {
  folder.put("Hand.pptx", deckBytes("by hand"));
  folder.send("Bare", 1, {{"Bare.pptx", deckBytes("no key")}});
  look();
  look();
  EXPECT_EQ(shown(), "");
  EXPECT_EQ(deck("Hand").why, "It is not signed, and this player takes signed decks alone.");
  EXPECT_EQ(deck("Bare").why, "It is not signed, and this player takes signed decks alone.");
  EXPECT_EQ(log.size(), 2U);
}

TEST_F(TrustTest, NobodyWithoutTheKeyTakesADeckAway) {
  send(5, "good");
  look();
  folder.remove("A.sent.json");
  folder.remove("A.pptx");
  look();
  EXPECT_EQ(shown(), "A");
  folder.withdraw("A", 6);
  look();
  EXPECT_EQ(shown(), "A");
  folder.withdraw("A", 6, &key);
  look();
  EXPECT_EQ(shown(), "");
  // What was withdrawn does not come back by being sent anew, nor after a restart.
  for (const bool restarts : {false, true}) {
    if (restarts) start();
    send(5, "good");
    look();
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(deck("A").why, "It is older than the version that was taken before.");
  }
  send(7, "good");
  look();
  EXPECT_EQ(shown(), "A");
  // The cache of another master is not trusted.
  options.trust = PrivateKey::generate().publicKey();
  start();
  EXPECT_EQ(shown(), "");
}

}  // namespace
}  // namespace app::test
