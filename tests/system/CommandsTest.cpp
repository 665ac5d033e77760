// What the commands do.

#include "addin/support/modGlobalFunctions.h"
#include "fakes/FakeFormView.h"
#include "model/modPropertyPages.h"
#include "system/CommandsFixture.h"

namespace LF2000 {
namespace {

/// The last line of the debug log, without its time.
std::string LastDebugLine(fakes::Machine& machine) {
  std::string log = machine.files.files["/addin/lumenfold.dbg"].content;
  log.erase(log.size() - 2);
  return log.substr(log.rfind('\n') + 1).substr(std::string("2/3/2026 12:00:00 PM.000 ").size());
}

TEST_F(CommandsTest, EachClickOpensItsPageAndWritesItsLine) {
  machine.settings.info["Debug"] = "True";
  Load();
  std::vector<modPropertyPages::Page> opened;
  modPropertyPages::OpenWith([&](modPropertyPages::Page page, const auto&) { opened.push_back(page); });
  using modPropertyPages::Page;
  const struct {
    Texts selected;
    const char* tag;
    Page page;
  } pages[] = {{{"price"}, "cbrDataField", Page::DataField},
               {{"photo"}, "cbrDataObject", Page::DataObject},
               {{"price"}, "cbrClock", Page::Clock},
               {{"chart"}, "cbrGraph", Page::Graph},
               {{}, "cbrSlide", Page::Slide},
               {{}, "cbrSlideShow", Page::SlideShow}};
  for (const auto& c : pages) {
    Select(c.selected);
    bars->press(c.tag);
    EXPECT_EQ(LastDebugLine(machine), "Event        " + std::string(c.tag) + "_Click");
    ASSERT_FALSE(opened.empty());
    EXPECT_EQ(opened.back(), c.page) << c.tag;
  }
  modPropertyPages::OpenWith({});
}

TEST_F(CommandsTest, HelpTheWebPageAndTheErrorsLogAreOpened) {
  machine.settings.info["Debug"] = "True";
  machine.settings.info["WebPage"] = "www.example.org/boards";
  Load();
  bars->press("cbrProductHelp");
  EXPECT_EQ(LastDebugLine(machine), "Event        cbrProductHelp_Click:Opening /addin/help/index.html");
  bars->press("cbrWebPage");
  bars->press("cbrErrorsLog");
  EXPECT_EQ(machine.shell.executed,
            (Texts{"help /addin/help/index.html 0 0", "open http://www.example.org/boards 1",
                   "open /addin/errors.txt 5"}));
}

TEST_F(CommandsTest, LinksAreCopiedPastedMovedAndTakenAway) {
  Load();
  Select({"price"});
  bars->press("cbrCopyLink");
  Select({"title", "group"});
  bars->press("cbrPasteNextRow");
  EXPECT_EQ(Named("title").text, "4");
  ASSERT_EQ(machine.messageBox.shown.size(), 1U);
  EXPECT_EQ(machine.messageBox.shown[0].text,
            "'group' is a group; shapes in groups cannot be linked, so ungroup it first.");
  EXPECT_EQ(machine.messageBox.shown[0].style, 64);
  Select({"title"});
  bars->press("cbrRowUp");
  EXPECT_EQ(Named("title").text, "3");
  EXPECT_THROW(bars->press("cbrRowUp"), basic::Error) << "it shows the first row";
  Select({"title", "price", "twin"});
  bars->press("cbrUnlink");
  EXPECT_EQ(Named("title").tags->Count() + Named("price").tags->Count(), 0);
  EXPECT_EQ(Reason("cbrUnlink"), "Nothing here is linked.");
  ASSERT_EQ(host->undoEntries.size(), 3U);

  machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t5\nMilk\t6\n");
  bars->press("cbrRefresh");
  EXPECT_EQ(Named("second").text, "6");
}

TEST_F(CommandsTest, WhatIsClickedTooLateSaysWhyItIsOfNoUse) {
  Load();
  Select({"price"});
  Named("price").tags->items.clear();
  bars->press("cbrUnlink");
  ASSERT_EQ(machine.messageBox.shown.size(), 1U);
  EXPECT_EQ(machine.messageBox.shown[0].text, "Nothing here is linked.");
  // Errors of a command are reported by the system's rule.
  modPropertyPages::OpenWith({});
  bars->press("cbrSlide");
  EXPECT_EQ(machine.messageBox.shown.at(1).text, "There are no property pages here.");
}

TEST_F(CommandsTest, OpenDialogsAndDockThePageThatFitsWhereThereIsRoom) {
  fakes::FormView view;
  machine.UseForms(&view);
  Load();
  view.docks = false;
  Select({"group"});
  EXPECT_TRUE(view.IsEmpty());
  view.docks = true;
  Select({"group"});
  EXPECT_EQ(view.TopName(), "frmNotLinkable");
  Select({"group", "twin", "price"});
  bars->press("cbrNotLinkable");
  EXPECT_EQ(view.shown.back().placement, Forms::Placement::Dialog);
  EXPECT_EQ(view.Click("cmdClose"), "");
  EXPECT_EQ(view.result, Forms::Result::OK);
  const std::pair<const char*, const char*> dialogs[] = {
      {"cbrFillWithRows", "frmFillWithRows"}, {"cbrLinkByNames", "frmLinkByNames"}, {"cbrAbout", "frmAbout"}};
  Select({"price", "second"});
  for (const auto& [tag, form] : dialogs) {
    bars->press(tag);
    EXPECT_EQ(view.TopName(), form);
  }
}

}  // namespace
}  // namespace LF2000
