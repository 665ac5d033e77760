#include "app/inspect/FilledDeck.h"

namespace app {

FilledDeck::FilledDeck(const std::string& path, platform::EventLoop& loop)
    : deck_(host_.open(path, deck::Application::Damaged::Repaired)),
      sheets_(deck_, loop),
      drawn_(*deck_),
      show_(deck::SlideShow::begin(host_.application(), deck_, loop)) {}

FilledDeck::~FilledDeck() { show_->end(); }

std::string FilledDeck::scene(int slide) {
  std::string scene = drawn_.renderer().scene(slide);
  return finishConversions(drawn_) ? drawn_.renderer().scene(slide) : scene;
}

}  // namespace app
