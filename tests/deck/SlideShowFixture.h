#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "deck/objects/Application.h"
#include "deck/show/SlideShow.h"
#include "fakes/FakeServices.h"
#include "support/DeckBuilder.h"
#include "support/RecordedEvents.h"

namespace deck::test {

/// A show of slides that a test describes by a letter each: "v" visible, "h"
/// hidden, a digit goes on by itself after so many seconds.
class SlideShowTest : public testing::Test, public SlideShowListener {
 protected:
  SlideShowTest() { application_->Advise(&events_); }

  std::shared_ptr<SlideShow> begin(const std::string& slides, const SlideShowOptions& options = {}) {
    for (char kind : slides) {
      const int slide = deck_.addSlide();
      if (kind == 'h') deck_.slideAttributes(slide, "show=\"0\"");
      if (kind >= '0' && kind <= '9') {
        deck_.afterCommonData(slide, std::string("<p:transition advTm=\"") + kind + "000\"/>");
      }
    }
    presentation_ = deck_.presentation();
    return show_ = SlideShow::begin(*application_, presentation_, loop_, options, this);
  }
  void hide(std::int32_t slide, bool hidden = true) {
    presentation_->Slides()->Item(slide)->SlideShowTransition()->Hidden(hidden);
  }
  /// The position when so many milliseconds have gone by.
  std::int32_t after(int milliseconds) {
    loop_.Advance(milliseconds);
    return show_->position();
  }
  /// The positions that a number of steps forward lead to; 0 once it has ended.
  std::vector<std::int32_t> steps(int count) {
    std::vector<std::int32_t> positions;
    for (int i = 0; i < count; ++i) {
      show_->next();
      positions.push_back(show_->isRunning() ? show_->position() : 0);
    }
    return positions;
  }

  void slideChanged() override { heard_.push_back("slide " + std::to_string(show_ ? show_->position() : 0)); }
  void blankChanged() override {
    heard_.push_back("blank " + std::to_string(static_cast<int>(show_->blank())));
  }
  void buildChanged() override { heard_.push_back("build " + std::to_string(show_->builtSteps())); }
  void ended() override { heard_.emplace_back("ended"); }
  bool wentThrough() override {
    if (isFollowed_) heard_.emplace_back("through");
    return isFollowed_;
  }

  support::DeckBuilder deck_;
  fakes::Loop loop_;
  support::RecordedEvents events_;
  std::shared_ptr<Application> application_ = std::make_shared<Application>();
  std::shared_ptr<Presentation> presentation_;
  std::shared_ptr<SlideShow> show_;
  std::vector<std::string> heard_;
  /// What the show is told when it has gone through its slides.
  bool isFollowed_ = false;
};

}  // namespace deck::test
