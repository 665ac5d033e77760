#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/inspect/DeckPage.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/DrawnDeck.h"
#include "app/wiring/LinkedSheets.h"
#include "deck/objects/Presentation.h"
#include "deck/show/SlideShow.h"
#include "platform/EventLoop.h"

namespace app {

/// A deck as a show that begins now fills it, every slide of it, for as long as
/// this object lives. Nobody watches that show.
class FilledDeck {
 public:
  /// Throws basic::Error when the deck cannot be opened; what is wrong with its
  /// sources goes to the errors log, as in any show.
  FilledDeck(const std::string& path, platform::EventLoop& loop);
  ~FilledDeck();
  FilledDeck(const FilledDeck&) = delete;
  FilledDeck& operator=(const FilledDeck&) = delete;

  [[nodiscard]] deck::Presentation& deck() { return *deck_; }
  [[nodiscard]] int slideCount() const { return deck_->slideCount(); }
  /// In CSS px.
  [[nodiscard]] render::SlideSize size() const { return drawn_.renderer().size(); }
  /// By slide, from 1, in drawing order.
  [[nodiscard]] const std::vector<LinkedShape>& linkedShapes(int slide) const {
    return drawn_.linkedShapes(slide);
  }

  DeckPage page(int slide) { return drawPage(*deck_, drawn_, slide); }
  DeckPage sheets(const std::vector<int>& slides) { return drawSheets(*deck_, drawn_, slides); }
  /// What the page draws, as text; see render::SceneDump.
  std::string scene(int slide);

 private:
  AddInHost host_;
  std::shared_ptr<deck::Presentation> deck_;
  LinkedSheets sheets_;
  DrawnDeck drawn_;
  std::shared_ptr<deck::SlideShow> show_;
};

}  // namespace app
