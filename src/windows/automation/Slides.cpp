// Slides, how they come in a show, and their animations.

#include "windows/automation/Slides.h"

#include <utility>
#include <vector>

#include "windows/automation/Classes.h"
#include "windows/automation/Optional.h"
#include "windows/automation/Shapes.h"
#include "windows/automation/Tags.h"
#include "windows/automation/TriState.h"

namespace windows::automation {
namespace {

class SlideShowTransition final : public PowerPoint::SlideShowTransition {
 public:
  explicit SlideShowTransition(com::Object transition) : transition_(std::move(transition)) {}
  [[nodiscard]] bool Hidden() const override { return transition_.flag(L"Hidden"); }
  void Hidden(bool hidden) override { transition_.put(L"Hidden", triState(hidden)); }
  [[nodiscard]] bool AdvanceOnTime() const override { return transition_.flag(L"AdvanceOnTime"); }
  void AdvanceOnTime(bool advances) override { transition_.put(L"AdvanceOnTime", triState(advances)); }
  [[nodiscard]] double AdvanceTime() const override { return transition_.real(L"AdvanceTime"); }
  void AdvanceTime(double seconds) override { transition_.put(L"AdvanceTime", seconds); }
  void EntryEffect(PowerPoint::EntryEffect effect) override {
    constexpr std::int32_t NoSound = 0;  // ppSoundNone
    transition_.put(L"EntryEffect", static_cast<std::int32_t>(effect));
    transition_.object(classes::SoundEffect, L"SoundEffect").put(L"Type", NoSound);
  }

 private:
  com::Object transition_;
};

/// Films and sounds that effects play, pause and stop (MsoAnimEffect).
bool isMedia(std::int32_t effectType) { return effectType >= 83 && effectType <= 85; }

bool hasMedia(const com::Object& sequence) {
  for (std::int32_t i = 1; i <= sequence.number(L"Count"); ++i) {
    if (isMedia(sequence.object(classes::Effect, L"Item", i).number(L"EffectType"))) return true;
  }
  return false;
}

void clear(const com::Object& sequence) {
  for (std::int32_t i = sequence.number(L"Count"); i >= 1; --i) {
    sequence.object(classes::Effect, L"Item", i).call(L"Delete");
  }
}

class TimeLine final : public PowerPoint::TimeLine {
 public:
  explicit TimeLine(com::Object slide) : slide_(std::move(slide)) {}
  void Delete() override {
    const com::Object timeLine =
        whereThere([this] { return slide_.object(classes::TimeLine, L"TimeLine"); }, com::Object());
    if (timeLine) {
      deleteEffects(timeLine);
    } else {
      switchOff();
    }
  }

 private:
  static void deleteEffects(const com::Object& timeLine) {
    std::vector<com::Object> sequences = {timeLine.object(classes::Sequence, L"MainSequence")};
    const com::Object interactive = timeLine.object(classes::Sequences, L"InteractiveSequences");
    for (std::int32_t i = 1; i <= interactive.number(L"Count"); ++i) {
      sequences.push_back(interactive.object(classes::Sequence, L"Item", i));
    }
    for (const com::Object& sequence : sequences) {
      if (hasMedia(sequence)) return;
    }
    for (const com::Object& sequence : sequences) clear(sequence);
  }
  /// Before version 10 each shape has its one effect.
  void switchOff() const {
    const com::Object shapes = slide_.object(classes::Shapes, L"Shapes");
    for (std::int32_t i = 1; i <= shapes.number(L"Count"); ++i) {
      shapes.object(classes::Shape, L"Item", i)
          .object(classes::AnimationSettings, L"AnimationSettings")
          .put(L"Animate", triState(false));
    }
  }

  com::Object slide_;
};

}  // namespace

std::shared_ptr<PowerPoint::Shapes> Slide::Shapes() {
  return std::make_shared<automation::Shapes>(slide_.object(classes::Shapes, L"Shapes"),
                                              ShapePlace{own_, SlideID()});
}

std::shared_ptr<PowerPoint::Tags> Slide::Tags() {
  return std::make_shared<automation::Tags>(slide_.object(classes::Tags, L"Tags"));
}

std::shared_ptr<PowerPoint::SlideShowTransition> Slide::SlideShowTransition() {
  return std::make_shared<automation::SlideShowTransition>(
      slide_.object(classes::SlideShowTransition, L"SlideShowTransition"));
}

std::shared_ptr<PowerPoint::TimeLine> Slide::TimeLine() {
  return std::make_shared<automation::TimeLine>(slide_);
}

std::shared_ptr<PowerPoint::Slide> Slide::Duplicate() {
  const com::Object copies = slide_.object(classes::SlideRange, L"Duplicate");
  return std::make_shared<Slide>(copies.object(classes::Slide, L"Item", 1), own_);
}

std::shared_ptr<PowerPoint::Slide> Slides::Item(std::int32_t index) {
  return std::make_shared<Slide>(slides_.object(classes::Slide, L"Item", index), own_);
}

}  // namespace windows::automation
