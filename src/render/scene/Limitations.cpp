#include "render/scene/Limitations.h"

#include <pugixml.hpp>

namespace render {

namespace {

struct Rule {
  /// XPath, from the shape.
  const char* where;
  bool isDrawn;
  std::string_view what;
};

/// What docs/linking/what-is-drawn.md has as "nearly" and "no", as far as it can be seen on a slide.
constexpr Rule Rules[] = {
    {".//a:prstTxWarp[@prst != 'textNoShape' and @prst != 'textPlain']", true,
     "text bent as WordArt, drawn as outlines of this machine's font"},
    {".//a:sp3d[a:bevelT or a:bevelB]", true, "a bevel, drawn as light and shade at the edge"},
    {".//a:sp3d[@extrusionH > 0 or @contourW > 0]", false, "depth (3-D); the flat shape is drawn"},
    {".//a:scene3d/a:camera[@prst and not(starts-with(@prst, 'orthographic'))]", false,
     "a view in perspective; the flat shape is drawn"},
    {".//a:path[@path='shape']", true, "a gradient along the outline, drawn in steps"},
    {".//p:grpSpPr/a:effectLst/a:softEdge | .//p:grpSpPr/a:effectLst/a:innerShdw", false,
     "soft edges or an inner shadow of a group"},
    {".//*[contains(name(), 'model3d')]", false, "a 3-D model; its preview is drawn"},
    {".//a:graphicData[contains(@uri, 'chartex')]", false,
     "a chart of a newer kind; the picture that the file keeps of it is drawn"},
};

}  // namespace

std::vector<Limitation> findLimitations(const presentationml::ShapeIndex& shapes) {
  std::vector<Limitation> found;
  for (const pugi::xml_node shape : shapes.all()) {
    for (const Rule& rule : Rules) {
      if (!shape.select_node(rule.where)) continue;
      found.push_back({std::string(presentationml::shapeName(shape)), rule.isDrawn, rule.what});
    }
  }
  return found;
}

}  // namespace render
