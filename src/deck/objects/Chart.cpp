#include "deck/objects/Chart.h"

#include "deck/Failure.h"

namespace deck {

/// Runs a step whose errors know the reason alone.
template <typename Step>
auto Chart::explain(const Step& step) const {
  try {
    return step();
  } catch (const basic::Error& error) {
    fail("The chart " + basic::InQuotes(presentationml::shapeName(frame_)) + " on slide " +
         std::to_string(slideIndex_) + " cannot be refilled: " + error.description + ".");
  }
}

RefillableChart& Chart::chart() const {
  return presentation_->charts().of(presentation_->slidePart(slideIndex_), frame_);
}

std::shared_ptr<MSGraph::DataSheet> Chart::DataSheet() {
  explain([this] { static_cast<void>(chart()); });
  return shared_from_this();
}

MSGraph::Table Chart::Cells() const {
  return explain([this] { return chart().data().table(); });
}

void Chart::Cells(const MSGraph::Table& table) {
  if (explain([&] { return chart().fill(table); })) presentation_->noteChartChange(slideIndex_, frame_);
}

void Chart::Check(const MSGraph::Table& table) const {
  explain([&] { chart().check(table); });
}

void Chart::Restore() {
  if (explain([this] { return chart().restore(); })) presentation_->noteChartChange(slideIndex_, frame_);
}

}  // namespace deck
