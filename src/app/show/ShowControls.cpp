#include "app/show/ShowControls.h"

#include "basic/Error.h"

namespace app {

namespace {

deck::Blank toDeck(web::Blank blank) {
  switch (blank) {
    case web::Blank::Black:
      return deck::Blank::Black;
    case web::Blank::White:
      return deck::Blank::White;
    case web::Blank::None:
      break;
  }
  return deck::Blank::None;
}

}  // namespace

web::Blank toWeb(deck::Blank blank) {
  switch (blank) {
    case deck::Blank::Black:
      return web::Blank::Black;
    case deck::Blank::White:
      return web::Blank::White;
    case deck::Blank::None:
      break;
  }
  return web::Blank::None;
}

web::Outcome ShowControls::command(const std::function<void(deck::SlideShow&)>& action) {
  if (!show_ || !show_->isRunning()) return web::Outcome::refused("The show has ended.");
  try {
    action(*show_);
  } catch (const basic::Error& error) {
    return web::Outcome::refused(error.description);
  }
  return web::Outcome::done();
}

web::Outcome ShowControls::next() {
  return command([](deck::SlideShow& show) { show.next(); });
}
web::Outcome ShowControls::previous() {
  return command([](deck::SlideShow& show) { show.previous(); });
}
web::Outcome ShowControls::first() {
  return command([](deck::SlideShow& show) { show.first(); });
}
web::Outcome ShowControls::last() {
  return command([](deck::SlideShow& show) { show.last(); });
}
web::Outcome ShowControls::goTo(int slide) {
  return command([slide](deck::SlideShow& show) { show.goTo(slide); });
}
web::Outcome ShowControls::blank(web::Blank blank) {
  return command([blank](deck::SlideShow& show) { show.blank(toDeck(blank)); });
}
web::Outcome ShowControls::end() {
  return command([](deck::SlideShow& show) { show.end(); });
}

}  // namespace app
