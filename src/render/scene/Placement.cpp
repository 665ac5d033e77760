#include "render/scene/Placement.h"

#include <algorithm>
#include <cmath>

#include "render/geometry/XmlValues.h"

namespace render {

namespace {

/// Turned by 45 degrees or more, a shape's width runs along the other axis.
bool isSideways(double degrees) {
  const double turned = std::fmod(std::fmod(degrees, 180) + 180, 180);
  return turned >= 45 && turned < 135;
}

}  // namespace

void place(Box& box, pugi::xml_node xfrm, const Space& space) {
  const auto off = xfrm.child("a:off");
  const auto ext = xfrm.child("a:ext");
  const double x = emuOf(off.attribute("x")).value_or(0);
  const double y = emuOf(off.attribute("y")).value_or(0);
  const double cx = std::max(0.0, emuOf(ext.attribute("cx")).value_or(0));
  const double cy = std::max(0.0, emuOf(ext.attribute("cy")).value_or(0));
  box.rotation = degreesOf(xfrm.attribute("rot")).value_or(0);
  box.flipX = boolOf(xfrm.attribute("flipH")).value_or(false);
  box.flipY = boolOf(xfrm.attribute("flipV")).value_or(false);
  const bool sideways = isSideways(box.rotation);
  const double w = pxFromEmu(cx * (sideways ? space.scaleY : space.scaleX));
  const double h = pxFromEmu(cy * (sideways ? space.scaleX : space.scaleY));
  const double centreX = pxFromEmu((x + cx / 2 - space.offsetX) * space.scaleX);
  const double centreY = pxFromEmu((y + cy / 2 - space.offsetY) * space.scaleY);
  box.frame = {centreX - w / 2, centreY - h / 2, w, h};
  if (space.flipX) {
    box.frame.x = space.width - box.frame.x - w;
    box.flipX = !box.flipX;
  }
  if (space.flipY) {
    box.frame.y = space.height - box.frame.y - h;
    box.flipY = !box.flipY;
  }
  if (space.flipX != space.flipY) box.rotation = -box.rotation;
}

}  // namespace render
