#include "deck/show/TransitionEffect.h"

#include <algorithm>
#include <optional>
#include <pugixml.hpp>
#include <string_view>
#include <utility>

namespace deck {
namespace {

using Kind = TransitionEffect::Kind;

constexpr std::int32_t LongestTransition = 60'000;

std::optional<Kind> kindOf(std::string_view element) {
  static constexpr std::pair<std::string_view, Kind> Known[] = {
      {"p:cut", Kind::Cut},     {"p:fade", Kind::Fade},   {"p:push", Kind::Push},   {"p:wipe", Kind::Wipe},
      {"p:split", Kind::Split}, {"p:cover", Kind::Cover}, {"p:pull", Kind::Uncover}};
  const auto* found = std::find_if(std::begin(Known), std::end(Known),
                                   [&](const auto& known) { return known.first == element; });
  return found == std::end(Known) ? std::nullopt : std::optional(found->second);
}

/// Also that of the versions that later programs add beside it.
pugi::xml_node effectElement(pugi::xml_node transition) {
  for (const pugi::xml_node child : transition.children()) {
    const std::string_view name = child.name();
    if (child.type() == pugi::node_element && name != "p:sndAc" && name != "p:extLst") return child;
  }
  return {};
}

std::string directionOf(Kind kind, pugi::xml_node effect) {
  static constexpr std::string_view Directions[] = {"l", "u", "r", "d", "lu", "ru", "ld", "rd"};
  const std::string_view direction = effect.attribute("dir").value();
  if (kind == Kind::Split) {
    const bool isVertical = std::string_view(effect.attribute("orient").value()) == "vert";
    return std::string(isVertical ? "vert" : "horz") + (direction == "in" ? "-in" : "-out");
  }
  if (kind == Kind::None || kind == Kind::Cut || kind == Kind::Fade) return {};
  const bool isKnown =
      std::find(std::begin(Directions), std::end(Directions), direction) != std::end(Directions);
  return isKnown ? std::string(direction) : "l";
}

std::int32_t durationOf(pugi::xml_node transition) {
  if (const pugi::xml_attribute exact = transition.attribute("p14:dur")) {
    return std::clamp(exact.as_int(), 0, LongestTransition);
  }
  const std::string_view speed = transition.attribute("spd").value();
  return speed == "slow" ? 1000 : speed == "med" ? 750 : 500;
}

}  // namespace

TransitionEffect transitionOf(opc::Part& slide) {
  const pugi::xml_node root = slide.xml().document_element();
  pugi::xml_node transition = root.child("p:transition");
  pugi::xml_node effect = effectElement(transition);
  for (const pugi::xml_node alternatives : root.children("mc:AlternateContent")) {
    const pugi::xml_node choice = alternatives.child("mc:Choice").child("p:transition");
    if (transition || !choice) continue;
    transition = choice;
    effect = effectElement(choice);
    // An effect of later versions: what its author's program falls back to comes nearer than nothing.
    const pugi::xml_node older = effectElement(alternatives.child("mc:Fallback").child("p:transition"));
    if (effect && !kindOf(effect.name()) && older) effect = older;
  }
  TransitionEffect result;
  if (!effect) return result;
  result.kind = kindOf(effect.name()).value_or(Kind::Fade);
  result.direction = directionOf(result.kind, effect);
  result.throughBlack =
      (result.kind == Kind::Fade || result.kind == Kind::Cut) && effect.attribute("thruBlk").as_bool();
  result.milliseconds = durationOf(transition);
  return result;
}

}  // namespace deck
