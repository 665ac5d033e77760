#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "deck/objects/DocumentWindow.h"
#include "json/Json.h"

namespace app {

/// One page on the open deck: what it shows, and what it has been told.
struct DeskWindow {
  DeskWindow(std::string theName, const std::shared_ptr<deck::Presentation>& deck)
      : name(std::move(theName)), document(std::make_shared<deck::DocumentWindow>(deck)) {}

  /// The slide in sight, from 1; 0 in a deck without slides.
  [[nodiscard]] int slide() const {
    const auto deck = std::static_pointer_cast<deck::Presentation>(document->Presentation());
    return document->slide() <= deck->slideCount() ? document->slide() : 0;
  }

  std::string name;
  std::shared_ptr<deck::DocumentWindow> document;
  /// Where the cursor of the data stands; rows count from 1.
  struct Cursor {
    std::string connection;
    std::string column;
    std::int64_t row = 1;
  } cursor;
  /// The state as its page has it, without the slide's markup.
  json::Json told = json::Json::object();
  /// Of which slide the page has the markup, by its id, and of which drawing.
  std::uint32_t markupOf = 0;
  int markupDrawn = 0;
};

}  // namespace app
