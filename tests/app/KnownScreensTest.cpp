// The list of screens that may look: its text, its file, and how a show follows it.

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "app/distribution/Digest.h"
#include "app/screens/ScreenRegister.h"
#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

namespace app::test {
namespace {

using support::errorOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string line(const std::string& token, const std::string& name) {
  return sha256(token) + "  " + name + "\n";
}

std::vector<std::string> namesOf(const ScreenList& list) {
  std::vector<std::string> names;
  for (const ScreenList::Screen& screen : list.screens()) names.push_back(screen.name);
  return names;
}

TEST(ScreenListTest, KeepsNotesAndOrderWhateverIsAddedAndRevoked) {
  ScreenList list("# Hall\r\n\n" + line("a", "HALL 1") + "  # and\n" + line("b", "Büro, \"2\" \\ #3"));
  list.add("new", sha256("c"));
  EXPECT_THAT(namesOf(list), ElementsAre("HALL 1", "Büro, \"2\" \\ #3", "new"));
  list.remove("hall 1");
  EXPECT_EQ(list.text(), "# Hall\n\n  # and\n" + line("b", "Büro, \"2\" \\ #3") + line("c", "new"));
  EXPECT_THAT(errorOf([&] { list.add("NEW", sha256("d")); }), HasSubstr("There is a screen NEW already"));
  EXPECT_THAT(errorOf([&] { list.remove("HALL 1"); }), HasSubstr("There is no screen HALL 1."));
  EXPECT_THAT(namesOf(list), ElementsAre("Büro, \"2\" \\ #3", "new"));
}

TEST(ScreenListTest, SaysWhichLineIsWrongAndWhy) {
  const std::string good = line("a", "HALL1");
  const std::pair<std::string, const char*> wrong[] = {
      {"HALL2\n", "line 2: a screen's line is the SHA-256"},
      {sha256("b").substr(1) + " HALL2", "line 2: a screen's line is"},
      {sha256("b") + "x HALL2", "line 2: a screen's line is"},
      {sha256("b"), "line 2: A screen needs a name."},
      {line("b", "hall1"), "line 2: the name hall1 stands in line 1 already."},
      {line("a", "HALL2"), "line 2: HALL2 has the token of HALL1 (line 1); each screen needs its own."},
      {line("b", "a\tb"), "has a control character"},
      {line("b", "a\x1B[2J"), "has a control character"},
      {line("b",
            "a\xE2\x80\xAE"
            "b"),
       "has a control character"},
      {line("b", "\xFF\xFE"), "must be UTF-8"},
      {line("b", std::string(101, 'x')), "at most 100 bytes"},
      {std::string("\0\0\0", 3), "line 2: a screen's line is"},
  };
  for (const auto& [text, why] : wrong) {
    const std::string list = good + text;
    EXPECT_THAT(errorOf([&] { ScreenList{list}; }), HasSubstr(why)) << text;
  }
}

struct ScreensFileTest : testing::Test {
  support::TemporaryFolder folder;
  std::string path = folder.path() / "screens.txt";

  [[nodiscard]] std::string content() const {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
};

TEST_F(ScreensFileTest, IsReplacedAsAWholeWithTheRightsItHad) {
  const ScreensFile file(path);
  EXPECT_THAT(errorOf([&] { static_cast<void>(file.read()); }), HasSubstr("cannot be read"));
  file.change([](ScreenList& list) { list.add("HALL1", sha256("a")); });
  EXPECT_THAT(content(), testing::StartsWith("# Screens that may look"));
  ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
  const std::string link = folder.path() / "link.txt";
  std::filesystem::create_symlink("screens.txt", link);
  ScreensFile(link).change([](ScreenList& list) { list.add("HALL2", sha256("b")); });
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_THAT(namesOf(file.read()), ElementsAre("HALL1", "HALL2"));
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);

  const std::string before = content();
  EXPECT_THAT(errorOf([&] { file.change([](ScreenList& list) { list.remove("HALL3"); }); }),
              HasSubstr("There is no screen HALL3."));
  EXPECT_EQ(content(), before);
  static_cast<void>(folder.write("screens.txt", before + "damaged\n"));
  EXPECT_THAT(errorOf([&] { file.change([](ScreenList& list) { list.add("HALL3", sha256("c")); }); }),
              HasSubstr("screens.txt, line 5: "));
  EXPECT_EQ(content(), before + "damaged\n");
  EXPECT_THAT(errorOf([&] { ScreensFile(folder.path()).change([](ScreenList&) {}); }),
              HasSubstr("it is a folder"));
}

TEST_F(ScreensFileTest, ARunningShowFollowsItAndKeepsTheLastGoodList) {
  platform::EventLoop loop;
  EXPECT_THAT(errorOf([&] { ScreenRegister(loop, path); }), HasSubstr("cannot be read: No such file"));
  const ScreensFile file(path);
  file.change([](ScreenList& list) {
    list.add("HALL1", sha256("a"));
    list.add("HALL2", sha256("b"));
  });
  ScreenRegister screens(loop, path);
  int changes = 0;
  std::vector<std::string> damages;
  screens.watch({[&] { ++changes; }, [&](const std::string& why) { damages.push_back(why); }});
  const auto hall = screens.withToken("a");
  ASSERT_TRUE(hall.has_value());
  EXPECT_EQ(hall->name, "HALL1");
  EXPECT_EQ(screens.nameOf(hall->key), "HALL1");
  EXPECT_FALSE(screens.withToken("c").has_value());
  EXPECT_FALSE(screens.withToken("").has_value());
  EXPECT_FALSE(screens.withToken(sha256("a")).has_value()) << "who reads the list has no token";
  screens.look();
  EXPECT_EQ(changes, 0);

  // As an editor that is writing leaves it for a moment, and then for good.
  const std::string before = content();
  static_cast<void>(folder.write("screens.txt", before.substr(0, before.size() - 12)));
  screens.look();
  EXPECT_THAT(damages, IsEmpty());
  static_cast<void>(folder.write("screens.txt", before + "what is this\n"));
  for (int i = 0; i < 3; ++i) screens.look();
  EXPECT_THAT(damages, ElementsAre(HasSubstr("screens.txt, line 5: a screen's line is")));
  std::filesystem::remove(path);
  for (int i = 0; i < 3; ++i) screens.look();
  EXPECT_THAT(damages, ElementsAre(testing::_, HasSubstr("cannot be read: No such file")));
  EXPECT_THAT(screens.names(), ElementsAre("HALL1", "HALL2"));
  EXPECT_EQ(screens.nameOf(hall->key), "HALL1");

  static_cast<void>(folder.write("screens.txt", line("z", "HALL1") + line("b", "HALL2")));
  screens.look();
  EXPECT_EQ(changes, 1);
  EXPECT_FALSE(screens.nameOf(hall->key).has_value()) << "it has another token";
  EXPECT_FALSE(screens.withToken("a").has_value());
  EXPECT_EQ(screens.withToken("z")->name, "HALL1");
}

}  // namespace
}  // namespace app::test
