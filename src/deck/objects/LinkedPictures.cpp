// Linked pictures that are no shape's: found by the relationships of all parts, and taken in.

#include "deck/objects/LinkedPictures.h"

#include <map>
#include <optional>
#include <set>
#include <utility>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "deck/Failure.h"
#include "deck/objects/Links.h"
#include "deck/pictures/LivePictures.h"
#include "host/services.h"
#include "opc/Xml.h"
#include "pictures/PictureFile.h"

namespace deck {

namespace {

/// p:pic, or a shape's p:spPr, of a slide.
bool isOfShape(pugi::xml_node blip) {
  const pugi::xml_node holder = blip.parent().parent();
  return opc::xml::isNamed(holder, "p:pic") || opc::xml::isNamed(holder, "p:spPr");
}

std::vector<opc::Relationship> pictureLinks(opc::Part& part) {
  std::vector<opc::Relationship> links;
  for (const opc::Relationship& relationship : part.relationships()) {
    if (relationship.external && relationship.is(opc::relationship::Image)) links.push_back(relationship);
  }
  return links;
}

class Taking {
 public:
  Taking(Presentation& presentation, const std::string& original,
         const std::function<void(const std::string&)>& requireReadable)
      : presentation_(presentation), original_(original), requireReadable_(requireReadable) {
    for (std::int32_t slide = 1; slide <= presentation.slideCount(); ++slide) {
      slides_.insert(&presentation.slidePart(slide));
    }
  }

  void takeAllOf(opc::Part& part) {
    for (const opc::Relationship& link : pictureLinks(part)) take(part, link);
  }
  std::vector<std::string> problems() { return std::move(problems_); }

 private:
  struct Taken {
    opc::Part* part;
    bool isSvg;
  };

  void take(opc::Part& part, const opc::Relationship& link) {
    const pugi::xml_node root = part.xml().document_element();
    std::vector<pugi::xml_node> blips;
    opc::xml::forEachNode(root, [&](pugi::xml_node node, int) {
      const bool isBlip = opc::xml::isNamed(node, "a:blip") && node.attribute("r:link").value() == link.id;
      if (isBlip && !(slides_.contains(&part) && isOfShape(node))) blips.push_back(node);
      return true;
    });
    std::string embedded;
    for (pugi::xml_node blip : blips) {
      if (!blip.attribute("r:embed")) {
        const auto taken = read(link);
        if (!taken) continue;
        if (embedded.empty()) {
          embedded = presentation_.package().addRelationship(part, ImageRelationship, *taken->part);
        }
        showPicture(blip, embedded, taken->isSvg);
      }
      blip.remove_attribute("r:link");
      presentation_.noteChange(part);
    }
    if (!usesRelationship(root, link.id)) presentation_.package().removeRelationship(part, link.id);
  }

  /// Each file once; nothing when it cannot be read.
  std::optional<Taken> read(const opc::Relationship& link) {
    const std::string source = sourcePath(link.target, original_);
    const auto known = taken_.find(source);
    if (known != taken_.end()) return known->second;
    std::optional<Taken>& taken = taken_[source];
    try {
      if (source.find("://") != std::string::npos)
        fail(source + " is an address, from which nothing is read.");
      const std::string path = host::Current().files->LocalPath(source);
      requireReadable_(path);
      pictures::PictureFile picture = pictures::readPictureFile(path);
      opc::Package& package = presentation_.package();
      taken = Taken{&package.add(package.freeName("ppt/media/linked", picture.extension), picture.contentType,
                                 std::move(picture.bytes)),
                    picture.isSvg};
    } catch (const basic::Error& error) {
      problems_.push_back("A linked picture stays outside of the copy: " + error.description);
    }
    return taken;
  }

  Presentation& presentation_;
  const std::string& original_;
  const std::function<void(const std::string&)>& requireReadable_;
  std::set<const opc::Part*> slides_;
  std::map<std::string, std::optional<Taken>> taken_;
  std::vector<std::string> problems_;
};

}  // namespace

std::vector<std::string> takePicturesIn(Presentation& presentation, const std::string& original,
                                        const std::function<void(const std::string&)>& requireReadable) {
  Taking taking(presentation, original, requireReadable);
  for (opc::Part* part : presentation.package().parts()) taking.takeAllOf(*part);
  return taking.problems();
}

bool usesRelationship(pugi::xml_node root, std::string_view id) {
  bool isUsed = false;
  opc::xml::forEachNode(root, [&](pugi::xml_node node, int) {
    for (const pugi::xml_attribute attribute : node.attributes()) {
      const std::string_view name = attribute.name();
      // Drawings of older programs have another prefix (ECMA-376 part 4, 19.2).
      const bool isReference = name.starts_with("r:") || name.starts_with("o:");
      if (isReference && id == attribute.value()) isUsed = true;
    }
    return !isUsed;
  });
  return isUsed;
}

}  // namespace deck
