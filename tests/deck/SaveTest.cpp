#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <future>
#include <thread>

#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/PackageCheck.h"
#include "support/RecordedEvents.h"
#include "support/TemporaryFolder.h"

namespace deck::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using support::changedEntries;
using support::DeckBuilder;
using support::errorOf;
using support::faultsOf;
using support::RecordedEvents;
using support::TemporaryFolder;
using support::textShape;
using support::zipOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SaveTest : public testing::Test {
 protected:
  SaveTest() {
    DeckBuilder deck;
    deck.addSlide(textShape(2, "Price", "old"));
    deck.addSlide();
    original_ = zipOf(deck.entries(), "comment");
    path_ = folder_.write("deck.pptx", original_);
    application_->Advise(&events_);
    presentation_ = application_->open(path_);
    events_.take();
  }

  void setText(const std::string& text) { textOf(*presentation_)->Text(text); }
  static std::shared_ptr<PowerPoint::TextRange> textOf(PowerPoint::Presentation& presentation) {
    return presentation.Slides()->Item(1)->Shapes()->Item("Price")->TextFrame()->TextRange();
  }
  /// The text in a file, as somebody else would read it.
  [[nodiscard]] std::string textIn(const std::string& name) const {
    const auto package = opc::Package::fromBytes(folder_.read(name), name);
    const std::string xml(package->part("ppt/slides/slide1.xml").bytes());
    const std::size_t begin = xml.find("<a:t>") + 5;
    return xml.substr(begin, xml.find("</a:t>") - begin);
  }
  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path())) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
  }
  std::string errorOfSave() {
    return errorOf([this] { presentation_->Save(); });
  }

  TemporaryFolder folder_;
  RecordedEvents events_;
  std::shared_ptr<Application> application_ = std::make_shared<Application>();
  std::string original_;
  std::string path_;
  std::shared_ptr<Presentation> presentation_;
};

TEST_F(SaveTest, WritesTheChangeAndNothingElseAndTheSameTwice) {
  setText("new");
  presentation_->Slides()->Item(2)->Tags()->Add("A", "1");
  EXPECT_FALSE(presentation_->Saved());
  presentation_->Save();
  EXPECT_TRUE(presentation_->Saved());
  const std::string first = folder_.read("deck.pptx");
  EXPECT_EQ(textIn("deck.pptx"), "new");
  EXPECT_EQ(support::commentOf(first), "comment");
  EXPECT_THAT(faultsOf(first), IsEmpty());
  EXPECT_THAT(files(), ElementsAre("deck.pptx"));

  EXPECT_THAT(changedEntries(original_, first),
              ElementsAre("[Content_Types].xml", "ppt/slides/slide1.xml", "ppt/slides/slide2.xml",
                          "ppt/slides/_rels/slide2.xml.rels", "ppt/tags/tag1.xml"));

  presentation_->Save();
  EXPECT_EQ(folder_.read("deck.pptx"), first);
  setText("newer");
  setText("new");
  presentation_->Save();
  EXPECT_EQ(folder_.read("deck.pptx"), first) << "equal states give equal files";
}

TEST_F(SaveTest, AHandlerMaySaveWithoutLiveValuesAndTheHostThenRests) {
  setText("live");
  events_.onSave = [](PowerPoint::Presentation& presentation) {
    textOf(presentation)->Text(" ");
    presentation.Save();
    textOf(presentation)->Text("live");
    presentation.Saved(true);
  };
  presentation_->Save();
  EXPECT_THAT(events_.take(), ElementsAre("save")) << "the handler's own save raises nothing";
  EXPECT_EQ(textIn("deck.pptx"), " ");
  EXPECT_EQ(textOf(*presentation_)->Text(), "live");
  EXPECT_TRUE(presentation_->Saved());

  // What a handler only changes is saved.
  events_.onSave = [](PowerPoint::Presentation& presentation) {
    textOf(presentation)->Text("by the handler");
    presentation.Saved(true);
  };
  presentation_->Save();
  EXPECT_EQ(textIn("deck.pptx"), "by the handler");
}

TEST_F(SaveTest, ACopyLeavesThePresentationAsItIs) {
  setText("new");
  presentation_->SaveCopyAs((folder_.path() / "copy.pptx").string());
  EXPECT_THAT(events_.take(), IsEmpty());
  EXPECT_FALSE(presentation_->Saved());
  EXPECT_EQ(textIn("copy.pptx"), "new");
  EXPECT_EQ(folder_.read("deck.pptx"), original_);
  presentation_->Save();
  EXPECT_EQ(folder_.read("deck.pptx"), folder_.read("copy.pptx"));
}

