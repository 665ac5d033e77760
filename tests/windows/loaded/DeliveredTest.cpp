// The module as it is delivered: with this machine's own clock, files and settings.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include "deck/bars/CommandBars.h"
#include "fakes/Entry.h"
#include "fakes/FakeServices.h"
#include "windows/com/WindowsApi.h"
#include "windows/forms/Screen.h"

namespace loaded {
namespace {

constexpr const wchar_t* Settings = L"Software\\VB and VBA Program Settings\\Corvane Lumenfold 2000\\Info";

struct DeliveredTest : testing::Test {
  DeliveredTest() {
    std::filesystem::create_directories(folder);
    for (const wchar_t* setting : {L"HideProgressMeterOpen", L"HideMsgBoxOfflineGeneration"}) {
      RegSetKeyValueW(HKEY_CURRENT_USER, Settings, setting, REG_SZ, L"1", 2 * sizeof(wchar_t));
    }
    deck->fullName = (folder / "board.pptx").string();
    deck->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"},
                         {"CORVANE DISPLAYTYPE", "1"}};
  }
  ~DeliveredTest() override {
    addIn.reset();
    RegDeleteTreeW(HKEY_CURRENT_USER, Settings);
    std::filesystem::remove_all(folder);
  }
  void write(const std::string& price) const {
    std::ofstream(folder / "prices.txt", std::ios::binary) << "Item\tPrice\nTea\t" << price << "\n";
  }
  /// Lets messages be processed, as a host does, until it is so; false after a minute.
  static bool waitFor(const std::function<bool()>& isSo) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!isSo() && std::chrono::steady_clock::now() < end) {
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
      for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;)
        DispatchMessageW(&message);
    }
    return isSo();
  }
  static bool comes(const fakes::Shape& shape, const std::string& text) {
    return waitFor([&] { return shape.text == text; });
  }

  fakes::Machine machine;
  std::filesystem::path folder = std::filesystem::temp_directory_path() / "lumenfold-delivered";
  std::shared_ptr<fakes::Application> host = std::make_shared<fakes::Application>();
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  std::shared_ptr<AddInDesigner::IDTExtensibility2> addIn;
};

TEST_F(DeliveredTest, AValueFollowsItsFileThroughADecksLife) {
  write("3");
  const fakes::Shape& shape = deck->Add().AddField("price", 1);
  fakes::load(addIn, host);
  host->sink->PresentationOpen(deck);
  EXPECT_TRUE(comes(shape, "3"));
  host->sink->SlideShowBegin(std::make_shared<fakes::Window>(deck));
  write("14");
  EXPECT_TRUE(comes(shape, "14"));
  host->sink->SlideShowEnd(deck);
  std::string saved;
  deck->onSave = [&] { saved = shape.text; };
  host->sink->PresentationSave(deck);
  EXPECT_EQ(saved, " ");
  host->sink->PresentationClose(deck);
  addIn->OnDisconnection(AddInDesigner::RemoveMode::HostShutdown);
  EXPECT_EQ(host->sink, nullptr);
}

/// By the menu, in the module's own dialogs, with keys and mouse.
TEST_F(DeliveredTest, AnAuthorWorksInDialogs) {
  write("3");
  const fakes::Shape& linked = deck->Add().AddField("item", 1, "001", "Item");
  fakes::Slide& slide = *deck->slides[0];
  fakes::Shape& price = slide.Add("price");
  fakes::Shape& group = slide.Add("group");
  group.type = PowerPoint::ShapeType::Group;
  const auto bars = deck::CommandBars::create();
  const auto window = std::make_shared<fakes::EditWindow>(deck);
  host->commandBars = bars;
  host->window = window;
  deck->disk = &host->disk;
  windows::test::Screen screen;
  const auto select = [&](fakes::Shape& shape) {
    window->shapes = {shape.shared_from_this()};
    host->sink->WindowSelectionChange(window);
  };
  const auto press = [&](const char* command) {
    bars->press(command);
    screen.settle();
  };
  fakes::load(addIn, host);
  host->sink->PresentationOpen(deck);
  ASSERT_TRUE(comes(linked, "Tea"));

  select(price);
  press("cbrDataField");
  ASSERT_FALSE(screen.isEmpty());
  EXPECT_FALSE(IsWindowEnabled(screen.host));
  screen.fill("C&olumn", "Price");
  screen.click("OK");
  EXPECT_TRUE(screen.isEmpty());
  EXPECT_EQ(price.text, "3");

  select(group);
  press("cbrNotLinkable");
  EXPECT_NE(screen.find("'group' (group) is a group"), nullptr);
  screen.press(VK_ESCAPE);
  EXPECT_TRUE(screen.isEmpty());

  press("cbrAbout");
  EXPECT_NE(screen.find("Parts of the compiler's libraries are in it"), nullptr);
  screen.click("OK");

  const std::string copy = (folder / "copy.pptx").string();
  press("cbrOfflineCopy");
  screen.fill("&File", copy);
  screen.click("OK");
  EXPECT_TRUE(screen.isEmpty());
  EXPECT_TRUE(waitFor([&] { return host->disk.contains(copy); }));
  addIn->OnDisconnection(AddInDesigner::RemoveMode::HostShutdown);
  EXPECT_TRUE(IsWindowEnabled(screen.host));
}

}  // namespace
}  // namespace loaded
