#include "deck/LinkedObjects.h"

#include "deck/Links.h"

namespace deck {
std::vector<LinkedObject> linkedObjects(const Presentation& presentation, std::int32_t slideIndex) {
  std::vector<LinkedObject> objects;
  for (const pugi::xml_node node : presentation.shapesOf(slideIndex).all()) {
    if (shapeType(node) != PowerPoint::ShapeType::LinkedOLEObject) continue;
    const Relationship* link = presentation.slidePart(slideIndex).relationship(linkRelationship(node));
    if (link == nullptr || !link->external) continue;
    const std::string source = sourcePath(link->target, presentation.FullName());
    const std::size_t mark = source.find('!');
    LinkedObject object;
    object.shapeId = shapeId(node);
    object.shapeName = shapeName(node);
    object.progId = oleObject(node).attribute("progId").value();
    object.file = source.substr(0, mark);
    if (mark != std::string::npos) object.item = source.substr(mark + 1);
    objects.push_back(std::move(object));
  }
  return objects;
}

}  // namespace deck
