#include "app/distribution/Note.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "app/distribution/Digest.h"
#include "app/distribution/Signature.h"
#include "basic/Base64.h"
#include "support/ErrorOf.h"

namespace app::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

Note shop() {
  Note note;
  note.name = "Shop";
  note.serial = 1795343723123;
  note.way = Way::Files;
  note.folder = "Shop.20261122T101500123Z";
  note.files = {{"Shop.pptx", 4, sha256("deck")}, {"pictures/äpple 1.png", 3, sha256("png")}};
  return note;
}

TEST(Note, IsReadAsItWasWritten) {
  Note note = shop();
  EXPECT_EQ(Note::read(json::textOf(note.json())), note);
  note.sign(PrivateKey::generate());
  EXPECT_EQ(Note::read(json::textOf(note.json())), note);
  note.withdrawn = true;
  note.files.clear();
  EXPECT_EQ(Note::read(json::textOf(note.json())), note);
}

// What is signed, byte for byte: other programs make and check it, too.
TEST(Note, IsSignedLineByLine) {
  const std::string secret(32, 'k');
  Note note = shop();
  note.sign(PrivateKey(secret));
  const std::string text =
      "lumenfold distribution 1\nname Shop\nserial 1795343723123\nway files\n"
      "folder Shop.20261122T101500123Z\nwithdrawn 0\n"
      "file " +
      sha256("deck") +
      " 4 Shop.pptx\n"
      "file " +
      sha256("png") + " 3 pictures/äpple 1.png\n";
  EXPECT_EQ(note.signature, PrivateKey(secret).sign(text));
  EXPECT_EQ(note.key, PrivateKey(secret).publicKey().id());
}

TEST(Note, SignatureCoversEverything) {
  const PrivateKey key = PrivateKey::generate();
  const std::function<void(Note&)> changes[] = {[](Note& note) { note.name = "Other"; },
                                                [](Note& note) { note.serial += 1; },
                                                [](Note& note) { note.way = Way::Frozen; },
                                                [](Note& note) { note.folder = ""; },
                                                [](Note& note) { note.withdrawn = true; },
                                                [](Note& note) { note.files[1].size += 1; },
                                                [](Note& note) { note.files[1].path = "pictures/b.png"; },
                                                [](Note& note) { note.files[1].sha256 = sha256("other"); },
                                                [](Note& note) { note.files.pop_back(); },
                                                [](Note& note) { std::swap(note.files[0], note.files[1]); },
                                                [](Note& note) { note.signature.clear(); },
                                                [](Note& note) { note.sign(PrivateKey::generate()); }};
  Note note = shop();
  note.sign(key);
  EXPECT_TRUE(note.isSignedBy(key.publicKey()));
  for (std::size_t i = 0; i < std::size(changes); ++i) {
    Note changed = note;
    changes[i](changed);
    EXPECT_FALSE(changed.isSignedBy(key.publicKey())) << i;
  }
}

TEST(Note, ThatLeadsElsewhereIsRefused) {
  struct Case {
    const char* pointer;
    json::Json value;
    const char* complaint;
  };
  const Case cases[] = {{"/format", 2, "format 2"},
                        {"/name", "", "name"},
                        {"/name", "../Shop", "name"},
                        {"/name", "Sh\nop", "name"},
                        {"/name", 5, "'name'"},
                        {"/serial", -1, "negative"},
                        {"/serial", 1.5, "'serial'"},
                        {"/serial", 18446744073709551615U, "'serial'"},
                        {"/way", "by mail", "'by mail'"},
                        {"/folder", "..", "folder elsewhere"},
                        {"/folder", "a/b", "folder elsewhere"},
                        {"/files", json::Json::array(), "name files"},
                        {"/files", json::Json::object(), "'files'"},
                        {"/files/0", "Shop.pptx", "a file that is none"},
                        {"/files/1/path", "/etc/passwd", "outside"},
                        {"/files/1/path", "pictures/../../x", "outside"},
                        {"/files/1/path", "pictures//x", "outside"},
                        {"/files/1/path", "pictures\\..\\x", "outside"},
                        {"/files/1/path", "", "outside"},
                        {"/files/1/size", "3", "'size'"},
                        {"/files/1/sha256", std::string(64, 'A'), "SHA-256"},
                        {"/files/1/sha256", "ab", "SHA-256"},
                        {"/withdrawn", true, "withdraw"}};
  for (const Case& each : cases) {
    json::Json json = shop().json();
    json[json::Json::json_pointer(each.pointer)] = each.value;
    const std::string error = support::errorOf([&] { static_cast<void>(Note::read(json::textOf(json))); });
    EXPECT_THAT(error, HasSubstr(each.complaint)) << each.pointer << " " << each.value;
  }
  for (const char* text : {"", "[]", "{", "{}", "null"}) {
    EXPECT_FALSE(support::errorOf([&] { static_cast<void>(Note::read(text)); }) == "no error") << text;
  }
}

TEST(Index, HoldsNotesInTheOrderOfTheirNames) {
  Note first = shop();
  first.name = "A";
  const Index index = Index::read(Index::text({shop(), first}));
  EXPECT_THAT(index.notes, ElementsAre(first, shop()));
  EXPECT_TRUE(index.problems.empty());
}

TEST(Index, KeepsTheNotesThatItKnows) {
  json::Json json = json::Json::parse(Index::text({shop()}));
  json["notes"].push_back({{"format", 2}, {"name", "Next"}});
  const Index index = Index::read(json::textOf(json));
  EXPECT_THAT(index.notes, ElementsAre(shop()));
  ASSERT_EQ(index.problems.size(), 1U);
  EXPECT_EQ(index.problems[0].name, "Next");
  EXPECT_THAT(index.problems[0].why, HasSubstr("format 2"));
  json["format"] = 2;
  EXPECT_THAT(support::errorOf([&] { static_cast<void>(Index::read(json::textOf(json))); }),
              HasSubstr("format"));
  const std::string deep(1'000'000, '[');
  EXPECT_THAT(support::errorOf([&] { static_cast<void>(Index::read(deep)); }), HasSubstr("holds too much"));
  EXPECT_THAT(support::errorOf([] { static_cast<void>(Index::read("<html>")); }), HasSubstr("no index"));
}

}  // namespace
}  // namespace app::test
