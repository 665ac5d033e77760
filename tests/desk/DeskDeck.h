#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "deck/objects/Application.h"
#include "fakes/FakeServices.h"
#include "model/clsPresentation.h"
#include "support/DeckBuilder.h"
#include "support/TemporaryFolder.h"

namespace app::test {

/// A deck of three slides: a chart; texts, one of them linked, and a table; a text whose tags lie in two
/// parts. Two connections. Written as the program writes decks.
std::string deskDeck();

/// An open deck that tests edit as the system's commands do.
class DeskDeck {
 public:
  explicit DeskDeck(const std::string& bytes = deskDeck());

  [[nodiscard]] std::shared_ptr<PowerPoint::Shape> shape(std::int32_t slide, const std::string& name);
  void link(PowerPoint::Shape& shape, double row = 1, const std::string& connection = "001");
  void unlink(PowerPoint::Shape& shape);
  /// Its number.
  std::string addConnection(const std::string& connectionString = {});
  void removeConnection(const std::string& number);
  void setSlide(std::int32_t slide, bool hides);
  /// Every linked shape shows this, as data would be.
  void fill(const std::string& value);
  /// As Save of the host does, with all of its live values taken out before.
  void save();

  /// By owner ("2/3 tags"): tags, name, and what it shows unless it is linked.
  [[nodiscard]] std::map<std::string, std::string> everything();
  [[nodiscard]] std::string text(std::int32_t slide, const std::string& name) {
    return shape(slide, name)->TextFrame()->TextRange()->Text();
  }

  fakes::Machine machine;
  support::TemporaryFolder folder;
  std::string path;
  std::shared_ptr<deck::Application> application = std::make_shared<deck::Application>();
  std::shared_ptr<deck::Presentation> deck;
  LF2000::clsPresentation linked;
};

}  // namespace app::test
