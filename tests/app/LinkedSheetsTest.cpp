// Cells of workbooks that are linked into a deck: what goes wrong with them.

#include "app/wiring/LinkedSheets.h"

#include "app/ShowTest.h"

namespace app::test {
namespace {

using LinkedSheetsTest = ShowTest;

TEST_F(LinkedSheetsTest, AreReadAgainWhateverHappenedBefore) {
  int reads = 0;
  const auto deck = open(deckWithSheet());
  machine.files.onLocalPath = [&](std::string_view) {
    ++reads;
    throw std::runtime_error("out of threads");
  };
  const LinkedSheets sheets(deck, loop);
  deck->UpdateLinks();
  deck->UpdateLinks();
  EXPECT_EQ(reads, 3);

  const std::string log = errorLog();
  EXPECT_NE(log.find("Slide 1, shape 'Sheet': out of threads"), std::string::npos) << log;
  EXPECT_EQ(log.find("out of threads"), log.rfind("out of threads")) << "told more than once";
}

TEST_F(LinkedSheetsTest, AreNotReadWithinTheirOwnReading) {
  int reads = 0;
  const auto deck = open(deckWithSheet());
  machine.files.onLocalPath = [&](std::string_view) {
    ++reads;
    deck->UpdateLinks();
  };
  const LinkedSheets sheets(deck, loop);
  EXPECT_EQ(reads, 1);
}

}  // namespace
}  // namespace app::test
