// The dialog of the off-line copy.

#include <gmock/gmock.h>

#include "model/modOfflineCopy.h"
#include "pages/OpenDeck.h"
#include "pages/frmOfflineCopy.h"

namespace LF2000 {
namespace {

using testing::HasSubstr;

struct OfflineCopyTest : OpenDeck {
  OfflineCopyTest() {
    modOfflineCopy::MadeBy(
        [this](const modOfflineCopy::Files& files, const modOfflineCopy::Options& options) {
          made.push_back(files.Copy + (options.KeepClocks ? ", clocks go on" : ""));
          return std::vector<std::string>();
        });
    std::make_shared<frmOfflineCopy>(presentation)->Open();
  }
  ~OfflineCopyTest() override { modOfflineCopy::MadeBy({}); }
  OfflineCopyTest(const OfflineCopyTest&) = delete;
  OfflineCopyTest& operator=(const OfflineCopyTest&) = delete;

  /// What is said of the name when OK is pressed.
  std::string Complaint(const std::string& name) {
    view.complaints.clear();
    view.Set("txtFile", name);
    view.Click("cmdOK");
    return view.complaints.empty() ? "none" : view.complaints.back();
  }

  std::vector<std::string> made;
};

TEST_F(OfflineCopyTest, TakesANameBesideTheDeckAndReplacesOnRequestAlone) {
  EXPECT_EQ(view.Text("txtFile"), "board-offline.pptx");
  EXPECT_THAT(Complaint("prices.xlsx"), HasSubstr("ends in .pptx"));
  EXPECT_THAT(Complaint(".pptx"), HasSubstr("ends in .pptx"));
  EXPECT_THAT(Complaint("board.pptx"), HasSubstr("the presentation itself"));
  machine.files.Write("/decks/Copy.PPTX", "former");
  EXPECT_THAT(Complaint("Copy.PPTX"), HasSubstr("There is a file of that name"));
  EXPECT_TRUE(made.empty());
  view.Check("chkReplace", true);
  view.Check("chkKeepClocks", true);
  EXPECT_EQ(Complaint("Copy.PPTX"), "none");
  EXPECT_THAT(made, testing::ElementsAre("/decks/Copy.PPTX, clocks go on"));
  EXPECT_TRUE(view.IsEmpty());
}

}  // namespace
}  // namespace LF2000
