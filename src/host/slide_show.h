#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// What the object model says about how slides and shows are to run; conventions as in host/powerpoint.h.

namespace PowerPoint {

/// PpSlideShowType.
enum class SlideShowType : std::int32_t { Speaker = 1, Window = 2, Kiosk = 3 };

/// PpSlideShowPointerType, as far as used.
enum class SlideShowPointerType : std::int32_t {
  None = 0,
  Arrow = 1,
  Pen = 2,
  AlwaysHidden = 3,
  AutoArrow = 4
};

/// PpEntryEffect, as far as used.
enum class EntryEffect : std::int32_t { None = 0 };

/// PpSlideShowRangeType.
enum class SlideShowRangeType : std::int32_t { ShowAll = 1, ShowSlideRange = 2, ShowNamedSlideShow = 3 };

/// How a slide comes and goes in a show.
class SlideShowTransition {
 public:
  virtual ~SlideShowTransition() = default;
  /// Whether shows pass over the slide.
  [[nodiscard]] virtual bool Hidden() const = 0;
  virtual void Hidden(bool hidden) = 0;
  /// Whether the show moves on by itself after AdvanceTime.
  [[nodiscard]] virtual bool AdvanceOnTime() const = 0;
  /// A host may forget the time where the show does not move on by it, so this goes before AdvanceTime.
  virtual void AdvanceOnTime(bool advances) = 0;
  /// Seconds.
  [[nodiscard]] virtual double AdvanceTime() const = 0;
  virtual void AdvanceTime(double seconds) = 0;
  /// None: the slide comes at once, and without the sound of its effect.
  virtual void EntryEffect(PowerPoint::EntryEffect effect) = 0;
};

/// A custom show.
class NamedSlideShow {
 public:
  virtual ~NamedSlideShow() = default;
  [[nodiscard]] virtual std::string Name() const = 0;
  /// In the order of the show; a slide may come twice.
  [[nodiscard]] virtual std::vector<std::int32_t> SlideIDs() const = 0;
  /// Ids that are none are an error. A service of the host: the object model takes such a show away and adds
  /// another, to which nothing leads.
  virtual void SlideIDs(const std::vector<std::int32_t>& ids) = 0;
};

class NamedSlideShows {
 public:
  virtual ~NamedSlideShows() = default;
  [[nodiscard]] virtual std::int32_t Count() const = 0;
  /// Index out of range is an error.
  [[nodiscard]] virtual std::shared_ptr<NamedSlideShow> Item(std::int32_t index) = 0;
};

/// How a presentation's shows are to run.
class SlideShowSettings {
 public:
  virtual ~SlideShowSettings() = default;
  [[nodiscard]] virtual SlideShowType ShowType() const = 0;
  [[nodiscard]] virtual SlideShowRangeType RangeType() const = 0;
  virtual void RangeType(SlideShowRangeType type) = 0;
  /// Of a range of slides, by index.
  [[nodiscard]] virtual std::int32_t StartingSlide() const = 0;
  virtual void StartingSlide(std::int32_t index) = 0;
  [[nodiscard]] virtual std::int32_t EndingSlide() const = 0;
  virtual void EndingSlide(std::int32_t index) = 0;
  [[nodiscard]] virtual std::shared_ptr<PowerPoint::NamedSlideShows> NamedSlideShows() = 0;
};

}  // namespace PowerPoint
