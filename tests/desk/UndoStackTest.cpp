// Steps that are undone and redone, over a deck as authors have it.

#include "app/desk/UndoStack.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "desk/DeskDeck.h"

namespace app::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

struct UndoStackTest : testing::Test {
  void step(const std::string& label, const std::function<void()>& edit, const std::string& run = {},
            const std::string& window = {}) {
    undo.begin({label, window}, run);
    edit();
    undo.end();
  }
  void undoAll() {
    while (undo.undo()) {
    }
  }

  DeskDeck desk;
  EditLog log{desk.deck};
  UndoStack undo{log};
};

TEST_F(UndoStackTest, AStepTellsWhatItTouchedAndBringsTheAuthorsTextBack) {
  const auto before = desk.everything();
  const auto item = desk.shape(2, "p1 Item");
  step("Link Price", [&] {
    desk.link(*item);
    item->TextFrame()->TextRange()->Text("€4.80");
  });
  EXPECT_THAT(undo.undoName(), Optional(StepName{"Link Price", ""}));
  EXPECT_EQ(log.unsaved(), 1U);

  const auto undone = undo.undo();
  ASSERT_TRUE(undone);
  EXPECT_EQ(undone->label, "Link Price");
  EXPECT_FALSE(undone->presentation);
  EXPECT_THAT(undone->shapes, ElementsAre(deck::OwnerId{desk.deck->slideId(2), 4, 0}));
  EXPECT_EQ(desk.everything(), before);
  EXPECT_EQ(log.unsaved(), 0U);
  EXPECT_FALSE(undo.undo());

  ASSERT_TRUE(undo.redo());
  desk.fill("€5");
  EXPECT_EQ(desk.text(2, "p1 Item"), "€5");
  step("Unlink", [&] { desk.unlink(*item); });
  desk.fill("€6");
  EXPECT_EQ(desk.text(2, "p1 Item"), "€5");
  undo.undo();
  desk.fill("€7");
  undo.redo();
  EXPECT_EQ(desk.text(2, "p1 Item"), "€5");
  // Its links are gone, but another text would be saved.
  EXPECT_EQ(log.unsaved(), 1U);
  undoAll();
  EXPECT_EQ(desk.text(2, "p1 Item"), "Plum cake\r");
}

TEST_F(UndoStackTest, StepsOfARunAreOneAndStepsWithoutChangesAreNone) {
  const auto title = desk.shape(2, "Title");
  const auto type = [&](int row, const std::string& run = "row", const std::string& window = {}) {
    step(
        "Row " + std::to_string(row), [&] { desk.link(*title, row); }, run, window);
  };
  type(1);
  type(12);
  EXPECT_EQ(undo.steps(), 1U);
  EXPECT_THAT(undo.undoName(), Optional(StepName{"Row 12", ""}));
  type(12, "other");
  EXPECT_EQ(undo.steps(), 1U);
  // Typed back to where it began: nothing happened.
  step(
      "Row 1", [&] { desk.unlink(*title); }, "row");
  EXPECT_EQ(undo.steps(), 0U);

  type(2);
  type(3, "row", "other");
  EXPECT_EQ(undo.steps(), 2U) << "typed in another window";
  EXPECT_THAT(undo.undoName(), Optional(StepName{"Row 3", "other"}));
  undo.undo();
  undo.endRun();
  type(3);
  EXPECT_EQ(undo.steps(), 2U);
  undo.undo();
  EXPECT_TRUE(undo.redoName());
  type(4);
  EXPECT_EQ(undo.steps(), 2U);
  EXPECT_FALSE(undo.redoName());

  // Not announced, and two gestures in one handler.
  undo.endRun();
  desk.link(*title, 5);
  type(6, "");
  EXPECT_EQ(undo.steps(), 4U);
}

TEST_F(UndoStackTest, TheDisplayTypeIsNoStepAndStaysAsItIs) {
  step("Display", [&] {
    desk.linked.DisplayType(3);
    desk.linked.SetDisplayType();
  });
  EXPECT_EQ(undo.steps(), 0U);
  EXPECT_EQ(log.unsaved(), 0U);
  step("Connect", [&] { desk.addConnection(); });
  desk.linked.DisplayType(2);
  desk.linked.SetDisplayType();
  const auto undone = undo.undo();
  EXPECT_TRUE(undone->presentation);
  desk.linked.Describe(desk.deck);
  EXPECT_EQ(desk.linked.DisplayType(), 2);
  EXPECT_EQ(log.unsaved(), 0U);
}

