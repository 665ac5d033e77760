// What a running show knows of the freshness of its data.

#include "app/show/Freshness.h"

#include <gtest/gtest.h>

#include "addin/support/modErrors.h"
#include "fakes/FakeExcel.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "runtime/clsRuntime.h"

namespace app {
namespace {

constexpr const char* Prices = "/decks/prices.txt";
constexpr const char* Broken = "Price\tPRICE\n3\t3\n";

struct FreshnessTest : testing::Test {
  fakes::Machine machine;
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  LF2000::clsRuntime runtime;
  Freshness freshness{[this] { return runtime.Form(); }};

  FreshnessTest() {
    machine.files.Write(Prices, "Price\n3\n");
    LF2000::modErrors::SlideShowRunning = true;
  }
  void Start(const std::string& connection) {
    deck->tags->items = {{"CORVANE VERSION", "1"}, {"CORVANE CONNECTION001", connection}};
    deck->Add().AddField("p", 1);
    runtime.ActivePresentation(deck);
    runtime.StartTimers(std::make_shared<fakes::Window>(deck));
    freshness.look();
  }
  /// Looks twice a second, as a show does. The answer is whether anything was told.
  bool Pass(int milliseconds) {
    bool told = false;
    for (; milliseconds > 0; milliseconds -= 500) {
      machine.loop.Advance(500);
      told = freshness.look() || told;
    }
    return told;
  }
  web::ConnectionHealth Health() { return freshness.connections().at(0); }
};

TEST_F(FreshnessTest, AFileThatCannotBeReadIsNotDelivered) {
  Start("0\tPrices\tprices.txt\t-1\t");
  EXPECT_FALSE(Pass(60'000)) << "a file that has not changed is fresh";
  EXPECT_EQ(Health().age, 0);

  // It can be opened, but not read, and then stays as it is.
  machine.files.Write(Prices, Broken);
  EXPECT_FALSE(Pass(3'000));
  const std::uint64_t deliveries = Health().deliveries;
  EXPECT_TRUE(Pass(1'000));
  EXPECT_TRUE(freshness.isStale("001"));
  EXPECT_TRUE(Health().isStale);
  Pass(60'000);
  EXPECT_EQ(Health().deliveries, deliveries);
  EXPECT_EQ(Health().failures, 1U);
  EXPECT_NE(Health().lastError.find("PRICE"), std::string::npos) << Health().lastError;
  EXPECT_GT(Health().age, 60);
  EXPECT_EQ(deck->slides[0]->shapes[0]->text, "3");

  machine.files.Write(Prices, "Price\n4\n");
  EXPECT_TRUE(Pass(1'000));
  EXPECT_FALSE(freshness.isStale("001"));
  EXPECT_EQ(Health().deliveries, deliveries + 1);
}

TEST_F(FreshnessTest, ASlideThatStandsIsStaleWhateverItsConnectionsDeliver) {
  deck->Add().AddField("lost", 1, "009");
  Start("0\tPrices\tprices.txt\t-1\t");
  EXPECT_FALSE(Pass(3'000));
  EXPECT_TRUE(Pass(1'000));
  EXPECT_TRUE(freshness.isStale(1));
  EXPECT_FALSE(freshness.isStale(2));
  EXPECT_FALSE(Health().isStale);
  const std::vector<web::StandingSlide> standing = freshness.standingSlides();
  ASSERT_EQ(standing.size(), 1U);
  EXPECT_EQ(standing[0].slide, 1);
  EXPECT_GT(standing[0].age, 3);
  EXPECT_NE(standing[0].error.find("Connection 009"), std::string::npos) << standing[0].error;
}

TEST_F(FreshnessTest, WhatWasBrokenFromTheStartHasNeverBeenDelivered) {
  fakes::ExcelProgram excel;
  excel.installed = false;
  machine.UseExcel(&excel);
  machine.files.Write("/decks/book.xlsx", "");
  machine.files.Write(Prices, Broken);
  for (const char* connection : {"0\tPrices\tprices.txt\t-1\t", "2\tPrices\tbook.xlsx\t\t-1\tB3:D9\t"}) {
    Start(connection);
    Pass(10'000);
    EXPECT_TRUE(freshness.isStale("001")) << connection;
    EXPECT_EQ(Health().deliveries, 0U);
    EXPECT_FALSE(Health().lastSuccess.has_value());
  }
}

}  // namespace
}  // namespace app
