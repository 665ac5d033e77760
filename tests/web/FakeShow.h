#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "basic/Error.h"
#include "web/show/Show.h"

namespace web::test {

/// A show whose state a test sets, and which notes what it was asked to do.
class FakeShow : public Show {
 public:
  ScreenState shown;
  std::string stateText = R"({"running":true})";
  std::map<std::string, Asset, std::less<>> assets;
  std::vector<std::string> commands;
  std::set<int> watched;
  /// How often each view was asked for.
  std::map<View, int> statesAsked;
  Health condition;
  /// What commands are refused with; empty: they are done.
  std::string refusal;
  bool broken = false;
  /// Called by end().
  std::function<void()> onEnd;

  FakeShow() {
    shown.title = "Board";
    shown.slideCount = 2;
    shown.current = SlideView{1, R"(<section class="slide" id="s1"><p id="s1-sh2">Gate 7</p></section>)"};
    shown.next = SlideView{2, R"(<section class="slide" id="s2"><p id="s2-sh2">Gate 9</p></section>)"};
  }

  std::string stateJson() override { return checked(stateText); }
  View view(std::optional<int> slide, std::string_view shape) override {
    const int known = slide.value_or(1) <= shown.slideCount ? slide.value_or(1) : 0;
    if (shape.empty()) return {View::Kind::Slide, known, {}};
    return {View::Kind::Shape, known, "s" + std::to_string(known) + "-" + std::string(shape)};
  }
  ScreenState state(const View& view) override {
    ++statesAsked[view];
    ScreenState state = checked(shown);
    if (view.kind == View::Kind::Show) return state;
    state.next.reset();
    state.current.reset();
    state.isTransparent = view.kind == View::Kind::Shape;
    if (view.slide > 0) state.current = SlideView{view.slide, "<section>pinned</section>"};
    return state;
  }
  void watch(const std::set<int>& slides) override { watched = slides; }
  Health health() override { return checked(condition); }
  std::optional<Asset> asset(std::string_view name) override {
    const auto found = assets.find(name);
    return found == assets.end() ? std::nullopt : std::optional(found->second);
  }

  Outcome next() override { return note("next"); }
  Outcome previous() override { return note("previous"); }
  Outcome first() override { return note("first"); }
  Outcome last() override { return note("last"); }
  Outcome goTo(int slide) override { return note("goto " + std::to_string(slide)); }
  Outcome blank(Blank blank) override {
    return note(blank == Blank::Black ? "black" : blank == Blank::White ? "white" : "off");
  }
  Outcome end() override {
    if (onEnd) onEnd();
    return note("end");
  }

 private:
  template <typename T>
  T checked(T value) const {
    if (broken) throw basic::Error(basic::AdapterError, "fake", "the deck is gone");
    return value;
  }
  Outcome note(std::string command) {
    commands.push_back(std::move(command));
    return refusal.empty() ? Outcome::done() : Outcome::refused(refusal);
  }
};

}  // namespace web::test