TEST_F(UndoStackTest, HistoryHasAnEnd) {
  const auto title = desk.shape(2, "Title");
  for (int row = 1; row <= 510; ++row) step("Row", [&] { desk.link(*title, row); });
  EXPECT_EQ(undo.steps(), UndoStack::MaximumSteps);
  undoAll();
  EXPECT_THAT(desk.everything()["2/2"], testing::HasSubstr("ROW=10;"));
}

/// Edits as they come, undone and redone in between, saved in between.
class RandomEdits : public UndoStackTest, public testing::WithParamInterface<unsigned> {
 protected:
  std::shared_ptr<PowerPoint::Shape> anyShape() {
    const auto shapes = desk.deck->Slides()->Item(pick(1, 3))->Shapes();
    return shapes->Item(pick(1, shapes->Count()));
  }
  std::int32_t pick(std::int32_t from, std::int32_t to) {
    return std::uniform_int_distribution<std::int32_t>(from, to)(random);
  }
  std::string anyConnection() {
    const auto& all = desk.linked.Connections();
    return all.empty() ? "009"
                       : all[static_cast<std::size_t>(pick(0, static_cast<std::int32_t>(all.size()) - 1))]
                             ->ConnectionTagNumber();
  }

  void edit() {
    switch (pick(0, 9)) {
      case 0:
      case 1:
        return desk.link(*anyShape(), pick(1, 3), anyConnection());
      case 2:
        return desk.unlink(*anyShape());
      case 3:
        return anyShape()->Name("Name " + std::to_string(pick(1, 1000000)));
      case 4:
        return static_cast<void>(desk.addConnection());
      case 5:
        return desk.removeConnection(anyConnection());
      case 6:
        return desk.setSlide(pick(1, 3), pick(0, 1) == 1);
      case 7:  // pasted onto many
        for (std::int32_t i = 0; i < 4; ++i) desk.link(*anyShape(), i, anyConnection());
        return;
      case 8:
        desk.linked.RemoveLumenfold();
        return desk.linked.Describe(desk.deck);
      default:  // one after the other in one handler
        desk.link(*anyShape());
        return desk.unlink(*anyShape());
    }
  }

  void gesture() {
    const std::int32_t kind = pick(0, 9);
    if (kind < 7) {
      step(
          "Edit", [this] { edit(); }, kind < 2 ? "run" : "");
    } else if (kind == 7) {
      undo.redo();
    } else {
      undo.undo();
    }
    if (kind >= 7) desk.linked.Describe(desk.deck);
    desk.fill("live" + std::string(static_cast<std::size_t>(pick(0, 5)), '!'));
  }

  std::mt19937 random{GetParam()};
};

TEST_P(RandomEdits, AreAllUndone) {
  const std::string bytes = desk.folder.read("desk.pptx");
  const auto inFile = desk.everything();
  const auto differing = [&] {
    std::size_t count = 0;
    for (const auto& [owner, text] : desk.everything()) count += text != inFile.at(owner) ? 1 : 0;
    return count;
  };
  for (int i = 0; i < 120; ++i) {
    gesture();
    ASSERT_EQ(log.unsaved(), differing()) << "after gesture " << i;
  }
  const auto last = desk.everything();
  std::size_t steps = 0;
  while (undo.undo()) ++steps;
  EXPECT_EQ(desk.everything(), inFile);
  EXPECT_EQ(log.unsaved(), 0U);
  desk.fill("live");
  desk.save();
  EXPECT_TRUE(desk.folder.read("desk.pptx") == bytes) << "a save changed the file";

  for (std::size_t i = 0; i < steps; ++i) undo.redo();
  EXPECT_EQ(undo.steps(), steps);
}

TEST_P(RandomEdits, SurviveSaves) {
  for (int i = 0; i < 20; ++i) gesture();
  std::vector<std::map<std::string, std::string>> states;
  undo.endRun();
  for (int i = 0; i < 30; ++i) {
    const std::size_t steps = undo.steps();
    const auto before = desk.everything();
    step("Edit", [this] { edit(); });
    if (undo.steps() > steps) states.push_back(before);
    desk.fill("live");
    if (i % 7 != 0) continue;
    desk.save();
    log.noteSaved();
    EXPECT_EQ(log.unsaved(), 0U);
    desk.fill("refilled");
  }
  for (; !states.empty(); states.pop_back()) {
    ASSERT_TRUE(undo.undo());
    ASSERT_EQ(desk.everything(), states.back());
  }
  // Parts of tags that went with a save have come back.
  desk.save();
  const DeskDeck again(desk.folder.read("desk.pptx"));
  EXPECT_EQ(const_cast<DeskDeck&>(again).everything(), desk.everything());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEdits, testing::Range(1U, 21U));

}  // namespace
}  // namespace app::test
