#pragma once

#include <functional>
#include <memory>

#include "deck/show/SlideShow.h"
#include "web/show/Show.h"

namespace app {

/// What an operator does to a running show. A command that cannot be carried out is refused with the reason:
/// the show is over, or a slide is out of range.
class ShowControls {
 public:
  /// Null before the show has begun.
  explicit ShowControls(std::shared_ptr<deck::SlideShow> show) : show_(std::move(show)) {}

  web::Outcome next();
  web::Outcome previous();
  web::Outcome first();
  web::Outcome last();
  /// By the slide's index in the presentation, from 1, hidden or not.
  web::Outcome goTo(int slide);
  web::Outcome blank(web::Blank blank);
  web::Outcome end();

 private:
  web::Outcome command(const std::function<void(deck::SlideShow&)>& action);

  std::shared_ptr<deck::SlideShow> show_;
};

/// What covers the slide, in the words of the server.
web::Blank toWeb(deck::Blank blank);

}  // namespace app