TEST(SaveCopy, ShowsNothingOfWhatTheDeckLookedLike) {
  const TemporaryFolder folder;
  DeckBuilder builder = DeckBuilder::of();
  builder.part("_rels/.rels",
               "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
               "<Relationship Id=\"rId2\" Target=\"docProps/thumbnail.jpeg\" "
               "Type=\"http://schemas.openxmlformats.org/package/2006/relationships/metadata/thumbnail\"/>"
               "<Relationship Id=\"rId1\" Target=\"ppt/presentation.xml\" "
               "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\"/>"
               "</Relationships>");
  builder.part("docProps/thumbnail.jpeg", "former values", "image/jpeg");
  const auto deck = builder.presentation();
  const std::string copy = (folder.path() / "copy.pptx").string();
  const auto thumbnailIn = [](opc::Package& package) {
    return package.related(opc::relationship::Thumbnail);
  };
  deck->SaveCopyAs(copy);
  deck->SaveCopyAs(copy);
  const auto package = opc::Package::open(copy);
  EXPECT_EQ(thumbnailIn(*package), nullptr);
  EXPECT_EQ(package->find("docProps/thumbnail.jpeg"), nullptr);
  EXPECT_THAT(support::faultsOf(package->serialize()), IsEmpty());
  ASSERT_NE(thumbnailIn(deck->package()), nullptr);
  EXPECT_EQ(thumbnailIn(deck->package())->bytes(), "former values");
  EXPECT_THAT(support::faultsOf(deck->package().serialize()), IsEmpty());
}

TEST_F(SaveTest, KeepsModeAndFollowsLinks) {
  ASSERT_EQ(::chmod(path_.c_str(), 0640), 0);
  fs::create_symlink("deck.pptx", folder_.path() / "link.pptx");
  const auto linked = application_->open((folder_.path() / "link.pptx").string());
  textOf(*linked)->Text("through the link");
  linked->Save();
  EXPECT_TRUE(fs::is_symlink(folder_.path() / "link.pptx"));
  EXPECT_EQ(textIn("deck.pptx"), "through the link");
  EXPECT_EQ(fs::status(path_).permissions(), fs::perms(0640));
}

TEST_F(SaveTest, LeavesAFileAloneThatAnotherProgramHasWritten) {
  setText("mine");
  const std::string theirs = original_ + "x";
  static_cast<void>(folder_.write("deck.pptx", theirs));
  EXPECT_THAT(errorOfSave(), HasSubstr("another program has changed the file"));
  EXPECT_EQ(folder_.read("deck.pptx"), theirs);
  EXPECT_FALSE(presentation_->Saved());
  presentation_->SaveCopyAs((folder_.path() / "mine.pptx").string());
  EXPECT_EQ(textIn("mine.pptx"), "mine");
  fs::remove(path_);
  presentation_->Save();
  EXPECT_EQ(textIn("deck.pptx"), "mine") << "a file that is gone is written anew";
}

TEST_F(SaveTest, SeesAWriteThatLeftSizeAndTimeAsTheyWere) {
  setText("mine");
  struct stat before {};
  struct stat after {};
  ASSERT_EQ(::stat(path_.c_str(), &before), 0);
  std::string theirs = original_;
  theirs.back() = 'x';  // of the archive's comment
  const auto isSameTick = [&] {
    return after.st_ctim.tv_sec == before.st_ctim.tv_sec && after.st_ctim.tv_nsec == before.st_ctim.tv_nsec;
  };
  do {
    std::fstream(path_, std::ios::in | std::ios::out | std::ios::binary) << theirs;
    const timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(::utimensat(AT_FDCWD, path_.c_str(), times, 0), 0);
    ASSERT_EQ(::stat(path_.c_str(), &after), 0);
  } while (isSameTick());
  ASSERT_EQ(after.st_ino, before.st_ino);
  EXPECT_THAT(errorOfSave(), HasSubstr("another program has changed the file"));
  EXPECT_EQ(folder_.read("deck.pptx"), theirs);
}

