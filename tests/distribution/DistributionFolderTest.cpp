#include "app/distribution/DistributionFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>

#include "app/distribution/Digest.h"
#include "app/distribution/Note.h"
#include "app/distribution/Signature.h"
#include "app/wiring/Environment.h"
#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

namespace app::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

/// 22 November 2026, 10:15:00.123 UTC.
constexpr std::int64_t Morning = 1795342500123;

struct DistributionFolderTest : testing::Test {
  DistributionFolderTest() {
    for (const char* name : {"out", "home", "home/pictures", "home/pictures/small"}) {
      fs::create_directory(disk.path() / name);
    }
    parcel.Folder = (disk.path() / "out").string();
    parcel.Name = "Shop";
    parcel.Original = (disk.path() / "home/Shop.pptx").string();
    deck("first");
  }
  /// What is sent from now on.
  void deck(const std::string& text) {
    support::DeckBuilder builder = support::DeckBuilder::of(support::textShape(2, "Title", text));
    use(builder);
  }
  void use(const support::DeckBuilder& builder) {
    content = builder.bytes();
    parcel.Presentation = disk.write("home/copy", content);
  }
  host::Sent sendIt() { return folder.Send(parcel); }
  [[nodiscard]] Note note(const std::string& name = "Shop") const {
    return Note::read(disk.read("out/" + name + ".sent.json"));
  }
  [[nodiscard]] Index index() const { return Index::read(disk.read("out/index.json")); }
  /// Names of what people see in the folder.
  [[nodiscard]] std::vector<std::string> names() const {
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(disk.path() / "out")) {
      const std::string name = entry.path().filename().string();
      if (name.front() != '.') found.push_back(name);
    }
    return found;
  }
  [[nodiscard]] std::string failure() {
    return support::errorOf([&] { sendIt(); });
  }
  [[nodiscard]] SentFile deckFile() const { return {"Shop.pptx", content.size(), sha256(content)}; }
  void put(const std::string& name, const std::string& bytes) const {
    static_cast<void>(disk.write(name, bytes));
  }
  host::Enclosure file(const std::string& path, const std::string& text) {
    return {disk.write("home/" + path, text), path, false, {}, "connection 001"};
  }

  const support::TemporaryFolder disk;
  Environment environment;
  std::int64_t now = Morning;
  DistributionFolder folder{[this] { return now; }};
  host::Parcel parcel;
  /// Of the deck.
  std::string content;
};

