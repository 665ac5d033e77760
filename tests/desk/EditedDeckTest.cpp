// A deck that is edited while others save it, programs end and files go away.

#include "app/desk/EditedDeck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "desk/DeskDeck.h"
#include "support/ErrorOf.h"
#include "support/RecordedEvents.h"

namespace app::test {
namespace {

namespace fs = std::filesystem;
using support::errorOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string Secret = "Provider=SQLOLEDB;Data Source=db;User ID=shop;Password=plum;";

/// A run of the program over a deck; state lies beside it.
struct ProgramRun {
  explicit ProgramRun(DeskDeck& deck) : desk(deck) {
    events.onSave = [this](PowerPoint::Presentation& presentation) {
      LF2000::clsPresentation linked;
      linked.Describe(edited.presentation());
      linked.PrepareSave();
      presentation.Save();
    };
    desk.application->Advise(&events);
  }
  ~ProgramRun() { desk.application->Advise(nullptr); }

  template <typename Edit>
  void step(const Edit& edit) {
    desk.application->StartNewUndoEntry("Edit", "");
    edit();
    edited.endStep();
  }
  void take() {
    edited.takeNewer();
    desk.deck = edited.presentation();
    desk.linked.Describe(desk.deck);
  }
  [[nodiscard]] std::string stateFolder() const { return desk.folder.path().string() + "/state"; }
  [[nodiscard]] std::string journal() const {
    return desk.folder.read("state/" + stateNameOf(desk.path) + ".json");
  }

  DeskDeck& desk;
  support::RecordedEvents events;
  platform::EventLoop loop;
  std::vector<std::string> heard;
  std::vector<deck::OwnerId> keptOut;
  EditedDeck edited{
      *desk.application,
      loop,
      desk.deck,
      {stateFolder(), nullptr, nullptr, [this] { return keptOut; }},
      {[this](const auto&, std::size_t kept) { heard.push_back("kept " + std::to_string(kept)); },
       [this] { heard.emplace_back("newer"); }, nullptr,
       [this](const std::string& problem) { heard.push_back(problem); }, nullptr}};
};

struct EditedDeckTest : testing::Test {
  /// The deck's file as another program saves it that was at work on it from the start.
  void saveElsewhere(const std::function<void(DeskDeck&)>& work) {
    DeskDeck other(original);
    work(other);
    other.save();
    static_cast<void>(desk.folder.write("desk.pptx", other.folder.read("desk.pptx")));
  }
  /// The same file in another run, with what is left of this one.
  void crash() { run.reset(); }
  void begin() {
    desk.application->close(desk.deck);
    desk.deck = desk.application->open(desk.path);
    desk.linked.Describe(desk.deck);
    run.emplace(desk);
  }
  static void rename(DeskDeck& deck, std::int32_t slide, const std::string& from, const std::string& to) {
    deck.shape(slide, from)->Name(to);
  }

