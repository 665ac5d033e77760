// The main sequence of a timing tree as the clicks that it waits for.

#include "deck/show/Builds.h"

#include <algorithm>
#include <pugixml.hpp>
#include <string_view>
#include <utility>

#include "opc/Xml.h"

namespace deck {
namespace {

constexpr std::int32_t UsualDuration = 500;
constexpr std::int32_t LongestDuration = 10'000;

/// The numbers that files give effects, and the ways they come from; no standard lists them.
std::string_view kindOf(int presetId) {
  switch (presetId) {
    case 1:
      return "appear";
    case 2:
      return "fly";
    case 22:
      return "wipe";
    default:
      return "fade";
  }
}

std::string_view directionOf(int presetSubtype) {
  static constexpr std::pair<int, std::string_view> Known[] = {{8, "r"},  {1, "d"},  {2, "l"},  {4, "u"},
                                                               {9, "rd"}, {3, "ld"}, {6, "lu"}, {12, "ru"}};
  const auto* found = std::find_if(std::begin(Known), std::end(Known),
                                   [&](const auto& known) { return known.first == presetSubtype; });
  return found == std::end(Known) ? "u" : found->second;
}

pugi::xml_node below(pugi::xml_node root, std::string_view name) {
  pugi::xml_node found;
  opc::xml::forEachNode(root, [&](pugi::xml_node node, int) {
    if (node != root && std::string_view(node.name()) == name) found = node;
    return !found;
  });
  return found;
}

/// The effect that a p:cTn with a preset class describes; its shape is 0 when it is none of ours.
BuildEffect effectOf(pugi::xml_node timing) {
  BuildEffect effect;
  const std::string_view kind = timing.attribute("presetClass").value();
  if (kind != "entr" && kind != "exit") return effect;
  effect.shapeId = below(timing, "p:spTgt").attribute("spid").as_uint();
  effect.isEntrance = kind == "entr";
  effect.kind = kindOf(timing.attribute("presetID").as_int());
  if (!effect.isEntrance && effect.kind != "appear") effect.kind = "fade";
  effect.direction = directionOf(timing.attribute("presetSubtype").as_int());
  const pugi::xml_node behaviour =
      below(timing, "p:animEffect") ? below(timing, "p:animEffect") : below(timing, "p:anim");
  const pugi::xml_attribute duration = behaviour.child("p:cBhvr").child("p:cTn").attribute("dur");
  effect.milliseconds = std::clamp(duration.as_int(UsualDuration), 0, LongestDuration);
  return effect;
}

pugi::xml_node mainSequence(pugi::xml_node slide) {
  pugi::xml_node found;
  opc::xml::forEachNode(slide.child("p:timing"), [&](pugi::xml_node node, int) {
    if (std::string_view(node.attribute("nodeType").value()) == "mainSeq") found = node;
    return !found;
  });
  return found;
}

}  // namespace

Builds::Builds(opc::Part& slide) {
  for (const pugi::xml_node click : mainSequence(slide.xml().document_element()).child("p:childTnLst")) {
    std::vector<BuildEffect> effects;
    bool startsByItself = false;
    opc::xml::forEachNode(click, [&](pugi::xml_node node, int) {
      if (!node.attribute("presetClass")) return true;
      if (effects.empty())
        startsByItself = std::string_view(node.attribute("nodeType").value()) != "clickEffect";
      BuildEffect effect = effectOf(node);
      if (effect.shapeId != 0) effects.push_back(std::move(effect));
      return true;
    });
    add(std::move(effects), startsByItself);
  }
}

void Builds::add(std::vector<BuildEffect> effects, bool startsByItself) {
  const std::set<std::uint32_t> before = hiddenAfter(steps_.size());
  std::erase_if(effects, [&](const BuildEffect& effect) {
    const bool isFirst = known_.insert(effect.shapeId).second;
    // Whoever enters first of all was not there.
    if (isFirst && effect.isEntrance && !startsByItself) hidden_.insert(effect.shapeId);
    if (isFirst && !effect.isEntrance && startsByItself) hidden_.insert(effect.shapeId);
    return !isFirst && effect.isEntrance != before.contains(effect.shapeId);
  });
  if (!startsByItself && !effects.empty()) steps_.push_back(std::move(effects));
}

std::set<std::uint32_t> Builds::hiddenAfter(std::size_t steps) const {
  std::set<std::uint32_t> hidden = hidden_;
  for (std::size_t i = 0; i < std::min(steps, steps_.size()); ++i) {
    for (const BuildEffect& effect : steps_[i]) {
      if (effect.isEntrance) {
        hidden.erase(effect.shapeId);
      } else {
        hidden.insert(effect.shapeId);
      }
    }
  }
  return hidden;
}

}  // namespace deck
