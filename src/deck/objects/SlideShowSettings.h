#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "deck/objects/Presentation.h"

namespace deck {

/// p:custShowLst of a presentation (ECMA-376 part 1, 19.2.1.7).
class NamedSlideShows final : public PowerPoint::NamedSlideShows {
 public:
  explicit NamedSlideShows(std::shared_ptr<Presentation> presentation)
      : presentation_(std::move(presentation)) {}
  [[nodiscard]] std::int32_t Count() const override;
  [[nodiscard]] std::shared_ptr<PowerPoint::NamedSlideShow> Item(std::int32_t index) override;

 private:
  std::shared_ptr<Presentation> presentation_;
};

class NamedSlideShow final : public PowerPoint::NamedSlideShow {
 public:
  /// `show` is a p:custShow of the presentation part.
  NamedSlideShow(std::shared_ptr<Presentation> presentation, pugi::xml_node show)
      : presentation_(std::move(presentation)), show_(show) {}
  [[nodiscard]] std::string Name() const override { return show_.attribute("name").value(); }
  [[nodiscard]] std::vector<std::int32_t> SlideIDs() const override;
  void SlideIDs(const std::vector<std::int32_t>& ids) override;

 private:
  std::shared_ptr<Presentation> presentation_;
  pugi::xml_node show_;
};

/// How the author set the show up: p:showPr of the presentation's properties
/// (ECMA-376 part 1, 19.2.1.30), read when the object is made.
class SlideShowSettings final : public PowerPoint::SlideShowSettings {
 public:
  explicit SlideShowSettings(Presentation& presentation);

  [[nodiscard]] PowerPoint::SlideShowType ShowType() const override { return type_; }
  [[nodiscard]] PowerPoint::SlideShowRangeType RangeType() const override;
  /// To a named show is an error: there is no telling which.
  void RangeType(PowerPoint::SlideShowRangeType type) override;
  /// Of a presentation that states none the first and the last slide.
  [[nodiscard]] std::int32_t StartingSlide() const override;
  void StartingSlide(std::int32_t index) override { setRange("st", index); }
  [[nodiscard]] std::int32_t EndingSlide() const override;
  void EndingSlide(std::int32_t index) override { setRange("end", index); }
  [[nodiscard]] std::shared_ptr<PowerPoint::NamedSlideShows> NamedSlideShows() override;
  /// A kiosk show always loops.
  [[nodiscard]] bool loops() const { return loops_ || type_ == PowerPoint::SlideShowType::Kiosk; }
  [[nodiscard]] bool usesTimings() const { return usesTimings_; }
  /// The slides' indices in the order of the show: all, a range or a custom show.
  [[nodiscard]] const std::vector<std::int32_t>& slides() const { return slides_; }

 private:
  /// p:showPr; null without one.
  [[nodiscard]] pugi::xml_node properties() const;
  void setRange(const char* attribute, std::int32_t index);
  void noteChange();

  std::shared_ptr<Presentation> presentation_;
  opc::Part* part_;  // of the presentation's properties; null without one
  PowerPoint::SlideShowType type_ = PowerPoint::SlideShowType::Speaker;
  bool loops_ = false;
  bool usesTimings_ = true;
  std::vector<std::int32_t> slides_;
};

}  // namespace deck
