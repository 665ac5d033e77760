// Slides: what is on them, how they come in a show, their animations.

#include <memory>
#include <utility>

#include "fakes/FakeSlide.h"
#include "windows/strict/Members.h"

namespace strict {
namespace {

/// A slide's sound, of which nothing is kept.
struct SoundEffect {};

/// The fake's time line has all effects or none: here they are one effect of the main sequence.
struct Effect {
  std::shared_ptr<PowerPoint::TimeLine> timeLine;
};
struct Sequence {
  std::shared_ptr<PowerPoint::TimeLine> timeLine;
  [[nodiscard]] std::int32_t count() const {
    const auto fake = std::dynamic_pointer_cast<fakes::TimeLine>(timeLine);
    return fake && !fake->isDeleted ? 1 : 0;
  }
};
struct NoSequences {};

}  // namespace

Class<SoundEffect> describe(Tag<SoundEffect>) {
  return Table<SoundEffect>("SoundEffect").put(L"Type", Kind::Number, [](const auto&, const Arguments&) {});
}

Class<PowerPoint::SlideShowTransition> describe(Tag<PowerPoint::SlideShowTransition>) {
  using Target = PowerPoint::SlideShowTransition;
  return Table<Target>("SlideShowTransition")
      .property(L"Hidden", Kind::TriState, &Target::Hidden, &Target::Hidden)
      .property(L"AdvanceOnTime", Kind::TriState, &Target::AdvanceOnTime, &Target::AdvanceOnTime)
      .property(L"AdvanceTime", Kind::Real, &Target::AdvanceTime, &Target::AdvanceTime)
      .put(L"EntryEffect", Kind::Number, &Target::EntryEffect)
      .get(L"SoundEffect", [](const auto&) { return std::make_shared<SoundEffect>(); });
}

Class<Effect> describe(Tag<Effect>) {
  return Table<Effect>("Effect")
      .get(L"EffectType", [](const auto&) { return std::int32_t{1}; })
      .call(L"Delete", [](const auto& it) { it->timeLine->Delete(); });
}

Class<Sequence> describe(Tag<Sequence>) {
  return Table<Sequence>("Sequence")
      .get(L"Count", &Sequence::count)
      .call(L"Item", {Kind::Number},
            [](const auto& it, const Arguments&) { return std::make_shared<Effect>(Effect{it->timeLine}); });
}

Class<NoSequences> describe(Tag<NoSequences>) {
  return Table<NoSequences>("Sequences").get(L"Count", [](const auto&) { return std::int32_t{0}; });
}

Class<PowerPoint::TimeLine> describe(Tag<PowerPoint::TimeLine>) {
  using PowerPoint::TimeLine;
  return Table<TimeLine>("TimeLine")
      .get(L"MainSequence", [](const auto& it) { return std::make_shared<Sequence>(Sequence{it}); })
      .get(L"InteractiveSequences", [](const auto&) { return std::make_shared<NoSequences>(); });
}

Class<PowerPoint::Shapes> describe(Tag<PowerPoint::Shapes>) {
  return Table<PowerPoint::Shapes>("Shapes").collection();
}

Class<PowerPoint::Slide> describe(Tag<PowerPoint::Slide>) {
  using PowerPoint::Slide;
  return Table<Slide>("Slide")
      .get(L"SlideIndex", &Slide::SlideIndex)
      .get(L"SlideID", &Slide::SlideID)
      .get(L"Shapes", &Slide::Shapes)
      .get(L"Tags", &Slide::Tags)
      .get(L"SlideShowTransition", &Slide::SlideShowTransition)
      .get(L"TimeLine", &Slide::TimeLine)
      .call(L"Duplicate", [](const auto& it) { return std::vector{it->Duplicate()}; })
      .call(L"Delete", &Slide::Delete)
      .call(L"MoveTo", {Kind::Number}, &Slide::MoveTo);
}

}  // namespace strict
