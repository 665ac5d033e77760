#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

#include "deck/bars/CommandBars.h"
#include "fakes/Entry.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"

namespace LF2000 {

/// A deck in whose window an author works: the host opens it, presses commands and saves.
struct EditedDeck : testing::Test {
  fakes::Machine machine;
  std::shared_ptr<deck::CommandBars> bars = deck::CommandBars::create();
  std::shared_ptr<fakes::Application> host = std::make_shared<fakes::Application>();
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  std::shared_ptr<fakes::EditWindow> window = std::make_shared<fakes::EditWindow>(deck);
  std::shared_ptr<AddInDesigner::IDTExtensibility2> addIn;

  EditedDeck() {
    host->commandBars = bars;
    host->window = window;
  }

  /// The deck, which may be another one by now.
  void Open() {
    if (!addIn) fakes::load(addIn, host);
    host->window = window = std::make_shared<fakes::EditWindow>(deck);
    host->sink->PresentationOpen(deck);
  }
  void Press(std::string_view command) { bars->press(command); }
  void Save() { host->sink->PresentationSave(deck); }
};

}  // namespace LF2000
