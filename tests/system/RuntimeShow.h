#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "fakes/Entry.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "runtime/clsRuntime.h"

namespace LF2000 {

inline constexpr const char* Prices = "/decks/prices.txt";

/// A show of a deck whose connection 001 is a text file, as the host begins and ends it.
struct RuntimeShow : testing::Test {
  fakes::Machine machine;
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  std::shared_ptr<fakes::Window> window = std::make_shared<fakes::Window>(deck);
  std::shared_ptr<fakes::Application> host = std::make_shared<fakes::Application>();
  std::shared_ptr<AddInDesigner::IDTExtensibility2> addIn;

  RuntimeShow() {
    machine.files.Write(Prices, "Item\tPrice\nTea\t3\n");
    deck->tags->items = {{"CORVANE VERSION", "1"}, {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"}};
  }
  void Start() {
    if (!addIn) fakes::load(addIn, host);
    host->sink->SlideShowBegin(window);
  }
  void GoTo(std::int32_t slide) {
    window->position = slide;
    host->sink->SlideShowNextSlide(window);
  }
  void End() { host->sink->SlideShowEnd(deck); }
  bool IsRunning() const { return machine.loop.HasTimers(); }
  /// Of a running show, for tests that look at it.
  clsRuntime& Runtime() { return *fakes::inside(*addIn)->Runtime(); }

  const std::string& ErrorLog() { return machine.files.files["/addin/errors.txt"].content; }
  std::size_t LoggedErrors() {
    return static_cast<std::size_t>(std::count(ErrorLog().begin(), ErrorLog().end(), '\n'));
  }
};

}  // namespace LF2000
