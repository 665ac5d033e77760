// Slides: what is on them, how they come in a show, their animations.

#include <memory>
#include <utility>

#include "fakes/FakeSlide.h"
#include "windows/strict/Members.h"

namespace strict {
namespace {

using SlidePtr = std::shared_ptr<PowerPoint::Slide>;

/// A slide's sound, of which nothing is kept.
struct SoundEffect {};

const Class<SoundEffect>& soundEffectClass() {
  static const Class<SoundEffect> type{
      "SoundEffect", {put<SoundEffect>(L"Type", Kind::Number, [](const auto&, const Arguments&) {})}};
  return type;
}

const Class<PowerPoint::SlideShowTransition>& transitionClass() {
  using Target = PowerPoint::SlideShowTransition;
  static const Class<Target> type{
      "SlideShowTransition",
      {get<Target>(L"Hidden", [](const auto& it) { return triState(it->Hidden()); }),
       put<Target>(L"Hidden", Kind::TriState,
                   [](const auto& it, const Arguments& arguments) { it->Hidden(arguments.flag(0)); }),
       get<Target>(L"AdvanceOnTime", [](const auto& it) { return triState(it->AdvanceOnTime()); }),
       put<Target>(L"AdvanceOnTime", Kind::TriState,
                   [](const auto& it, const Arguments& arguments) { it->AdvanceOnTime(arguments.flag(0)); }),
       get<Target>(L"AdvanceTime", [](const auto& it) { return it->AdvanceTime(); }),
       put<Target>(L"AdvanceTime", Kind::Real,
                   [](const auto& it, const Arguments& arguments) { it->AdvanceTime(arguments.real(0)); }),
       put<Target>(L"EntryEffect", Kind::Number,
                   [](const auto& it, const Arguments& arguments) {
                     it->EntryEffect(static_cast<PowerPoint::EntryEffect>(arguments.number(0)));
                   }),
       get<Target>(L"SoundEffect", [](const auto&) {
         return dispatchOf(std::make_shared<SoundEffect>(), soundEffectClass());
       })}};
  return type;
}

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

const Class<Effect>& effectClass() {
  static const Class<Effect> type{
      "Effect",
      {get<Effect>(L"EffectType", [](const auto&) { return std::int32_t{1}; }),
       action<Effect>(L"Delete", [](const auto& it) { it->timeLine->Delete(); })}};
  return type;
}

const Class<Sequence>& sequenceClass() {
  static const Class<Sequence> type{
      "Sequence",
      {get<Sequence>(L"Count", [](const auto& it) { return it->count(); }),
       call<Sequence>(L"Item", {Kind::Number}, [](const auto& it, const Arguments&) {
         return dispatchOf(std::make_shared<Effect>(Effect{it->timeLine}), effectClass());
       })}};
  return type;
}

const Class<NoSequences>& sequencesClass() {
  static const Class<NoSequences> type{
      "Sequences", {get<NoSequences>(L"Count", [](const auto&) { return std::int32_t{0}; })}};
  return type;
}

const Class<PowerPoint::TimeLine>& timeLineClass() {
  using Target = PowerPoint::TimeLine;
  static const Class<Target> type{"TimeLine",
                                  {get<Target>(L"MainSequence",
                                               [](const auto& it) {
                                                 return dispatchOf(std::make_shared<Sequence>(Sequence{it}),
                                                                   sequenceClass());
                                               }),
                                   get<Target>(L"InteractiveSequences", [](const auto&) {
                                     return dispatchOf(std::make_shared<NoSequences>(), sequencesClass());
                                   })}};
  return type;
}

const Class<PowerPoint::Shapes>& shapesClass() {
  using Target = PowerPoint::Shapes;
  static const Class<Target> type{
      "Shapes",
      {get<Target>(L"Count", [](const auto& it) { return it->Count(); }),
       call<Target>(L"Item", {Kind::TextOrNumber}, [](const auto& it, const Arguments& arguments) {
         return arguments.isText(0) ? it->Item(arguments.text(0)) : it->Item(arguments.number(0));
       })}};
  return type;
}

const Class<List<PowerPoint::Slide>>& slideRangeClass() {
  static const Class<List<PowerPoint::Slide>> type = listClass<PowerPoint::Slide>("SlideRange");
  return type;
}

const Class<PowerPoint::Slide>& slideClass() {
  using Target = PowerPoint::Slide;
  static const Class<Target> type{
      "Slide",
      {get<Target>(L"SlideIndex", [](const auto& it) { return it->SlideIndex(); }),
       get<Target>(L"SlideID", [](const auto& it) { return it->SlideID(); }),
       get<Target>(L"Shapes", [](const auto& it) { return dispatchOf(it->Shapes(), shapesClass()); }),
       get<Target>(L"Tags", [](const auto& it) { return it->Tags(); }),
       get<Target>(L"SlideShowTransition",
                   [](const auto& it) { return dispatchOf(it->SlideShowTransition(), transitionClass()); }),
       get<Target>(L"TimeLine", [](const auto& it) { return dispatchOf(it->TimeLine(), timeLineClass()); }),
       action<Target>(L"Duplicate",
                      [](const auto& it) { return listOf(slideRangeClass(), {it->Duplicate()}); }),
       action<Target>(L"Delete", [](const auto& it) { it->Delete(); }),
       call<Target>(L"MoveTo", {Kind::Number},
                    [](const auto& it, const Arguments& arguments) { it->MoveTo(arguments.number(0)); })}};
  return type;
}

}  // namespace

Ptr<IDispatch> of(const SlidePtr& target) { return dispatchOf(target, slideClass()); }

}  // namespace strict