TEST_F(DistributionFolderTest, SendsADeckAlone) {
  const host::Sent sent = sendIt();
  EXPECT_EQ(sent.Place, (disk.path() / "out/Shop.pptx").string());
  EXPECT_EQ(sent.Bytes, content.size());
  EXPECT_EQ(disk.read("out/Shop.pptx"), content);
  const Note first = note();
  EXPECT_EQ(first.serial, Morning);
  EXPECT_THAT(first.files, ElementsAre(deckFile()));
  EXPECT_THAT(names(), UnorderedElementsAre("Shop.pptx", "Shop.sent.json", "index.json"));

  // Again, by a clock that was set back.
  now = Morning - 1000;
  deck("second");
  parcel.Way = Way::Frozen;
  sendIt();
  EXPECT_EQ(disk.read("out/Shop.pptx"), content);
  EXPECT_EQ(note().serial, Morning + 1);
  EXPECT_EQ(note().way, Way::Frozen);
  EXPECT_THAT(index().notes, ElementsAre(note()));
  const auto last = folder.Last(parcel.Folder, "Shop");
  ASSERT_TRUE(last);
  EXPECT_EQ(last->Way, Way::Frozen);
  EXPECT_FALSE(last->IsWithdrawn);
  EXPECT_FALSE(folder.Last(parcel.Folder, "Other"));

  // Everybody may read what the mask allows, as web servers run as somebody else.
  sendIt();
  const mode_t mask = ::umask(0);
  ::umask(mask);
  for (const char* name : {"out/Shop.pptx", "out/Shop.sent.json", "out/index.json"}) {
    struct stat status {};
    ASSERT_EQ(::stat((disk.path() / name).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0666U & ~mask) << name;
  }
}

TEST_F(DistributionFolderTest, SendsADeckWithItsFiles) {
  put("home/pictures/apple.png", "apple");
  put("home/pictures/small/pear.PNG", "pear");
  put("home/pictures/list.txt", "no picture");
  put("home/pictures/.hidden.png", "hidden");
  parcel.Way = Way::Files;
  parcel.Enclosures = {file("prices.txt", "1"),
                       {(disk.path() / "home/pictures").string(), "pictures", true, "png", "shape 'Photo'"},
                       {(disk.path() / "home/gone.txt").string(), "gone.txt", false, {}, "connection 002"},
                       // As another connection reads it.
                       file("prices.txt", "1")};
  const host::Sent sent = sendIt();
  EXPECT_EQ(sent.Files, 4U);
  EXPECT_EQ(sent.Bytes, content.size() + 10);
  EXPECT_THAT(sent.Warnings,
              ElementsAre(::testing::AllOf(HasSubstr("gone.txt"), HasSubstr("connection 002"))));
  const std::string package = "Shop.20261122T101500123Z";
  EXPECT_EQ(note().folder, package);
  EXPECT_THAT(note().files, ElementsAre(deckFile(), SentFile{"prices.txt", 1, sha256("1")},
                                        SentFile{"pictures/apple.png", 5, sha256("apple")},
                                        SentFile{"pictures/small/pear.PNG", 4, sha256("pear")}));
  EXPECT_EQ(disk.read("out/" + package + "/pictures/small/pear.PNG"), "pear");
  EXPECT_THAT(names(), UnorderedElementsAre(package, "Shop.sent.json", "index.json"));
}

// Somebody may be reading the one before.
TEST_F(DistributionFolderTest, KeepsOneFormerPackage) {
  parcel.Way = Way::Files;
  for (int i = 0; i < 4; ++i, now += 1000) sendIt();
  EXPECT_THAT(names(), UnorderedElementsAre("Shop.20261122T101502123Z", "Shop.20261122T101503123Z",
                                            "Shop.sent.json", "index.json"));
  parcel.Way = Way::Live;
  sendIt();
  EXPECT_THAT(names(),
              UnorderedElementsAre("Shop.20261122T101503123Z", "Shop.pptx", "Shop.sent.json", "index.json"));
  parcel.Way = Way::Files;
  sendIt();
  EXPECT_THAT(names(), Not(::testing::Contains("Shop.pptx")));
}

TEST_F(DistributionFolderTest, Withdraws) {
  sendIt();
  const PrivateKey key = PrivateKey::generate();
  folder.Withdraw(parcel.Folder, "Shop", disk.write("key", key.pem()));
  EXPECT_TRUE(note().withdrawn);
  EXPECT_TRUE(index().notes.front().isSignedBy(key.publicKey()));
  EXPECT_EQ(note().serial, Morning + 1);
  EXPECT_THAT(index().notes, ElementsAre(note()));
  EXPECT_THAT(names(), UnorderedElementsAre("Shop.sent.json", "index.json"));
  EXPECT_TRUE(folder.Last(parcel.Folder, "Shop")->IsWithdrawn);
  // One that somebody copied in by hand.
  put("out/Plant.pptx", "deck");
  folder.Withdraw(parcel.Folder, "Plant", "");
  EXPECT_THAT(index().notes, SizeIs(2));
  EXPECT_THAT(support::errorOf([&] { folder.Withdraw(parcel.Folder, "Other", ""); }),
              HasSubstr("no deck 'Other'"));
  sendIt();
  EXPECT_FALSE(note().withdrawn);
}

TEST_F(DistributionFolderTest, TheIndexHoldsEveryNoteThatIsOne) {
  put("out/Broken.sent.json", "{");
  // A note that speaks of another deck.
  put("out/Copy.sent.json", disk.read("out/Shop.sent.json"));
  sendIt();
  fs::copy_file(disk.path() / "out/Shop.sent.json", disk.path() / "out/Copied.sent.json");
  parcel.Name = "Café 2";
  sendIt();
  EXPECT_THAT(index().notes, ElementsAre(note("Café 2"), note("Shop")));
}

TEST_F(DistributionFolderTest, RefusesAndLeavesTheFolderAsItWas) {
  sendIt();
  const auto before = names();
  parcel.Name = "shop";
  EXPECT_THAT(failure(), HasSubstr("holds a deck called 'Shop' already"));
  parcel.Way = Way::Files;
  EXPECT_THAT(failure(), HasSubstr("holds a deck called 'Shop' already"));
  for (const char* name : {"", "..", "a/b", "a\\b", ".hidden", "a\nb"}) {
    parcel.Name = name;
    EXPECT_THAT(failure(), HasSubstr("no name")) << name;
  }
  parcel.Name = "Shop";
  parcel.KeyFile = disk.write("nokey", "none");
  EXPECT_THAT(failure(), HasSubstr("no private key"));
  parcel.KeyFile.clear();
  parcel.Presentation = "/nowhere/copy";
  EXPECT_THAT(failure(), HasSubstr("/nowhere/copy"));
  EXPECT_EQ(names(), before);
  EXPECT_EQ(disk.read("out/Shop.pptx"), content);

  use(support::DeckBuilder());
  parcel.Folder = "/nowhere/out";
  EXPECT_THAT(failure(), HasSubstr("'/nowhere/out' is not there"));
  parcel.Folder = disk.write("file", "");
  EXPECT_THAT(failure(), HasSubstr("is not there"));
}

// What is sent has other paths in it: the author's own deck must not become that.
TEST_F(DistributionFolderTest, NeverReplacesTheDeckItself) {
  parcel.Original = disk.write("out/Shop.pptx", "the author's");
  EXPECT_THAT(failure(), HasSubstr("deck itself lies in the distribution folder"));
  EXPECT_EQ(disk.read("out/Shop.pptx"), "the author's");
}

TEST_F(DistributionFolderTest, ANoteThatCannotBeWrittenLeavesTheFormerDeck) {
  sendIt();
  deck("second");
  // In the place of the index nothing can be put.
  fs::remove(disk.path() / "out/index.json");
  fs::create_directory(disk.path() / "out/index.json");
  put("out/index.json/file", "");
  parcel.Way = Way::Files;
  EXPECT_THAT(failure(), HasSubstr("index.json"));
  EXPECT_THAT(names(), ::testing::Contains("Shop.sent.json"));
  // The note is whole, whatever it tells of.
  const Note told = note();
  EXPECT_TRUE(fs::exists(disk.path() / "out" / told.folder / "Shop.pptx"));
}

/// A deck whose one picture is linked.
support::DeckBuilder linkedTo(const std::string& target) {
  support::DeckBuilder builder;
  const int slide = builder.addSlide();
  const std::string type = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
  const std::string id = builder.relate(slide, type + "image", target, /*external=*/true);
  builder.relate(slide, type + "hyperlink", "other.pptx", /*external=*/true);
  builder.shapes(slide, support::pictureShape(2, "Photo", R"(<a:blip r:link=")" + id + R"("/>)"));
  return builder;
}

/// The targets of the first slide of a deck.
std::vector<std::string> targets(const std::string& bytes) {
  const auto package = opc::Package::fromBytes(bytes, "sent");
  std::vector<std::string> found;
  for (const auto& each : package->part("ppt/slides/slide1.xml").relationships()) {
    if (each.external) found.push_back(each.target);
  }
  return found;
}

TEST_F(DistributionFolderTest, LinksBecomeAbsolute) {
  use(linkedTo("my%20pictures/a.png"));
  const host::Sent sent = sendIt();
  EXPECT_THAT(targets(disk.read("out/Shop.pptx")),
              ElementsAre("file://" + disk.path().string() + "/home/my%20pictures/a.png", "other.pptx"));
  EXPECT_THAT(sent.Warnings, ElementsAre(HasSubstr("lies on this machine alone")));
  EXPECT_EQ(sha256(disk.read("out/Shop.pptx")), note().files[0].sha256);
  for (const char* target : {"file:///C:\\data\\book.xlsx!Sheet1!R1C1:R2C2",
                             "file:///\\\\server\\share\\a.png", "https://example.org/a.png"}) {
    use(linkedTo(target));
    EXPECT_THAT(sendIt().Warnings, IsEmpty()) << target;
    EXPECT_EQ(targets(disk.read("out/Shop.pptx"))[0], target);
  }
}

TEST_F(DistributionFolderTest, LinkedFilesGoAlong) {
  fs::create_directory(disk.path() / "else");
  put("else/a b.xlsx", "book");
  use(linkedTo("file://" + disk.path().string() + "/else/a%20b.xlsx!Sheet1!R1C1:R2C2"));
  parcel.Way = Way::Files;
  const host::Sent sent = sendIt();
  EXPECT_THAT(sent.Warnings, IsEmpty());
  const std::string package = "out/" + note().folder;
  EXPECT_THAT(targets(disk.read(package + "/Shop.pptx")),
              ElementsAre("files/a%20b.xlsx!Sheet1!R1C1:R2C2", "other.pptx"));
  EXPECT_EQ(disk.read(package + "/files/a b.xlsx"), "book");
}

TEST(EnclosurePlaces, GivesEveryFileAPlaceOfItsOwn) {
  host::EnclosurePlaces places("/decks/shop/Shop.pptx");
  const std::pair<const char*, const char*> cases[] = {{"/decks/shop/prices.txt", "prices.txt"},
                                                       {"/decks/shop/pictures", "pictures"},
                                                       {"/decks/shop/pictures/", "pictures"},
                                                       {"/decks/shop", ""},
                                                       {"/data/prices.txt", "files/prices.txt"},
                                                       {"/other/Prices.txt", "files/2/Prices.txt"},
                                                       {"/data/prices.txt", "files/prices.txt"},
                                                       {"/decks/shop/../prices.txt", "files/3/prices.txt"},
                                                       {"C:\\data\\list.csv", "files/list.csv"},
                                                       {"/decks/shop/files/list.csv", "files/2/list.csv"},
                                                       {"/decks/shopping.txt", "files/shopping.txt"},
                                                       {"/elsewhere/Shop.pptx", "files/Shop.pptx"},
                                                       {"/", "files/folder"}};
  for (const auto& [path, place] : cases) EXPECT_EQ(places.Of(path), place) << path;
}

TEST_F(DistributionFolderTest, CopiesADatabaseThatIsInUse) {
  const std::string path = (disk.path() / "home/plant.db").string();
  sqlite3* writer = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &writer), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(writer,
                         "PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=0;"
                         "CREATE TABLE t(v); INSERT INTO t VALUES (7); BEGIN; INSERT INTO t VALUES (8)",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  parcel.Way = Way::Files;
  parcel.Enclosures = {{path, "plant.db", false, {}, "connection 001"}};
  const host::Sent sent = sendIt();
  EXPECT_THAT(sent.Warnings, IsEmpty());
  sqlite3_close(writer);

  const std::string copy = (disk.path() / "out" / note().folder / "plant.db").string();
  fs::permissions(copy, fs::perms::owner_read);
  sqlite3* reader = nullptr;
  ASSERT_EQ(sqlite3_open_v2(copy.c_str(), &reader, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
  std::string sum;
  sqlite3_exec(
      reader, "SELECT sum(v) FROM t",
      [](void* to, int, char** values, char**) {
        *static_cast<std::string*>(to) = values[0] ? values[0] : "null";
        return 0;
      },
      &sum, nullptr);
  sqlite3_close(reader);
  EXPECT_EQ(sum, "7");
}

}  // namespace
}  // namespace app::test
