#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/wiring/DrawnDeck.h"
#include "app/wiring/ToldOnce.h"
#include "basic/Date.h"
#include "deck/objects/Presentation.h"
#include "host/services.h"
#include "web/show/Show.h"

namespace app {

/// The slides of a deck as screens draw them: each page is made when it is asked for, and kept until what it
/// shows has changed. What cannot be drawn is left out, down to the bare background, and told once: nothing
/// here throws for what is wrong in a deck. Slides count from 1.
class SlidePages {
 public:
  /// `redrawn` is called from the loop when pictures were converted: every page may be another. The deck, the
  /// loop and `problems` outlive this object. `assetPrefix` stands before the names of files that pages refer
  /// to.
  SlidePages(deck::Presentation& deck, host::Loop& loop, ToldOnce& problems, std::function<void()> redrawn,
             std::string assetPrefix = "assets/");

  [[nodiscard]] const DrawnDeck& drawn() const { return drawn_; }
  /// In CSS px.
  [[nodiscard]] render::SlideSize size() const { return drawn_.renderer().size(); }
  /// Whether there was a page yet.
  [[nodiscard]] bool hasDrawn() const { return hasDrawn_; }

  /// See web::Show::view().
  [[nodiscard]] web::View view(std::optional<int> slide, std::string_view shape) const;
  web::SlideView page(int slide);
  /// What stands there when no slide does: the deck's background, as slide 0.
  web::SlideView backdrop();
  /// The element of a shape; empty when it cannot be drawn: screens keep the one that they have.
  std::string shape(int slide, std::uint32_t id);
  /// The same for cells of a table.
  std::vector<web::CellChange> cells(int slide, std::uint32_t id, const render::CellPlaces& places);
  /// Makes the state show one shape alone, at its own size; nothing when it cannot be drawn.
  void showAlone(const web::View& view, web::ScreenState& state);

  /// Shapes of the slide have been linked, or are linked no longer.
  void linksChanged(int slide) { drawn_.linksChanged(slide); }
  void forget(int slide) { pages_.erase(slide); }
  void forgetAll() { pages_.clear(); }
  /// Lets go of the other pages.
  void keepOnly(const std::function<bool(int slide)>& isHeld);
  /// Lets go of the pages whose date or time has passed since the last call; their slides. Looking at the
  /// clock holds whatever is done to it: set, put back by an hour, or stopped while the machine slept.
  std::vector<int> forgetPastTimes();

  /// The style sheet that all pages share, and the files that they refer to.
  std::optional<web::Asset> asset(std::string_view name) const;
  [[nodiscard]] static const std::string& styleSheetName();

 private:
  render::SlidePage draw(int slide);
  void watchConversions();

  deck::Presentation& deck_;
  ToldOnce& problems_;
  std::function<void()> redrawn_;
  DrawnDeck drawn_;
  std::unique_ptr<host::Timer> conversionTimer_;
  std::map<int, std::string> pages_;
  /// Slides that show the date or the time, as met so far.
  std::map<int, render::TimeShown> timed_;
  /// When they were last known to be right.
  basic::Date timedAt_;
  bool hasDrawn_ = false;
};

}  // namespace app
