// Where the commands stand on the host's bars, and when they are of use.

#include "system/CommandsFixture.h"

namespace LF2000 {
namespace {

TEST_F(CommandsTest, StandOnBarsMenusAndContextMenus) {
  Load();
  const std::string pages = "&Data field… | &Picture or object… | &Clock… | &Graph…";
  const std::string links =
      " | -&Fill with rows… | Link by na&mes… | -C&opy link | Paste &link | Paste as ne&xt row"
      " | -Previo&us row | Next ro&w | -Unl&ink | Ob&jections to linking…";
  EXPECT_EQ(Captions("Menu Bar"),
            "&Lumenfold | " + pages + " | -&Slide properties… | Slide show proper&ties…" + links +
                " | -Displa&y type | &Value | &Connection | C&olumn | &Index | Column - In&dex"
                " | Connection - Colu&mn | &Nothing"
                " | -Off-li&ne copy… | Deli&very to players… | Send dec&k to players"
                " | -&Refresh | &Errors log | -&Help | We&b page | &About…");
  EXPECT_EQ(Captions("Slides"), "-&Slide properties… | Slide show proper&ties… | Link by na&mes…");
  EXPECT_EQ(Captions("Shapes"), "-" + pages + links);
  EXPECT_TRUE(bars->Item(std::string_view("Lumenfold"))->Visible());

  // No access key stands for two entries of one menu.
  const auto menu = std::dynamic_pointer_cast<Office::CommandBarPopup>(
      bars->Item(std::string_view("Menu Bar"))->Controls()->Item(1));
  for (const bool isDisplayMenu : {false, true}) {
    std::string keys;
    Walk(*menu->Controls(), [&](Office::CommandBarControl& control) {
      if ((control.Tag().find("cbrDisplay") == 0) != isDisplayMenu) return;
      const std::string caption = basic::UCase(control.Caption());
      const std::size_t mark = caption.find('&');
      ASSERT_NE(mark, std::string::npos) << caption;
      EXPECT_EQ(keys.find(caption[mark + 1]), std::string::npos) << caption;
      keys += caption[mark + 1];
    });
  }
}

TEST_F(CommandsTest, AreHiddenByExactlyOneAndDeletedInTheOrderMade) {
  machine.settings.info["HideUserInterface"] = "1";
  Load();
  EXPECT_EQ(bars->Count(), 3);
  EXPECT_TRUE(Captions("Shapes").empty());
  Select({"price"});
  addIn->OnDisconnection(AddInDesigner::RemoveMode::UserClosed);

  machine.settings.info["HideUserInterface"] = " 1";
  Load();
  const auto controls = bars->Item(std::string_view("Shapes"))->Controls();
  ASSERT_EQ(controls->Count(), 13);
  controls->Item(3)->Delete();  // by the user
  std::vector<std::int32_t> left;
  std::string firstLeft;
  bars->onChange([&] {
    const std::int32_t now = controls->Count();
    if (left.empty() || left.back() != now) left.push_back(now);
    if (now == 11) firstLeft = controls->Item(1)->Caption();
  });
  addIn->OnDisconnection(AddInDesigner::RemoveMode::UserClosed);
  EXPECT_EQ(left, (std::vector<std::int32_t>{12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0}));
  EXPECT_EQ(firstLeft, "&Picture or object…");
  EXPECT_EQ(bars->Count(), 3);
  EXPECT_TRUE(Captions("Menu Bar").empty());
  EXPECT_TRUE(machine.messageBox.shown.empty());
}

TEST_F(CommandsTest, AreEnabledByWhatIsSelected) {
  Load();
  const char* const none = "Select a shape first.";
  const char* const twin =
      "'twin' shares its name with 1 other; give each a name of its own (in PowerPoint: "
      "Selection Pane).";
  const char* const group = "'group' is a group; shapes in groups cannot be linked, so ungroup it first.";
  const struct {
    Texts selected;
    std::vector<std::pair<const char*, const char*>> reasons;
  } cases[] = {
      {{},
       {{"cbrDataField", none},
        {"cbrGraph", none},
        {"cbrSlide", ""},
        {"cbrSlideShow", ""},
        {"cbrFillWithRows", "Select the shapes that are to show rows, at least two."},
        {"cbrLinkByNames", ""},
        {"cbrUnlink", "Nothing here is linked."},
        {"cbrNotLinkable", none},
        {"cbrPasteLink", "Copy a link first."},
        {"cbrRefresh", ""},
        {"cbrWebPage", "The settings name no web page (WebPage)."},
        {"cbrProductHelp", ""},
        {"cmbDisplayType", ""}}},
      {{"price"},
       {{"cbrDataField", ""},
        {"cbrClock", ""},
        {"cbrDataObject", "'price' shows no picture."},
        {"cbrGraph", "Only charts and tables take a whole connection."},
        {"cbrUnlink", ""},
        {"cbrNotLinkable", "What is selected can be linked."},
        {"cbrCopyLink", ""},
        {"cbrRowUp", "'price' shows the first row."},
        {"cbrRowDown", ""}}},
      {{"second", "photo"},
       {{"cbrDataField", "'photo' holds no text."},
        {"cbrDataObject", "'second' shows no picture."},
        {"cbrCopyLink", "Select one shape alone."},
        {"cbrRowUp", "'photo' shows the first row."}}},
      {{"second"}, {{"cbrRowUp", ""}}},
      {{"photo"}, {{"cbrDataObject", ""}, {"cbrClock", "'photo' holds no text."}}},
      {{"chart"},
       {{"cbrGraph", ""}, {"cbrUnlink", ""}, {"cbrRowUp", "Nothing here shows a row."}, {"cbrCopyLink", ""}}},
      {{"title", "price"},
       {{"cbrFillWithRows", ""}, {"cbrDataField", ""}, {"cbrUnlink", ""}, {"cbrRowDown", ""}}},
      {{"title"}, {{"cbrUnlink", "Nothing here is linked."}, {"cbrCopyLink", "Nothing here is linked."}}},
      {{"group", "price"}, {{"cbrDataField", group}, {"cbrGraph", group}, {"cbrNotLinkable", ""}}},
      {{"twin"}, {{"cbrDataField", twin}, {"cbrNotLinkable", ""}}},
  };
  for (const auto& c : cases) {
    Select(c.selected);
    for (const auto& [tag, reason] : c.reasons) {
      EXPECT_EQ(Reason(tag), reason) << tag << " for " << testing::PrintToString(c.selected);
    }
  }
  Select({"price"});
  bars->press("cbrCopyLink");
  EXPECT_EQ(Reason("cbrPasteLink"), "") << "after each click as well";

  deck->slides.clear();
  Select({});
  EXPECT_EQ(Reason("cbrSlide"), "There is no slide.");
  host->sink->PresentationClose(deck);
  EXPECT_EQ(Reason("cbrSlideShow"), "Open a presentation first.");
  EXPECT_EQ(Reason("cbrErrorsLog"), "");
  host->window = nullptr;
  host->sink->WindowActivate(deck, window);
  EXPECT_EQ(Reason("cbrSlideShow"), "Open a presentation first.");
}

TEST_F(CommandsTest, AreEnabledByWhatIsConnected) {
  Load();
  const auto linked = fakes::inside(*addIn)->Find(handed(deck));
  linked->FindConnection("001")->CloseRecordset();
  Select({"price", "second"});
  EXPECT_EQ(Reason("cbrFillWithRows"), "No data have been read yet.");
  linked->Connections().clear();
  linked->SetConnectionTags();
  EXPECT_EQ(Reason("cbrRefresh"), "Connect data first.");
  EXPECT_EQ(Reason("cbrLinkByNames"), "Connect data first.");
}

TEST_F(CommandsTest, DisplayTypeIsPressedAndChosenTogether) {
  Load();
  std::shared_ptr<Office::CommandBarComboBox> list;
  const auto controls = bars->Item(std::string_view("Lumenfold"))->Controls();
  for (std::int32_t i = 1; i <= controls->Count(); ++i) {
    if (const auto box = std::dynamic_pointer_cast<Office::CommandBarComboBox>(controls->Item(i))) list = box;
  }
  ASSERT_NE(list, nullptr);
  Texts labels;
  for (std::int32_t i = 1; i <= list->ListCount(); ++i) labels.push_back(list->List(i));
  EXPECT_EQ(labels, (Texts{"Value", "Connection", "Column", "Index", "Column - Index", "Connection - Column",
                           "Nothing"}));
  const std::pair<const char*, const char*> types[] = {{"cbrDisplayValue", "3"},
                                                       {"cbrDisplayConnection", "Prices"},
                                                       {"cbrDisplayColumn", "Price"},
                                                       {"cbrDisplayIndex", "1"},
                                                       {"cbrDisplayColumnIndex", "Price 1"},
                                                       {"cbrDisplayConnectionColumn", "Prices Price"},
                                                       {"cbrDisplayNothing", " "}};
  EXPECT_EQ(Pressed(), "cbrDisplayValue") << "as the presentation's tag says";
  for (std::int32_t code = 7; code >= 1; --code) {
    const auto& [tag, text] = types[code - 1];
    bars->press(tag);
    EXPECT_EQ(Pressed(), tag);
    EXPECT_EQ(list->ListIndex(), code);
    EXPECT_EQ(Named("price").text, text);
  }
  bars->choose("cmbDisplayType", 3);
  EXPECT_EQ(Pressed(), "cbrDisplayColumn");
  EXPECT_EQ(Named("price").text, "Price");
}

TEST_F(CommandsTest, ADisplayTypeThatThereIsNotPressesNothing) {
  Load();
  fakes::inside(*addIn)->Find(handed(deck))->DisplayType(99);
  EXPECT_EQ(Pressed(), "");
}

TEST_F(CommandsTest, AHostWithoutContextMenusHasTheMenuAndTheBar) {
  struct FewBars final : Office::CommandBars {
    std::int32_t Count() const override { return all->Count(); }
    std::shared_ptr<Office::CommandBar> Item(std::int32_t index) override { return all->Item(index); }
    std::shared_ptr<Office::CommandBar> Item(std::string_view name) override {
      if (name == "Shapes" || name == "Slides") fakes::Fail("no such bar");
      return all->Item(name);
    }
    std::shared_ptr<Office::CommandBar> Add(std::string_view name, Office::BarPosition position) override {
      return all->Add(name, position);
    }
    std::shared_ptr<Office::CommandBars> all;
  };
  const auto few = std::make_shared<FewBars>();
  few->all = bars;
  host->commandBars = few;
  Load();
  EXPECT_EQ(bars->Item("Menu Bar")->Controls()->Count(), 1);
  EXPECT_TRUE(bars->Item("Lumenfold")->Visible());
  EXPECT_EQ(bars->Item("Shapes")->Controls()->Count(), 0);
  Select({"price"});
  EXPECT_EQ(bars->Item("Lumenfold")->Controls()->Item(1)->Enabled(), true) << "and is kept up to date";
}

}  // namespace
}  // namespace LF2000
