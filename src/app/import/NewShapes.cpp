#include "app/import/NewShapes.h"

#include "deck/objects/TextBody.h"
#include "opc/Xml.h"
#include "presentationml/Frame.h"
#include "presentationml/ShapeNode.h"

namespace app {

namespace {

std::vector<NewShape> shapesBelow(pugi::xml_node parent, opc::Part& slide, int depth) {
  /// As deep as old presentations are read.
  constexpr int Deepest = 100;
  std::vector<NewShape> shapes;
  if (depth > Deepest) return shapes;
  opc::xml::forEachPreferred(parent, [&](pugi::xml_node node) {
    if (!presentationml::isShape(node)) return;
    const presentationml::Frame frame = presentationml::frameOf(node, slide);
    NewShape shape{
        node, deck::textOf(node.child("p:txBody")), {frame.left, frame.top, frame.width, frame.height}, {}};
    if (opc::xml::isNamed(node, "p:grpSp")) shape.members = shapesBelow(node, slide, depth + 1);
    shapes.push_back(std::move(shape));
  });
  return shapes;
}

}  // namespace

std::vector<NewShape> newShapesOf(opc::Part& slide) {
  return shapesBelow(presentationml::shapeTree(slide.xml().document_element()), slide, 0);
}

}  // namespace app
