#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "deck/objects/Application.h"
#include "opc/Package.h"
#include "support/ZipFile.h"

namespace support {

/// XML of a text shape with one run; `nvPr` goes into its p:nvPr.
std::string textShape(int id, const std::string& name, const std::string& text, const std::string& nvPr = {});
/// XML of a p:sp with this p:txBody content (paragraphs).
std::string shapeWithParagraphs(int id, const std::string& name, const std::string& paragraphs);
/// XML of a p:sp with this content of its p:spPr and nothing to place it by; `nvPr` goes into its p:nvPr,
/// `more` stands behind.
std::string plainShape(int id, const std::string& name, const std::string& spPr = {},
                       const std::string& nvPr = {}, const std::string& more = {});
/// XML of a p:grpSp around these shapes, with this content of its p:grpSpPr.
std::string groupShape(int id, const std::string& name, const std::string& shapes,
                       const std::string& grpSpPr = {});
/// XML of a p:pic with this a:blip; `nvPr` goes into its p:nvPr.
std::string pictureShape(int id, const std::string& name, const std::string& blip,
                         const std::string& nvPr = {});
/// XML of a p:graphicFrame with this content of its a:graphicData.
std::string graphicFrame(int id, const std::string& name, const std::string& uri,
                         const std::string& content = {});
/// XML of an mc:AlternateContent for readers that know the namespace p14.
std::string alternative(const std::string& choice, const std::string& fallback);
/// XML of a p:custDataLst with one reference to tags.
std::string tagsReference(const std::string& relationshipId);

/// Builds small presentations in memory, complete enough that PowerPoint and
/// other programs open them: one master, one layout, one theme. Everything can
/// be replaced or taken away to make a broken one.
class DeckBuilder {
 public:
  DeckBuilder();
  /// A deck whose one slide has these shapes.
  static DeckBuilder of(const std::string& shapes = {}) {
    DeckBuilder deck;
    deck.addSlide(shapes);
    return deck;
  }

  /// Adds a slide with these shapes (XML below p:spTree); returns its index from 1.
  int addSlide(const std::string& shapes = {});
  /// Replaces the shapes of a slide.
  void shapes(int slide, const std::string& xml) { slides_[at(slide)].shapes = xml; }
  /// Replaces what the one layout shows: XML of its p:cSld.
  void layout(const std::string& commonData);
  /// Attributes of the slide's root, such as show="0".
  void slideAttributes(int slide, const std::string& attributes) {
    slides_[at(slide)].attributes = attributes;
  }
  /// XML behind the slide's p:cSld, such as a p:transition.
  void afterCommonData(int slide, const std::string& xml) { slides_[at(slide)].after = xml; }
  /// XML behind the slide's p:spTree, such as tagsReference().
  void afterShapes(int slide, const std::string& xml) { slides_[at(slide)].inCommonData = xml; }
  /// Adds a relationship of the slide; returns its id. Types are those of
  /// namespace relationship and others of the office document namespace.
  std::string relate(int slide, const std::string& type, const std::string& target, bool external = false);
  /// Adds a part with tags; returns its target seen from a slide ("../tags/tag1.xml").
  std::string addTags(const std::vector<std::pair<std::string, std::string>>& tags);
  /// Tags of the presentation itself.
  void presentationTags(const std::vector<std::pair<std::string, std::string>>& tags);
  /// Content of p:showPr's parent: the presentation's properties.
  void presentationProperties(const std::string& xml) { properties_ = xml; }
  /// Appends XML behind the presentation's p:notesSz, such as a p:custShowLst.
  void presentationExtra(const std::string& xml) { presentationExtra_ += xml; }
  /// Appends the presentation's one custom show; `more` stands behind its slides.
  void customShow(int id, const std::vector<int>& slides, const std::string& more = {});
  /// The id of the presentation's relationship to a slide.
  [[nodiscard]] static std::string slideRelationship(int slide) {
    return "rId" + std::to_string(100 + slide);
  }

  /// Adds a part, or replaces one, whatever it then does to the deck.
  void part(const std::string& name, const std::string& content, const std::string& type = {});
  void removePart(const std::string& name) { removed_.push_back(name); }

  [[nodiscard]] std::vector<ZipEntry> entries() const;
  [[nodiscard]] std::string bytes() const { return zipOf(entries()); }
  [[nodiscard]] std::unique_ptr<opc::Package> package() const {
    return opc::Package::fromBytes(bytes(), "test.pptx");
  }
  /// Opened without a file or an application.
  [[nodiscard]] std::shared_ptr<deck::Presentation> presentation() const { return opened(bytes()); }
  [[nodiscard]] static std::shared_ptr<deck::Presentation> opened(std::string bytes) {
    return std::make_shared<deck::Presentation>(opc::Package::fromBytes(std::move(bytes), "test.pptx"),
                                                "/decks/test.pptx", std::nullopt);
  }

 private:
  struct SlideSource {
    std::string shapes;
    std::string attributes;
    std::string inCommonData;
    std::string after;
    std::string relationships;
    int lastRelationship = 1;
  };
  static std::size_t at(int slide) { return static_cast<std::size_t>(slide - 1); }

  std::vector<SlideSource> slides_;
  std::vector<std::pair<std::string, std::string>> parts_;
  std::map<std::string, std::string> types_;  // overrides of parts added by part()
  std::vector<std::string> removed_;
  std::string properties_;
  std::string presentationExtra_;
  std::string presentationTags_;
  int lastTags_ = 0;
};

}  // namespace support
