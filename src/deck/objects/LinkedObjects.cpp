#include "deck/objects/LinkedObjects.h"

#include "deck/objects/Links.h"

namespace deck {
std::vector<LinkedObject> linkedObjects(const Presentation& presentation, std::int32_t slideIndex) {
  std::vector<LinkedObject> objects;
  for (const pugi::xml_node node : presentation.shapesOf(slideIndex).all()) {
    if (presentationml::shapeType(node) != PowerPoint::ShapeType::LinkedOLEObject) continue;
    const opc::Relationship* link =
        presentation.slidePart(slideIndex).relationship(presentationml::linkRelationship(node));
    if (link == nullptr || !link->external) continue;
    const std::string source = sourcePath(link->target, presentation.FullName());
    const std::size_t mark = source.find('!');
    LinkedObject object;
    object.shapeId = presentationml::shapeId(node);
    object.shapeName = presentationml::shapeName(node);
    object.progId = presentationml::oleObject(node).attribute("progId").value();
    object.file = source.substr(0, mark);
    if (mark != std::string::npos) object.item = source.substr(mark + 1);
    objects.push_back(std::move(object));
  }
  return objects;
}

}  // namespace deck
