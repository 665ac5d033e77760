#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "addin/support/modErrors.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "fakes/Passage.h"
#include "runtime/clsRuntime.h"

namespace LF2000 {

inline constexpr const char* Prices = "/decks/prices.txt";

/// A show of a deck whose connection 001 is a text file.
struct RuntimeShow : testing::Test {
  fakes::Machine machine;
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  std::shared_ptr<fakes::Window> window = std::make_shared<fakes::Window>(deck);
  clsRuntime runtime;

  RuntimeShow() {
    machine.files.Write(Prices, "Item\tPrice\nTea\t3\n");
    deck->tags->items = {{"CORVANE VERSION", "1"}, {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"}};
    modErrors::SlideShowRunning = true;
  }
  void Start() {
    runtime.ActivePresentation(handed(deck));
    runtime.StartTimers(handed(window));
  }
  void GoTo(std::int32_t slide) {
    window->position = slide;
    runtime.SlideShowNextSlide(handed(window));
  }
  const std::string& ErrorLog() { return machine.files.files["/addin/errors.txt"].content; }
  std::size_t LoggedErrors() {
    return static_cast<std::size_t>(std::count(ErrorLog().begin(), ErrorLog().end(), '\n'));
  }
};

}  // namespace LF2000