  DeskDeck desk;
  std::string original = desk.folder.read("desk.pptx");
  std::optional<ProgramRun> run{std::in_place, desk};
};

TEST_F(EditedDeckTest, OnlyWhatIsUnsavedIsSavedAndOnlyBySave) {
  const auto before = opc::stateOfFile(desk.path);
  EXPECT_EQ(run->edited.save(), EditedDeck::Saved::NothingToDo);
  run->step([&] { desk.link(*desk.shape(2, "Title")); });
  run->edited.undo();
  EXPECT_EQ(run->edited.save(), EditedDeck::Saved::NothingToDo);
  EXPECT_EQ(opc::stateOfFile(desk.path), before);

  run->edited.redo();
  desk.fill("€4.80");
  // Touched, but the same.
  fs::last_write_time(desk.path, fs::file_time_type::clock::now() + std::chrono::hours(1));
  EXPECT_EQ(run->edited.save(), EditedDeck::Saved::Written);
  EXPECT_EQ(run->edited.unsaved(), 0U);
  EXPECT_TRUE(run->edited.undoName());
  DeskDeck saved(desk.folder.read("desk.pptx"));
  EXPECT_EQ(saved.text(2, "Title"), " ");

  run->edited.undo();
  EXPECT_EQ(run->edited.unsaved(), 1U);
  fs::remove(desk.path);
  EXPECT_EQ(run->edited.save(), EditedDeck::Saved::WrittenAnew);
  EXPECT_EQ(DeskDeck(desk.folder.read("desk.pptx")).text(2, "Title"), "Today");

  run->edited.redo();
  fs::remove(desk.path);
  fs::create_directory(desk.path);
  EXPECT_THAT(errorOf([&] { run->edited.save(); }), HasSubstr("cannot be saved"));
  EXPECT_EQ(run->edited.unsaved(), 1U);
}

TEST_F(EditedDeckTest, WhatIsKeptOutStaysUnsavedAndTheFileAsItWas) {
  const std::uint32_t slide = desk.deck->slideId(2);
  run->keptOut = {{slide, 2}, {slide, 3}};
  run->step([&] { desk.link(*desk.shape(2, "Title"), 7, "000"); });
  run->step([&] { desk.link(*desk.shape(2, "p1 Price"), 7, "000"); });
  desk.fill("made up");
  const auto before = opc::stateOfFile(desk.path);
  EXPECT_EQ(run->edited.save(), EditedDeck::Saved::NothingToDo);
  EXPECT_EQ(opc::stateOfFile(desk.path), before);

  run->step([&] { rename(desk, 2, "Table", "Board"); });
  EXPECT_EQ(run->edited.save(), EditedDeck::Saved::Written);
  DeskDeck saved(desk.folder.read("desk.pptx"));
  EXPECT_EQ(saved.text(2, "Title"), "Today");
  EXPECT_THAT(saved.everything()["2/2"], Not(HasSubstr("ROW")));
  EXPECT_THAT(saved.everything()["2/3"], HasSubstr("ROW=1"));
  EXPECT_EQ(saved.shape(2, "Board")->Name(), "Board");

  // Here they are as they were, and in the journal.
  EXPECT_EQ(run->edited.unsaved(), 2U);
  EXPECT_THAT(desk.everything()["2/2"], HasSubstr("ROW=7"));
  EXPECT_THAT(desk.everything()["2/3"], HasSubstr("ROW=7"));
  EXPECT_THAT(run->journal(), HasSubstr("000"));
  run->edited.undo();
  run->edited.undo();
  run->edited.undo();
  EXPECT_EQ(desk.text(2, "Title"), "Today");
  EXPECT_EQ(run->edited.unsaved(), 1U) << "the name";
}

TEST_F(EditedDeckTest, EditsGoOntoWhatAnotherProgramHasSaved) {
  run->step([&] { desk.link(*desk.shape(3, "Two parts"), 5); });
  run->step([&] { rename(desk, 2, "Table", "Board"); });
  run->step([&] { desk.link(*desk.shape(2, "Title"), 2); });
  run->step([&] { rename(desk, 2, "p1 Item", "Item"); });
  run->step([&] { desk.addConnection(); });
  desk.fill("live");
  saveElsewhere([](DeskDeck& other) {
    other.shape(2, "Title")->TextFrame()->TextRange()->Text("Heading");
    other.link(*other.shape(3, "Two parts"), 9);
    other.shape(3, "Two parts")->Tags()->Add("OTHER PROGRAM", "changed");
    other.setSlide(2, true);
    const auto table = other.deck->owners().find({other.deck->slideId(2), 5, 0});
    table->node.parent().remove_child(table->node);
    other.deck->noteChange(*table->part);
  });

  EXPECT_THAT(errorOf([&] { run->edited.save(); }), HasSubstr("another program has saved it meanwhile"));
  EXPECT_THAT(run->heard, ElementsAre("newer"));
  ASSERT_NE(run->edited.newer(), nullptr);
  auto& conflicts = run->edited.newer()->conflicts();
  ASSERT_EQ(conflicts.size(), 2U);
  EXPECT_TRUE(conflicts[0].isGone);
  EXPECT_EQ(conflicts[0].name, "'Board' on slide 2");
  EXPECT_FALSE(conflicts[1].isGone);
  EXPECT_EQ(conflicts[1].name, "'Two parts' on slide 3");
  EXPECT_THAT(conflicts[1].ours, HasSubstr("row 5"));
  EXPECT_THAT(conflicts[1].theirs, HasSubstr("row 9"));
  EXPECT_EQ(run->edited.newer()->kept(), 4U);
  conflicts[1].takesOurs = false;
  EXPECT_EQ(run->edited.newer()->kept(), 3U);
  // What is decided outlasts another step.
  run->step([&] { desk.link(*desk.shape(2, "Title"), 3); });
  EXPECT_FALSE(run->edited.newer()->conflicts()[1].takesOurs);

  run->take();
  EXPECT_EQ(run->heard.back(), "kept 3");
  auto all = desk.everything();
  EXPECT_THAT(all["2"], HasSubstr("PROPERTIES=-1"));
  EXPECT_THAT(all["0"], HasSubstr("CONNECTION003"));
  EXPECT_THAT(all["2/2"], HasSubstr("ROW=3"));
  EXPECT_THAT(desk.shape(2, "Item")->Name(), "Item");
  EXPECT_THAT(all["3/5"], testing::AllOf(HasSubstr("ROW=9"), HasSubstr("OTHER PROGRAM=changed")));

  // Steps up to the one that belongs to another deck are there, and know the new text.
  std::size_t undone = 0;
  while (run->edited.undo()) ++undone;
  EXPECT_EQ(undone, 4U);
  EXPECT_EQ(desk.text(2, "Title"), "Heading");
  while (run->edited.redo()) {
  }
  EXPECT_EQ(run->edited.save(), EditedDeck::Saved::Written);
  DeskDeck saved(desk.folder.read("desk.pptx"));
  EXPECT_THAT(saved.everything()["2/2"], HasSubstr("ROW=3"));
}

TEST_F(EditedDeckTest, StepsStayWhereBothHaveAddedToThePresentationOrASlide) {
  run->step([&] { desk.addConnection(); });
  run->step([&] { desk.setSlide(2, true); });
  run->step([&] { desk.link(*desk.shape(2, "Title"), 2, "003"); });
  run->edited.undo();
  saveElsewhere([](DeskDeck& other) {
    other.removeConnection("002");
    other.deck->Tags()->Add("CORVANE DISTRIBUTION START", "1");
    other.deck->Slides()->Item(2)->Tags()->Add("CORVANE SCROLLSTEP7", "True\t1\t500");
  });
  EXPECT_THAT(errorOf([&] { run->edited.save(); }), HasSubstr("another program has saved it meanwhile"));
  EXPECT_THAT(run->edited.newer()->conflicts(), IsEmpty());
  run->take();
  auto all = desk.everything();
  EXPECT_THAT(all["0"], testing::AllOf(HasSubstr("CONNECTION003"), HasSubstr("DISTRIBUTION START=1"),
                                       Not(HasSubstr("CONNECTION002"))));
  EXPECT_THAT(all["2"], testing::AllOf(HasSubstr("PROPERTIES=-1"), HasSubstr("SCROLLSTEP7")));
  EXPECT_TRUE(run->edited.redoName());
  run->edited.redo();
  EXPECT_THAT(desk.everything()["2/2"], HasSubstr("TAG=003"));
  std::size_t undone = 0;
  while (run->edited.undo()) ++undone;
  EXPECT_EQ(undone, 3U);
  EXPECT_EQ(run->edited.unsaved(), 0U);
}

TEST_F(EditedDeckTest, OfOneTagThatBothHaveChangedOneSideIsTakenAndTheOthersStay) {
  run->step([&] {
    desk.setSlide(2, true);
    desk.deck->Slides()->Item(2)->Tags()->Add("CORVANE SCROLLSTEP9", "True\t1\t500");
  });
  saveElsewhere([](DeskDeck& other) {
    other.deck->Slides()->Item(2)->Tags()->Add("CORVANE SCROLLSTEP9", "True\t2\t900");
  });
  EXPECT_THAT(errorOf([&] { run->edited.save(); }), HasSubstr("another program has saved it meanwhile"));
  auto& conflicts = run->edited.newer()->conflicts();
  ASSERT_EQ(conflicts.size(), 1U);
  conflicts[0].takesOurs = false;
  run->take();
  EXPECT_THAT(desk.everything()["2"],
              testing::AllOf(HasSubstr("PROPERTIES=-1"), HasSubstr("SCROLLSTEP9=True\t2\t900")));
  EXPECT_FALSE(run->edited.undoName()) << "the step belongs to another deck";
}

TEST_F(EditedDeckTest, WithNothingUnsavedANewerVersionIsTakenAtOnce) {
  // The same bytes are no newer version, and leave the deck to be saved.
  run->edited.upload(desk.folder.write("same", original));
  EXPECT_THAT(run->heard, IsEmpty());
  run->step([&] { desk.setSlide(2, true); });
  EXPECT_EQ(run->edited.save(), EditedDeck::Saved::Written);

  DeskDeck other(original);
  rename(other, 2, "Title", "Heading");
  other.save();
  const std::string upload = desk.folder.write("upload", other.folder.read("desk.pptx"));
  run->edited.upload(upload);
  desk.deck = run->edited.presentation();
  EXPECT_THAT(run->heard, ElementsAre("kept 0"));
  EXPECT_EQ(desk.folder.read("desk.pptx"), desk.folder.read("upload"));
  EXPECT_EQ(desk.shape(2, "Heading")->Name(), "Heading");
  EXPECT_EQ(desk.application->openPresentations().size(), 1U);

  const std::string broken = desk.folder.write("broken", original.substr(0, original.size() / 2));
  EXPECT_THAT(errorOf([&] { run->edited.upload(broken); }), Not(HasSubstr("no error")));
  EXPECT_EQ(desk.folder.read("desk.pptx"), desk.folder.read("upload"));
}

TEST_F(EditedDeckTest, WhatWasNotSavedIsRecoveredWithoutPasswords) {
  desk.fill("€4.80");
  run->step([&] { desk.unlink(*desk.shape(2, "p1 Price")); });
  run->step([&] { desk.addConnection(Secret); });
  run->step([&] { rename(desk, 2, "Title", "Heading"); });
  const std::string journal = run->journal();
  EXPECT_THAT(journal, HasSubstr("Data Source=db"));
  EXPECT_THAT(journal, Not(HasSubstr("plum")));
  struct stat status {};
  ASSERT_EQ(::stat((run->stateFolder() + "/" + stateNameOf(desk.path) + ".json").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);

  crash();
  begin();
  ASSERT_NE(run->edited.recoverable(), nullptr);
  EXPECT_EQ(run->edited.recoverable()->count(), 3U);
  // Going on with something else and ending again loses neither.
  run->step([&] { desk.setSlide(2, true); });
  crash();
  begin();
  ASSERT_NE(run->edited.recoverable(), nullptr);
  EXPECT_EQ(run->edited.recoverable()->count(), 4U);
  const auto recovered = run->edited.recover();
  EXPECT_THAT(recovered.withoutSecrets, ElementsAre("003"));
  EXPECT_TRUE(recovered.effect.presentation);
  EXPECT_EQ(run->edited.unsaved(), 4U);
  EXPECT_EQ(desk.text(2, "p1 Price"), "€4.80");
  EXPECT_EQ(desk.shape(2, "Heading")->Name(), "Heading");
  EXPECT_THAT(desk.everything()["0"], HasSubstr("Data Source=db;User ID=shop"));
  EXPECT_THAT(desk.everything()["0"], Not(HasSubstr("Password")));
  run->edited.undo();
  EXPECT_EQ(run->edited.unsaved(), 0U);

  crash();
  begin();
  EXPECT_EQ(run->edited.recoverable(), nullptr);
}

TEST_F(EditedDeckTest, APasswordThatTheDeckHasIsFoundAgain) {
  run->step([&] { desk.addConnection(Secret); });
  run->edited.save();
  run->step([&] {
    desk.linked.FindConnection("003")->ConnectionDescription("Stock");
    desk.linked.SetConnectionTags();
  });
  crash();
  begin();
  ASSERT_NE(run->edited.recoverable(), nullptr);
  EXPECT_THAT(run->edited.recoverable()->conflicts(), IsEmpty());
  EXPECT_THAT(run->edited.recover().withoutSecrets, IsEmpty());
  EXPECT_THAT(desk.everything()["0"],
              HasSubstr("Stock\tProvider=SQLOLEDB;Data Source=db;User ID=shop;Password=plum;"));
}

TEST_F(EditedDeckTest, ADamagedJournalIsToldAndPutAside) {
  for (const std::string content :
       {"{\"format\":1", "{}", "[]",
        "{\"format\":1,\"deck\":\"/other.pptx\",\"edits\":[],\"withoutSecrets\":[]}"}) {
    crash();
    const std::string file = "state/" + stateNameOf(desk.path) + ".json";
    fs::create_directory(desk.folder.path() / "state");
    static_cast<void>(desk.folder.write(file, content));
    begin();
    EXPECT_EQ(run->edited.recoverable(), nullptr);
    ASSERT_EQ(run->edited.damagedJournals().size(), 1U) << content;
    EXPECT_THAT(run->edited.damagedJournals()[0], HasSubstr("cannot be recovered"));
    EXPECT_EQ(desk.folder.read(file + ".1.damaged"), content);
  }
}

}  // namespace
}  // namespace app::test
