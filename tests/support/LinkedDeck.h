#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "addin/support/modGlobalFunctions.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/FakeServices.h"
#include "fakes/Passage.h"
#include "model/clsPresentation.h"

namespace LF2000 {

/// A deck that an author works on: slide 1, connection 001 "Today" (Item, Price; 3 rows).
struct LinkedDeck : testing::Test {
  LinkedDeck() {
    machine.files.Write("/decks/today.txt", "Item\tPrice\nRye\t4.80\nPlum\t4.10\nSeed\t3.20\n");
    deck->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE DISPLAYTYPE", "1"},
                         {"CORVANE CONNECTION001", "0\tToday\ttoday.txt\t-1\t"}};
    presentation->ActivePresentation(handed(deck));
    modGlobalFunctions::HostApplication = handed(application);
  }

  std::shared_ptr<fakes::Shape> Add(const std::string& name, double left = 0, double top = 0) {
    fakes::Shape& shape = slide.Add(name);
    shape.left = left;
    shape.top = top;
    return slide.shapes.back();
  }
  /// The labels of the steps so far.
  [[nodiscard]] std::vector<std::string> Steps() const {
    std::vector<std::string> labels;
    for (const auto& entry : application->undoEntries) labels.push_back(entry.first);
    return labels;
  }

  fakes::Machine machine;
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  fakes::Slide& slide = deck->Add();
  std::shared_ptr<fakes::Application> application = std::make_shared<fakes::Application>();
  std::shared_ptr<clsPresentation> presentation = std::make_shared<clsPresentation>();
};

}  // namespace LF2000
