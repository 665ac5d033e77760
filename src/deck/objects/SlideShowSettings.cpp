// How the author set shows up: which slides, in which order, and how the show behaves.

#include "deck/objects/SlideShowSettings.h"

#include <algorithm>
#include <iterator>
#include <numeric>

#include "deck/Failure.h"

namespace deck {
namespace {

/// None when the last one comes before the first.
std::vector<std::int32_t> between(std::int32_t first, std::int32_t last) {
  std::vector<std::int32_t> slides(first > last ? 0 : static_cast<std::size_t>(last - first) + 1);
  std::iota(slides.begin(), slides.end(), first);
  return slides;
}

pugi::xml_node customShows(const Presentation& presentation) {
  return presentation.part().xml().document_element().child("p:custShowLst");
}

/// Of a p:custShow, by index.
std::vector<std::int32_t> slidesOf(const Presentation& presentation, pugi::xml_node show) {
  std::vector<std::int32_t> slides;
  for (pugi::xml_node slide : show.child("p:sldLst").children("p:sld")) {
    if (const auto index = presentation.slideByRelationship(slide.attribute("r:id").value())) {
      slides.push_back(*index);
    }
  }
  return slides;
}

std::vector<std::int32_t> customShow(const Presentation& presentation, const char* id) {
  return slidesOf(presentation, customShows(presentation).find_child_by_attribute("p:custShow", "id", id));
}

}  // namespace

SlideShowSettings::SlideShowSettings(Presentation& presentation)
    : presentation_(std::static_pointer_cast<Presentation>(presentation.shared_from_this())),
      part_(presentation.part().related(opc::relationship::PresProps)) {
  const std::int32_t count = presentation.slideCount();
  const pugi::xml_node show = properties();
  if (show.child("p:kiosk")) type_ = PowerPoint::SlideShowType::Kiosk;
  if (show.child("p:browse")) type_ = PowerPoint::SlideShowType::Window;
  loops_ = show.attribute("loop").as_bool();
  usesTimings_ = show.attribute("useTimings").as_bool(true);
  if (show.child("p:sldRg")) {
    slides_ = between(std::max(1, StartingSlide()), std::min(count, EndingSlide()));
  } else if (const pugi::xml_node custom = show.child("p:custShow")) {
    slides_ = customShow(presentation, custom.attribute("id").value());
  }
  // A range or custom show of slides that are gone is no reason to show nothing.
  if (slides_.empty()) slides_ = between(1, count);
}

pugi::xml_node SlideShowSettings::properties() const {
  return part_ == nullptr ? pugi::xml_node() : part_->xml().document_element().child("p:showPr");
}

PowerPoint::SlideShowRangeType SlideShowSettings::RangeType() const {
  using enum PowerPoint::SlideShowRangeType;
  const pugi::xml_node show = properties();
  if (show.child("p:sldRg")) return ShowSlideRange;
  return show.child("p:custShow") ? ShowNamedSlideShow : ShowAll;
}

void SlideShowSettings::RangeType(PowerPoint::SlideShowRangeType type) {
  using enum PowerPoint::SlideShowRangeType;
  if (type == RangeType()) return;
  pugi::xml_node show = properties();
  if (type == ShowNamedSlideShow || !show) fail("The presentation has no place for the slides of its show.");
  const pugi::xml_node former = show.find_child([](pugi::xml_node node) {
    const std::string_view name = node.name();
    return name == "p:sldAll" || name == "p:sldRg" || name == "p:custShow";
  });
  const std::int32_t last = EndingSlide();
  const char* element = type == ShowAll ? "p:sldAll" : "p:sldRg";
  pugi::xml_node behind = show.find_child([](pugi::xml_node node) {
    const std::string_view name = node.name();
    return name == "p:penClr" || name == "p:extLst";
  });
  pugi::xml_node stated = behind ? show.insert_child_before(element, behind) : show.append_child(element);
  show.remove_child(former);
  if (type == ShowSlideRange) {
    stated.append_attribute("st") = 1;
    stated.append_attribute("end") = last;
  }
  noteChange();
}

std::int32_t SlideShowSettings::StartingSlide() const {
  return properties().child("p:sldRg").attribute("st").as_int(1);
}

std::int32_t SlideShowSettings::EndingSlide() const {
  return properties().child("p:sldRg").attribute("end").as_int(presentation_->slideCount());
}

void SlideShowSettings::setRange(const char* attribute, std::int32_t index) {
  RangeType(PowerPoint::SlideShowRangeType::ShowSlideRange);
  pugi::xml_node range = properties().child("p:sldRg");
  if (!range.attribute(attribute)) range.append_attribute(attribute);
  range.attribute(attribute) = index;
  noteChange();
}

void SlideShowSettings::noteChange() { presentation_->noteChange(*part_); }

std::shared_ptr<PowerPoint::NamedSlideShows> SlideShowSettings::NamedSlideShows() {
  return std::make_shared<deck::NamedSlideShows>(presentation_);
}

std::int32_t NamedSlideShows::Count() const {
  const auto shows = customShows(*presentation_).children("p:custShow");
  return static_cast<std::int32_t>(std::distance(shows.begin(), shows.end()));
}

std::shared_ptr<PowerPoint::NamedSlideShow> NamedSlideShows::Item(std::int32_t index) {
  if (index < 1 || index > Count()) fail("There is no custom show " + std::to_string(index) + ".");
  const auto shows = customShows(*presentation_).children("p:custShow");
  return std::make_shared<NamedSlideShow>(presentation_, *std::next(shows.begin(), index - 1));
}

std::vector<std::int32_t> NamedSlideShow::SlideIDs() const {
  std::vector<std::int32_t> ids;
  for (const std::int32_t index : slidesOf(*presentation_, show_)) {
    ids.push_back(static_cast<std::int32_t>(presentation_->slideId(index)));
  }
  return ids;
}

void NamedSlideShow::SlideIDs(const std::vector<std::int32_t>& ids) {
  std::vector<std::string> relationships;
  for (const std::int32_t id : ids) {
    relationships.push_back(presentation_->slideRelationship(static_cast<std::uint32_t>(id)));
    if (relationships.back().empty()) fail("There is no slide of the id " + std::to_string(id) + ".");
  }
  pugi::xml_node list = show_.child("p:sldLst");
  if (!list) list = show_.prepend_child("p:sldLst");
  while (list.remove_child("p:sld")) {
  }
  for (const std::string& relationship : relationships) {
    list.append_child("p:sld").append_attribute("r:id") = relationship.c_str();
  }
  presentation_->noteChange(presentation_->part());
}

}  // namespace deck