/// While somebody else is between their last look and their rename.
TEST_F(SaveTest, OfTwoThatSaveAtTheSameTimeOneIsTold) {
  for (const bool deckIsGone : {false, true}) {
    setText("mine");
    if (deckIsGone) fs::remove(path_);
    const int folder = ::open(folder_.path().c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(::flock(folder, LOCK_EX | LOCK_NB), 0);
    auto error = std::async(std::launch::async, [&] { return errorOfSave(); });
    const auto isWriting = [&] { return std::ranges::any_of(files(), [](auto& f) { return f[0] == '.'; }); };
    while (!isWriting() && error.wait_for(0s) != std::future_status::ready) std::this_thread::yield();
    static_cast<void>(folder_.write("theirs", original_));
    fs::rename(folder_.path() / "theirs", path_);
    ::close(folder);
    EXPECT_THAT(error.get(), HasSubstr("another program has changed the file"));
    EXPECT_EQ(folder_.read("deck.pptx"), original_);
    EXPECT_THAT(files(), ElementsAre("deck.pptx"));
  }
}

TEST_F(SaveTest, RemovesWhatKilledSavesLeft) {
  using std::filesystem::last_write_time;
  const auto leave = [&](const std::string& name, std::chrono::seconds age) {
    const std::string path = folder_.write(name, "half a deck");
    last_write_time(path, std::filesystem::file_time_type::clock::now() - age);
    return ::open(path.c_str(), O_RDONLY);
  };
  ::close(leave(".lumenfold.a1B2c3", 120s));
  ::close(leave(".lumenfold.recent", 0s));
  ::close(leave(".lumenfold.notes.txt", 120s));
  const int held = leave(".lumenfold.heldXX", 120s);
  ASSERT_EQ(::flock(held, LOCK_SH), 0);
  setText("new");
  presentation_->Save();
  EXPECT_THAT(files(),
              ElementsAre(".lumenfold.heldXX", ".lumenfold.notes.txt", ".lumenfold.recent", "deck.pptx"));
  ::close(held);
}

TEST_F(SaveTest, AFullDiskLeavesTheOldFileAndNoTrace) {
  setText("too much");
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit small = before;
  small.rlim_cur = 100;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const std::string error = errorOfSave();
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, oldHandler);

  EXPECT_THAT(error, testing::AllOf(HasSubstr(path_), HasSubstr("cannot be saved")));
  EXPECT_EQ(folder_.read("deck.pptx"), original_);
  EXPECT_THAT(files(), ElementsAre("deck.pptx"));
  EXPECT_FALSE(presentation_->Saved());
  presentation_->Save();
  EXPECT_EQ(textIn("deck.pptx"), "too much") << "once there is room, the change is saved";
}

TEST_F(SaveTest, AFolderThatTakesNoFileIsNamedAndWithoutAFileAskedFor) {
  const auto fresh = application_->add(DeckBuilder::of().package());
  EXPECT_THAT(events_.take(), ElementsAre("new"));
  EXPECT_THAT(errorOf([&] { fresh->Save(); }), HasSubstr("has no file yet"));
  EXPECT_EQ(fresh->FullName(), "");
  if (::geteuid() == 0) {
    // The system's administrator may write everywhere, but not where no folder is.
    fs::remove_all(folder_.path());
  } else {
    fs::permissions(folder_.path(), fs::perms(0500));
  }
  EXPECT_THAT(errorOfSave(), HasSubstr("no file can be created in its folder"));
  if (::geteuid() != 0) fs::permissions(folder_.path(), fs::perms(0700));
}

TEST(ApplicationTest, TellsWhatIsOpenAndHandsOutEachPresentationOnce) {
  const TemporaryFolder folder;
  DeckBuilder deck = DeckBuilder::of();
  const std::string path = folder.write("a.pptx", deck.bytes());
  RecordedEvents events;
  const auto application = std::make_shared<Application>();
  EXPECT_TRUE(application->Version().starts_with("9.0"));
  application->Advise(&events);
  const auto first = application->open(path);
  EXPECT_EQ(application->open((folder.path() / "." / "a.pptx").string()), first);
  EXPECT_EQ(application->Presentations()->Count(), 1);
  EXPECT_EQ(first->FullName(), path);
  application->close(first);
  application->close(first);
  EXPECT_EQ(application->Presentations()->Count(), 0);
  EXPECT_NE(application->open(path), first);
  application->Advise(nullptr);
  application->close(application->openPresentations().front());
  EXPECT_THAT(events.take(), ElementsAre("open", "close", "open"));
}

}  // namespace
}  // namespace deck::test
