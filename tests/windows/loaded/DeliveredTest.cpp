// The module as it is delivered: with this machine's own clock, files and settings.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "fakes/Entry.h"
#include "fakes/FakeServices.h"
#include "windows/com/WindowsApi.h"

namespace loaded {
namespace {

constexpr const wchar_t* Settings = L"Software\\VB and VBA Program Settings\\Corvane Lumenfold 2000\\Info";

struct DeliveredTest : testing::Test {
  DeliveredTest() {
    std::filesystem::create_directories(folder);
    RegSetKeyValueW(HKEY_CURRENT_USER, Settings, L"HideProgressMeterOpen", REG_SZ, L"1", 2 * sizeof(wchar_t));
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
  /// Lets messages be processed, as a host does, until the shape says so; false after a minute.
  static bool comes(const fakes::Shape& shape, const std::string& text) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (shape.text != text && std::chrono::steady_clock::now() < end) {
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
      for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;)
        DispatchMessageW(&message);
    }
    return shape.text == text;
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

}  // namespace
}  // namespace loaded
