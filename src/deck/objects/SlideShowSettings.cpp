#include "deck/objects/SlideShowSettings.h"

#include <algorithm>
#include <numeric>

#include "deck/objects/Presentation.h"

namespace deck {
namespace {

/// None when the last one comes before the first.
std::vector<std::int32_t> between(std::int32_t first, std::int32_t last) {
  std::vector<std::int32_t> slides(first > last ? 0 : static_cast<std::size_t>(last - first) + 1);
  std::iota(slides.begin(), slides.end(), first);
  return slides;
}

std::vector<std::int32_t> customShow(const Presentation& presentation, const char* id) {
  const pugi::xml_node list = presentation.part().xml().document_element().child("p:custShowLst");
  const pugi::xml_node show = list.find_child_by_attribute("p:custShow", "id", id);
  std::vector<std::int32_t> slides;
  for (pugi::xml_node slide : show.child("p:sldLst").children("p:sld")) {
    if (const auto index = presentation.slideByRelationship(slide.attribute("r:id").value())) {
      slides.push_back(*index);
    }
  }
  return slides;
}

}  // namespace

SlideShowSettings::SlideShowSettings(Presentation& presentation) {
  const std::int32_t count = presentation.slideCount();
  opc::Part* properties = presentation.part().related(opc::relationship::PresProps);
  const pugi::xml_node show =
      properties == nullptr ? pugi::xml_node() : properties->xml().document_element().child("p:showPr");
  if (show.child("p:kiosk")) type_ = PowerPoint::SlideShowType::Kiosk;
  if (show.child("p:browse")) type_ = PowerPoint::SlideShowType::Window;
  loops_ = show.attribute("loop").as_bool();
  usesTimings_ = show.attribute("useTimings").as_bool(true);
  if (const pugi::xml_node range = show.child("p:sldRg")) {
    slides_ = between(std::max(1, range.attribute("st").as_int(1)),
                      std::min(count, range.attribute("end").as_int(count)));
  } else if (const pugi::xml_node custom = show.child("p:custShow")) {
    slides_ = customShow(presentation, custom.attribute("id").value());
  }
  // A range or custom show of slides that are gone is no reason to show nothing.
  if (slides_.empty()) slides_ = between(1, count);
}

}  // namespace deck
