#include "presentationml/Frame.h"

#include <cmath>

#include "basic/Measure.h"
#include "presentationml/Placeholders.h"
#include "presentationml/ShapeNode.h"

namespace presentationml {

namespace {

double emu(pugi::xml_node node, const char* attribute) {
  return basic::parseEmu(node.attribute(attribute).value()).value_or(0);
}

Frame frameIn(pugi::xml_node xfrm, const char* offset = "a:off", const char* extent = "a:ext") {
  const pugi::xml_node off = xfrm.child(offset);
  const pugi::xml_node ext = xfrm.child(extent);
  return {emu(off, "x"), emu(off, "y"), emu(ext, "cx"), emu(ext, "cy")};
}

/// a:xfrm, or p:xfrm of frames; null when the element itself has none.
pugi::xml_node ownTransform(pugi::xml_node shape) {
  if (const pugi::xml_node xfrm = childByLocalName(shape, "xfrm")) return xfrm;
  const pugi::xml_node properties = shape.child("p:spPr");
  return (properties ? properties : shape.child("p:grpSpPr")).child("a:xfrm");
}

pugi::xml_node treeOf(opc::Part* part) {
  return part == nullptr ? pugi::xml_node() : shapeTree(part->xml().document_element());
}

pugi::xml_node inheritedTransform(pugi::xml_node ph, opc::Part& slide) {
  opc::Part* const layout = slide.related(opc::relationship::SlideLayout);
  if (layout == nullptr) return {};
  const pugi::xml_node onLayout = layoutCounterpart(treeOf(layout), ph);
  if (const pugi::xml_node xfrm = ownTransform(onLayout)) return xfrm;
  // The layout knows the type of a placeholder that the slide names by index alone.
  const pugi::xml_node known = placeholder(onLayout);
  const pugi::xml_node master = treeOf(layout->related(opc::relationship::SlideMaster));
  return ownTransform(masterCounterpart(master, masterType(known ? known : ph)));
}

/// From the coordinates of a group's children to those that the group stands in (20.1.7.5).
void leaveGroup(Frame& frame, pugi::xml_node group) {
  const pugi::xml_node xfrm = ownTransform(group);
  const Frame outer = frameIn(xfrm);
  const Frame inner = frameIn(xfrm, "a:chOff", "a:chExt");
  const double scaleX = inner.width > 0 ? outer.width / inner.width : 1;
  const double scaleY = inner.height > 0 ? outer.height / inner.height : 1;
  frame.left = outer.left + (frame.left - inner.left) * scaleX;
  frame.top = outer.top + (frame.top - inner.top) * scaleY;
  frame.width *= scaleX;
  frame.height *= scaleY;
}

}  // namespace

Frame frameOf(pugi::xml_node shape, opc::Part& slide) {
  pugi::xml_node xfrm = ownTransform(shape);
  if (const pugi::xml_node ph = placeholder(shape); ph && !xfrm) xfrm = inheritedTransform(ph, slide);
  Frame frame = frameIn(xfrm);
  for (pugi::xml_node around = shape.parent(); around; around = around.parent()) {
    if (std::string_view(around.name()) == "p:grpSp") leaveGroup(frame, around);
  }
  for (double* value : {&frame.left, &frame.top, &frame.width, &frame.height}) {
    if (!std::isfinite(*value)) *value = 0;  // groups scaled by groups
  }
  return frame;
}

}  // namespace presentationml
