// The commands on the host's bars: built, enabled by what is selected, clicked and taken away.

#include <gtest/gtest.h>

#include "addin/support/modGlobalFunctions.h"
#include "deck/bars/CommandBars.h"
#include "fakes/Entry.h"
#include "fakes/FakeFormView.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "model/modLinkClipboard.h"
#include "model/modPropertyPages.h"

namespace LF2000 {
namespace {

using Texts = std::vector<std::string>;

struct CommandsTest : testing::Test {
  fakes::Machine machine;
  std::shared_ptr<deck::CommandBars> bars = deck::CommandBars::create();
  std::shared_ptr<fakes::Application> host = std::make_shared<fakes::Application>();
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  std::shared_ptr<fakes::EditWindow> window = std::make_shared<fakes::EditWindow>(deck);
  std::shared_ptr<AddInDesigner::IDTExtensibility2> addIn;

  CommandsTest() {
    modLinkClipboard::Reset();
    host->commandBars = bars;
    host->window = window;
    machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t3\nMilk\t4\n");
    machine.files.Write("/decks/Tea", "a picture");
    deck->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"},
                         {"CORVANE DISPLAYTYPE", "1"}};
    fakes::Slide& slide = deck->Add();
    slide.AddField("price", 1);
    slide.AddField("second", 2);
    slide.AddField("photo", 1, "001", "Item", 3);
    slide.AddChart("chart");
    slide.Add("title");
    slide.Add("group").type = PowerPoint::ShapeType::Group;
    slide.Add("twin");
    slide.Add("twin");
  }
  void Load() {
    fakes::load(addIn, host);
    host->sink->PresentationOpen(deck);
  }
  fakes::Shape& Named(const std::string& name) {
    for (const auto& shape : deck->slides[0]->shapes) {
      if (shape->name == name) return *shape;
    }
    fakes::Fail("no shape " + name);
  }
  void Select(const Texts& names) {
    window->shapes.clear();
    for (const std::string& name : names) window->shapes.push_back(Named(name).shared_from_this());
    host->sink->WindowSelectionChange(window);
  }

  using Visit = std::function<void(Office::CommandBarControl&)>;
  static void Walk(Office::CommandBarControls& controls, const Visit& visit) {
    for (std::int32_t i = 1; i <= controls.Count(); ++i) {
      const auto control = controls.Item(i);
      visit(*control);
      if (auto* popup = dynamic_cast<Office::CommandBarPopup*>(control.get()))
        Walk(*popup->Controls(), visit);
    }
  }
  Texts Captions(const char* bar) {
    Texts captions;
    Walk(*bars->Item(std::string_view(bar))->Controls(), [&](Office::CommandBarControl& control) {
      captions.push_back((control.BeginGroup() ? "-" : "") + control.Caption());
    });
    return captions;
  }
  /// What is said of every control with the tag; all of them say the same.
  std::string Reason(const std::string& tag) {
    std::string reason = "(none)";
    for (std::int32_t i = 1; i <= bars->Count(); ++i) {
      Walk(*bars->Item(i)->Controls(), [&](Office::CommandBarControl& control) {
        if (control.Tag() != tag) return;
        EXPECT_EQ(control.Enabled(), control.TooltipText().empty());
        EXPECT_TRUE(reason == "(none)" || reason == control.TooltipText()) << tag;
        reason = control.TooltipText();
      });
    }
    return reason;
  }
  /// The tags of the menu's pressed buttons.
  std::string Pressed() {
    std::string tags;
    Walk(*bars->Item(std::string_view("Menu Bar"))->Controls(), [&](Office::CommandBarControl& control) {
      const auto* button = dynamic_cast<Office::CommandBarButton*>(&control);
      if (button != nullptr && button->State() == Office::ButtonState::Down) tags += button->Tag();
    });
    return tags;
  }
  std::string LastDebugLine() {
    std::string log = machine.files.files["/addin/lumenfold.dbg"].content;
    log.erase(log.size() - 2);
    return log.substr(log.rfind('\n') + 1).substr(std::string("2/3/2026 12:00:00 PM.000 ").size());
  }
};

TEST_F(CommandsTest, StandOnBarsMenusAndContextMenus) {
  Load();
  EXPECT_EQ(Captions("Menu Bar"), (Texts{"&Lumenfold",
                                         "&Data field…",
                                         "&Picture or object…",
                                         "&Clock…",
                                         "&Graph…",
                                         "-&Slide properties…",
                                         "Slide show proper&ties…",
                                         "-&Fill with rows…",
                                         "Link by na&mes…",
                                         "-C&opy link",
                                         "Paste &link",
                                         "Paste as ne&xt row",
                                         "-Previo&us row",
                                         "Next ro&w",
                                         "-Unl&ink",
                                         "Ob&jections to linking…",
                                         "-Displa&y type",
                                         "&Value",
                                         "&Connection",
                                         "C&olumn",
                                         "&Index",
                                         "Column - In&dex",
                                         "Connection - Colu&mn",
                                         "&Nothing",
                                         "-Off-li&ne copy…",
                                         "Deli&very to players…",
                                         "Send dec&k to players",
                                         "-&Refresh",
                                         "&Errors log",
                                         "-&Help",
                                         "We&b page",
                                         "&About…"}));
  EXPECT_EQ(Captions("Slides"), (Texts{"-&Slide properties…", "Slide show proper&ties…", "Link by na&mes…"}));
  EXPECT_EQ(Captions("Shapes"),
            (Texts{"-&Data field…", "&Picture or object…", "&Clock…", "&Graph…", "-&Fill with rows…",
                   "Link by na&mes…", "-C&opy link", "Paste &link", "Paste as ne&xt row", "-Previo&us row",
                   "Next ro&w", "-Unl&ink", "Ob&jections to linking…"}));
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
  const Texts all = Captions("Shapes");
  ASSERT_EQ(all.size(), 13U);
  bars->Item(std::string_view("Shapes"))->Controls()->Item(3)->Delete();  // by the user
  std::vector<std::size_t> left;
  std::string firstLeft;
  bars->onChange([&] {
    const Texts now = Captions("Shapes");
    if (left.empty() || left.back() != now.size()) left.push_back(now.size());
    if (now.size() == 11) firstLeft = now.front();
  });
  addIn->OnDisconnection(AddInDesigner::RemoveMode::UserClosed);
  EXPECT_EQ(left, (std::vector<std::size_t>{12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0}));
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
    EXPECT_EQ(LastDebugLine(), "Event        " + std::string(c.tag) + "_Click");
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
  EXPECT_EQ(LastDebugLine(), "Event        cbrProductHelp_Click:Opening /addin/help/index.html");
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
