// How shapes that are linked to files are freed of them, with what they show.

#include <vector>

#include "basic/Strings.h"
#include "deck/Failure.h"
#include "deck/objects/LinkedPictures.h"
#include "deck/objects/Presentation.h"
#include "opc/Xml.h"

namespace deck {

namespace {

/// The image that older programs keep in a drawing of the slide (VML, ECMA-376 part 4, 19.1); null without.
opc::Part* olderPreview(opc::Part& slide, pugi::xml_node frame) {
  const std::string name = presentationml::oleObject(frame).attribute("spid").value();
  opc::Part* drawing = name.empty() ? nullptr : slide.related("vmlDrawing");
  if (drawing == nullptr) return nullptr;
  const pugi::xml_node shape = drawing->xml().find_node([&](pugi::xml_node node) {
    return presentationml::localName(node) == "shape" &&
           (node.attribute("id").value() == name || node.attribute("o:spid").value() == name);
  });
  return drawing->target(shape.child("v:imagedata").attribute("o:relid").value());
}

/// The p:blipFill of an embedded picture, filling its frame.
void addFill(pugi::xml_node picture, const std::string& relationship) {
  pugi::xml_node fill = picture.append_child("p:blipFill");
  fill.append_child("a:blip").append_attribute("r:embed") = relationship.c_str();
  fill.append_child("a:stretch").append_child("a:fillRect");
}

/// What a linked object shows becomes a picture in its place (ECMA-376 part 1, 19.3.1.37). `older` is the
/// relationship to the preview where the object has none of its own.
void putPictureInPlace(pugi::xml_node frame, const std::string& older) {
  const pugi::xml_node preview = pictureOf(frame).parent().parent();
  // Alternative contents of which the frame is one would come back with another.
  pugi::xml_node replaced = frame;
  if (opc::xml::isNamed(frame.parent(), "mc:Choice")) replaced = frame.parent().parent();
  pugi::xml_node picture = replaced.parent().insert_child_before("p:pic", replaced);
  pugi::xml_node properties = picture.append_child("p:nvPicPr");
  properties.append_copy(presentationml::shapeProperties(frame));
  properties.append_child("p:cNvPicPr").append_child("a:picLocks").append_attribute("noChangeAspect") = "1";
  properties.append_copy(presentationml::applicationProperties(frame));
  if (older.empty()) {
    picture.append_copy(preview.child("p:blipFill"));
  } else {
    addFill(picture, older);
  }
  pugi::xml_node look = picture.append_copy(preview.child("p:spPr"));
  if (!look) look = picture.append_child("p:spPr");
  look.remove_child("a:xfrm");
  if (const pugi::xml_node place = frame.child("p:xfrm")) look.prepend_copy(place).set_name("a:xfrm");
  if (!look.child("a:prstGeom") && !look.child("a:custGeom")) {
    pugi::xml_node geometry = look.insert_child_after("a:prstGeom", look.child("a:xfrm"));
    if (!geometry) geometry = look.prepend_child("a:prstGeom");
    geometry.append_attribute("prst") = "rect";
    geometry.append_child("a:avLst");
  }
  replaced.parent().remove_child(replaced);
}

}  // namespace

void Presentation::breakLink(std::int32_t slideIndex, pugi::xml_node shape) {
  opc::Part& part = slidePart(slideIndex);
  const std::string id(presentationml::linkRelationship(shape));
  const opc::Relationship* link = id.empty() ? nullptr : part.relationship(id);
  const auto refuse = [&](const std::string& why) {
    fail("The shape " + basic::InQuotes(presentationml::shapeName(shape)) + " on slide " +
         std::to_string(slideIndex) + why);
  };
  if (link == nullptr || !link->external) refuse(" is not linked to a file.");
  if (presentationml::media(shape)) refuse(" plays a file, which cannot be taken into the presentation.");
  opc::Part* older = pictureOf(shape) ? nullptr : olderPreview(part, shape);
  if (!pictureOf(shape) && older == nullptr) refuse(" holds no picture of what it is linked to.");
  if (older == nullptr && !pictureOf(shape).attribute("r:embed")) {
    refuse(" is linked to a picture that could not be read.");
  }

  // The picture that it shows is its own from here on.
  pictures_.adopt(shape);
  if (presentationml::oleObject(shape)) {
    tags_.write();
    tags_.forget(shape);
    putPictureInPlace(shape,
                      older == nullptr ? "" : package_->addRelationship(part, ImageRelationship, *older));
    slides_[static_cast<std::size_t>(slideIndex - 1)].readShapes();
    owners_.reset();
  } else {
    pictureOf(shape).remove_attribute("r:link");
  }
  if (!usesRelationship(part.xml().document_element(), id)) package_->removeRelationship(part, id);
  noteChange(part);
}

}  // namespace deck
