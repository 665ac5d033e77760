// What is put in the place of parts that are broken or missing, so that nobody who reads a deck has to reckon
// with them.

#include "deck/objects/Repair.h"

#include <set>

#include "deck/Failure.h"
#include "opc/Relationships.h"

namespace deck {
namespace {

constexpr std::string_view SlideType =
    "application/vnd.openxmlformats-officedocument.presentationml.slide+xml";
constexpr std::string_view LayoutType =
    "application/vnd.openxmlformats-officedocument.presentationml.slideLayout+xml";
constexpr std::string_view RelationshipBase =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string emptyRoot(std::string_view name) {
  return "<" + std::string(name) +
         " xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\""
         " xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\""
         " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
         "<p:cSld><p:spTree><p:nvGrpSpPr><p:cNvPr id=\"1\" name=\"\"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr>"
         "<p:grpSpPr/></p:spTree></p:cSld></" +
         std::string(name) + ">";
}

/// Why the part's XML cannot be read; empty when it can.
std::string objection(opc::Part& part) {
  try {
    part.readXml([](const pugi::xml_document&) {});
  } catch (const basic::Error& error) {
    return error.description;
  }
  return {};
}

/// What stands in for parts has names of its own: those of missing parts may be asked for by others.
class Repairer {
 public:
  explicit Repairer(opc::Package& package)
      : package_(package), presentation_(package.related(opc::relationship::OfficeDocument)) {}

  std::vector<Damage> run() {
    // The presentation's opening tells what is wrong.
    if (presentation_ == nullptr) return {};
    for (const opc::Relationship& relationship : presentation_->relationships()) {
      if (relationship.is(opc::relationship::Slide)) slides_.insert(presentation_->target(relationship));
    }
    emptyOthers();
    std::int32_t slide = 0;
    std::size_t blank = 0;
    const auto list = presentation_->xml().document_element().child("p:sldIdLst");
    for (pugi::xml_node node : list.children("p:sldId")) {
      opc::Part& part = slidePart(++slide, node, blank);
      giveLayout(slide, part);
    }
    if (slide > 0 && blank == static_cast<std::size_t>(slide)) {
      fail(basic::InQuotes(package_.name()) +
           " cannot be opened: none of its slides can be read; of the last, " + lastReason_ + ".");
    }
    return std::move(damages_);
  }

 private:
  /// All XML but that of slides and what the package hangs on.
  void emptyOthers() {
    const std::set<std::string> needed{"[Content_Types].xml", opc::relationshipsPartName(""),
                                       presentation_->name(),
                                       opc::relationshipsPartName(presentation_->name())};
    for (opc::Part* part : package_.parts()) {
      const std::string& name = part->name();
      const bool isRelationships = name.ends_with(".rels");
      if (!isRelationships && !name.ends_with(".xml")) continue;
      if (needed.contains(name) || slides_.contains(part)) continue;
      const std::string why = objection(*part);
      if (why.empty()) continue;
      package_.setBytes(*part, isRelationships ? "<Relationships/>" : "<damaged/>");
      damages_.push_back({0, why + ". It is left out."});
    }
  }

  opc::Part& slidePart(std::int32_t slide, pugi::xml_node node, std::size_t& blank) {
    const opc::Relationship* relationship = presentation_->relationship(node.attribute("r:id").value());
    opc::Part* part = relationship == nullptr ? nullptr : presentation_->target(*relationship);
    std::string why;
    if (part != nullptr) {
      why = objection(*part);
      if (why.empty()) {
        part->readXml([&](const pugi::xml_document& document) {
          if (std::string_view(document.document_element().name()) != "p:sld") {
            why = "part " + part->name() + " holds no slide";
          }
        });
      }
      if (why.empty()) return *part;
      package_.setBytes(*part, emptyRoot("p:sld"));
    } else if (relationship != nullptr && !relationship->external) {
      why = "its part " + relationship->target + " is missing";
      part = &package_.add(opc::resolveTarget(presentation_->name(), relationship->target), SlideType,
                           emptyRoot("p:sld"));
    } else {
      why = "the presentation does not say where it is";
      part =
          &package_.add(package_.freeName("ppt/slides/standInSlide", ".xml"), SlideType, emptyRoot("p:sld"));
      const std::string id =
          package_.addRelationship(*presentation_, std::string(RelationshipBase).append("slide"), *part);
      node.remove_attribute("r:id");
      node.append_attribute("r:id") = id.c_str();
      presentation_->markChanged();
    }
    ++blank;
    lastReason_ = why;
    damages_.push_back({slide, "Slide " + std::to_string(slide) + " is shown empty: " + why + "."});
    return *part;
  }

  void giveLayout(std::int32_t slide, opc::Part& part) {
    if (opc::Part* layout = part.related(opc::relationship::SlideLayout)) return giveMaster(*layout);
    if (layout_ == nullptr) {
      layout_ = &package_.add(package_.freeName("ppt/slideLayouts/standInLayout", ".xml"), LayoutType,
                              emptyRoot("p:sldLayout"));
      giveMaster(*layout_);
    }
    replace(part, opc::relationship::SlideLayout, *layout_);
    damages_.push_back({slide, "Slide " + std::to_string(slide) +
                                   " has no layout: it, or the way to it, is missing. What the slide takes "
                                   "over from it is drawn as the deck's first master has it."});
  }

  void giveMaster(opc::Part& layout) {
    if (layout.related(opc::relationship::SlideMaster) != nullptr) return;
    opc::Part* const master = presentation_->related(opc::relationship::SlideMaster);
    if (master == nullptr) return;
    replace(layout, opc::relationship::SlideMaster, *master);
    if (&layout != layout_) {
      damages_.push_back({0, "Layout " + layout.name() + " has no master; the deck's first stands in."});
    }
  }

  /// In place of relationships of the type that lead nowhere.
  void replace(opc::Part& source, std::string_view type, const opc::Part& target) {
    std::vector<std::string> broken;
    for (const opc::Relationship& relationship : source.relationships()) {
      if (relationship.is(type)) broken.push_back(relationship.id);
    }
    for (const std::string& id : broken) package_.removeRelationship(source, id);
    package_.addRelationship(source, std::string(RelationshipBase).append(type), target);
  }

  opc::Package& package_;
  opc::Part* presentation_;
  std::set<opc::Part*> slides_;
  /// What stands in for missing ones.
  opc::Part* layout_ = nullptr;
  std::vector<Damage> damages_;
  /// Why a slide is empty.
  std::string lastReason_;
};

}  // namespace

std::vector<Damage> repair(opc::Package& package) { return Repairer(package).run(); }

}  // namespace deck
