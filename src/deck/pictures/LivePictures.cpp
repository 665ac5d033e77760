// Parts and relationships that come and go with the pictures that stand in the place of a deck's own.

#include "deck/pictures/LivePictures.h"

#include "opc/Xml.h"
#include "presentationml/ShapeNode.h"

namespace deck {
namespace {

constexpr const char* SvgExtension = "{96DAC541-7B7A-43D3-8B79-37D633B846F1}";
constexpr const char* SvgNamespace = "http://schemas.microsoft.com/office/drawing/2016/SVG/main";

void setAttribute(pugi::xml_node node, const char* name, const std::string& value) {
  pugi::xml_attribute attribute = node.attribute(name);
  if (!attribute) attribute = node.append_attribute(name);
  attribute = value.c_str();
}

pugi::xml_node svgExtensionOf(pugi::xml_node blip) {
  return blip.child("a:extLst").find_child_by_attribute("a:ext", "uri", SvgExtension);
}

void showDrawing(pugi::xml_node blip, const std::string& relationshipId) {
  pugi::xml_node list = blip.child("a:extLst");
  if (!list) list = blip.append_child("a:extLst");
  pugi::xml_node extension = list.append_child("a:ext");
  extension.append_attribute("uri") = SvgExtension;
  pugi::xml_node drawing = extension.append_child("asvg:svgBlip");
  drawing.append_attribute("xmlns:asvg") = SvgNamespace;
  drawing.append_attribute("r:embed") = relationshipId.c_str();
}

}  // namespace

void showPicture(pugi::xml_node blip, const std::string& relationshipId, bool isSvg) {
  if (const pugi::xml_node drawing = svgExtensionOf(blip)) drawing.parent().remove_child(drawing);
  if (isSvg) showDrawing(blip, relationshipId);
  // A drawing keeps the picture for readers that draw none, if there is one.
  if (!isSvg || !blip.attribute("r:embed")) setAttribute(blip, "r:embed", relationshipId);
}

pugi::xml_node pictureOf(pugi::xml_node shape) {
  if (presentationml::oleObject(shape)) {
    // The preview may stand in the fallback of alternative contents.
    pugi::xml_node found;
    opc::xml::forEachNode(shape.child("a:graphic"), [&](pugi::xml_node node, int) {
      if (std::string_view(node.name()) == "p:pic") found = node.child("p:blipFill").child("a:blip");
      return !found;
    });
    return found;
  }
  if (presentationml::shapeType(shape) == PowerPoint::ShapeType::Media) return {};
  if (const pugi::xml_node picture = shape.child("p:blipFill")) return picture.child("a:blip");
  return shape.child("p:spPr").child("a:blipFill").child("a:blip");
}

bool LivePictures::show(opc::Part& slide, pugi::xml_node shape, pictures::PictureFile picture,
                        Reason reason) {
  Live& live = byShape_[shape.internal_object()];
  live.reason = reason;
  if (live.part != nullptr && live.part->contentType() == picture.contentType) {
    if (live.part->bytes() == picture.bytes) return false;
    package_.setBytes(*live.part, std::move(picture.bytes));
    return true;
  }
  std::string name;
  if (live.part != nullptr) {
    // The number stays, so that a year of changes between kinds gives out none.
    name = live.part->name().substr(0, live.part->name().rfind('.')).append(picture.extension);
    take(live);
  }
  if (name.empty() || package_.find(name) != nullptr) {
    name = package_.freeName("ppt/media/live", picture.extension);
  }
  live.slide = &slide;
  live.shape = shape;
  put(live, std::move(name), std::move(picture));
  return true;
}

bool LivePictures::showOwn(pugi::xml_node shape) {
  const auto found = byShape_.find(shape.internal_object());
  if (found == byShape_.end()) return false;
  take(found->second);
  byShape_.erase(found);
  return true;
}

void LivePictures::forget(const opc::Part& slide) {
  for (auto entry = byShape_.begin(); entry != byShape_.end();) {
    if (entry->second.slide != &slide) {
      ++entry;
      continue;
    }
    take(entry->second);
    entry = byShape_.erase(entry);
  }
}

bool LivePictures::shows(pugi::xml_node shape, Reason reason) const {
  const auto found = byShape_.find(shape.internal_object());
  return found != byShape_.end() && found->second.reason == reason;
}

void LivePictures::put(Live& live, std::string name, pictures::PictureFile picture) {
  pugi::xml_node blip = pictureOf(live.shape);
  live.own = std::make_unique<pugi::xml_document>();
  live.own->append_copy(blip);
  live.part = &package_.add(std::move(name), picture.contentType, std::move(picture.bytes));
  live.relationshipId = package_.addRelationship(*live.slide, ImageRelationship, *live.part);
  showPicture(blip, live.relationshipId, picture.isSvg);
  live.slide->markChanged();
}

void LivePictures::take(Live& live) {
  const pugi::xml_node blip = pictureOf(live.shape);
  pugi::xml_node parent = blip.parent();
  parent.insert_copy_before(live.own->first_child(), blip);
  parent.remove_child(blip);
  package_.removeRelationship(*live.slide, live.relationshipId);
  package_.remove(*live.part);
  live.part = nullptr;
  live.slide->markChanged();
}

struct LivePictures::Absence::Taken {
  Live* live;
  std::string name;
  pictures::PictureFile picture;
};

LivePictures::Absence::Absence(LivePictures& pictures, bool theyStay) : pictures_(pictures) {
  for (auto& [shape, live] : pictures_.byShape_) {
    if (theyStay) {
      pugi::xml_node blip = pictureOf(live.shape);
      // Readers prefer the file of a link to what stands beside it.
      if (live.reason == Reason::Data) blip.remove_attribute("r:link");
      // Readers without drawings must not show the shape's own picture: it is what data do not say.
      setAttribute(blip, "r:embed", live.relationshipId);
      live.slide->markChanged();
      staying_.push_back(&live);
      continue;
    }
    taken_.push_back(
        {&live, live.part->name(), pictures::asPicture(std::string(live.part->bytes()), live.part->name())});
    pictures_.take(live);
  }
}

LivePictures::Absence::~Absence() {
  for (Taken& taken : taken_) pictures_.put(*taken.live, std::move(taken.name), std::move(taken.picture));
  for (Live* live : staying_) {
    const pugi::xml_node own = live->own->first_child();
    const pugi::xml_node blip = pictureOf(live->shape);
    if (const pugi::xml_attribute link = own.attribute("r:link")) setAttribute(blip, "r:link", link.value());
    const pugi::xml_attribute embedded = own.attribute("r:embed");
    if (embedded && svgExtensionOf(blip)) setAttribute(blip, "r:embed", embedded.value());
    live->slide->markChanged();
  }
}

}  // namespace deck
