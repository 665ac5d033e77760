#include "render/scene/MediaReader.h"

#include <algorithm>

#include "presentationml/ShapeNode.h"
#include "render/geometry/XmlValues.h"

namespace render {

namespace {

bool aimsAt(pugi::xml_node target, std::string_view shape) {
  return target.child("p:tgtEl").child("p:spTgt").attribute("spid").value() == shape;
}

/// Whether a step of the slide's sequence starts it, without waiting for a click.
bool isStarted(pugi::xml_node timing, std::string_view shape) {
  const auto call = timing.find_node([&](pugi::xml_node node) {
    return std::string_view(node.name()) == "p:cmd" &&
           std::string_view(node.attribute("cmd").value()).starts_with("play") &&
           aimsAt(node.child("p:cBhvr"), shape);
  });
  for (auto step = call.parent(); step; step = step.parent()) {
    const std::string_view kind = step.attribute("nodeType").value();
    if (kind == "withEffect" || kind == "afterEffect") return true;
    if (kind == "clickEffect" || kind == "interactiveSeq") return false;
  }
  return false;
}

}  // namespace

std::optional<Media> readMedia(pugi::xml_node picture, opc::Part& slide, Assets& assets) {
  const auto played = presentationml::media(picture);
  const std::string_view kind = played.name();
  auto source = played.attribute(kind == "a:wavAudioFile" ? "r:embed" : "r:link");
  if (!source) return {};
  Media media;
  media.isVideo = kind == "a:videoFile" || kind == "a:quickTimeFile";
  // Newer files embed what older programs take to be linked.
  for (const auto extension : played.parent().child("p:extLst").children("p:ext")) {
    if (const auto embedded = extension.child("p14:media").attribute("r:embed")) source = embedded;
  }
  const std::string_view shape = presentationml::shapeProperties(picture).attribute("id").value();
  const auto timing = slide.xml().document_element().child("p:timing");
  const auto node = timing.find_node([&](pugi::xml_node each) {
    return std::string_view(each.name()) == "p:cMediaNode" && aimsAt(each, shape);
  });
  const auto start = node.child("p:cTn").child("p:stCondLst").child("p:cond").attribute("delay");
  const bool startsAtOnce = start && std::string_view(start.value()) != "indefinite";
  if (!startsAtOnce && !isStarted(timing, shape)) return {};
  opc::Part* part = slide.target(source.value());
  if (part == nullptr) return {};
  media.asset = assets.addMedia(*part);
  if (media.asset == nullptr) return {};
  media.loops = std::string_view(node.child("p:cTn").attribute("repeatCount").value()) == "indefinite";
  media.isMuted = boolOf(node.attribute("mute")).value_or(false);
  return media;
}

}  // namespace render
