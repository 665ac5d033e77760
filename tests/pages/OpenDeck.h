#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fakes/FakeFormView.h"
#include "model/clsShape.h"
#include "pages/modLastUsed.h"
#include "pages/modPages.h"
#include "support/LinkedDeck.h"

namespace LF2000 {

/// A deck that is open in one window, with a second connection 002 "Offer" (Name, Price, Until; 1 row).
struct OpenDeck : LinkedDeck {
  OpenDeck() {
    machine.UseForms(&view);
    machine.files.Write("/decks/offer.txt", "Name\tPRICE\tUntil\nCake\t9.50\tMay\n");
    deck->tags->items.emplace_back("CORVANE CONNECTION002", "0\tOffer\toffer.txt\t-1\t");
    application->window = window;
    presentation->ActivePresentation(deck);
    modLastUsed::Reset();
    modPages::Reset();
    modPages::Install();
  }

  /// A text linked to 001, one below the other.
  std::shared_ptr<fakes::Shape> AddField(const std::string& name, int row,
                                         const std::string& column = "Price",
                                         const std::string& connection = "001") {
    slide.AddField(name, row, connection, column).top = 25.0 * static_cast<double>(slide.shapes.size());
    return slide.shapes.back();
  }
  std::shared_ptr<fakes::Shape> AddPicture(const std::string& name) {
    const auto shape = Add(name);
    shape->hasTextFrame = false;
    shape->type = PowerPoint::ShapeType::Picture;
    return shape;
  }

  /// Selects the shapes and docks the page that fits.
  void Dock(std::vector<std::shared_ptr<PowerPoint::Shape>> shapes) {
    window->shapes = std::move(shapes);
    modPages::Dock(presentation);
  }
  void Open(modPropertyPages::Page page, std::vector<std::shared_ptr<PowerPoint::Shape>> shapes) {
    window->shapes = std::move(shapes);
    modPropertyPages::Open(page, presentation);
  }

  /// "type connection column row format folder extension", what is empty left out.
  static std::string LinkOf(const std::shared_ptr<fakes::Shape>& shape) {
    std::string told;
    for (const auto& tag : shape->tags->items) {
      if (!tag.second.empty()) told += (told.empty() ? "" : " ") + tag.second;
    }
    return told;
  }

  fakes::FormView view;
  std::shared_ptr<fakes::EditWindow> window = std::make_shared<fakes::EditWindow>(deck);
};

}  // namespace LF2000
