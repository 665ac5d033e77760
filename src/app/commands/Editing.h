#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "deck/objects/Application.h"
#include "deck/objects/Presentation.h"
#include "model/clsPresentation.h"

namespace app {

/// A deck opened to be changed, with the system's object for it, for as long as this object lives. No
/// connection is opened, so that none stands in the way.
struct Editing {
  /// Throws basic::Error when the deck cannot be opened.
  explicit Editing(const std::string& path);

  /// The linked shapes show their values, of that connection or of all, as far as they can be read. What
  /// cannot be read is passed over.
  void fill(const std::optional<std::string>& connection = {});
  /// Marks the deck as linked, with the values on display, if it is not yet.
  void becomeLinked();
  /// Throws basic::Error when the file cannot be written, or another program has changed it meanwhile.
  void save();

  std::shared_ptr<deck::Application> application = std::make_shared<deck::Application>();
  std::shared_ptr<deck::Presentation> deck;
  LF2000::clsPresentation linked;
  /// Whether the file is kept as it is before it is written; see keepBackup().
  bool keepsBackup = false;
};

/// The slide of that number, from 1. Throws basic::Error when the deck has none such, saying how many it has.
std::shared_ptr<PowerPoint::Slide> slideOf(deck::Presentation& deck, std::int32_t number);

/// The one shape of that name on a slide, in any case of letters. Throws basic::Error when there is none,
/// naming those there are, or more than one.
std::shared_ptr<PowerPoint::Shape> shapeOf(deck::Presentation& deck, std::int32_t slideNumber,
                                           const std::string& name);

}  // namespace app
