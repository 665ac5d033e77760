// What a deck's parts are linked to, and where these links lead once it is sent.

#include "app/distribution/DeckLinks.h"

#include <algorithm>
#include <string_view>

#include "basic/Strings.h"
#include "deck/objects/Links.h"
#include "opc/PackageFile.h"
#include "opc/Relationships.h"

namespace app {

namespace {

bool isLinkedFile(const opc::Relationship& relationship) {
  return relationship.external && !relationship.is(opc::relationship::Hyperlink);
}

bool isAddress(std::string_view path) { return path.find("://") != std::string_view::npos; }

/// RFC 3986, 2.3 and what else stands in paths as it is.
std::string encoded(std::string_view path) {
  constexpr std::string_view Plain = "-._~/!$&'()*+,;=:@\\";
  std::string text;
  for (const char each : path) {
    const auto byte = static_cast<unsigned char>(each);
    const bool isAlphanumeric =
        (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
    if (isAlphanumeric || Plain.find(each) != std::string_view::npos) {
      text += each;
    } else {
      constexpr char Digits[] = "0123456789ABCDEF";
      (text += '%') += Digits[byte >> 4U];
      text += Digits[byte & 15U];
    }
  }
  return text;
}

/// "file:///srv/a.png", "file:///C:\data\a.xlsx", "file:///\\server\share\a.xlsx", as PowerPoint writes them.
std::string absoluteTarget(const std::string& path) {
  return (path.starts_with('/') ? "file://" : "file:///") + encoded(path);
}

class LinkChange {
 public:
  LinkChange(const std::string& original, bool goAlong, host::EnclosurePlaces& places)
      : original_(original), goAlong_(goAlong), places_(places) {}

  /// The part that stores the relationships.
  void change(opc::Part& stored) {
    for (pugi::xml_node element : stored.xml().document_element().children()) {
      const opc::Relationship relationship = opc::relationshipOf(element);
      if (!isLinkedFile(relationship)) continue;
      const std::string target = changed(relationship.target);
      if (target == relationship.target) continue;
      element.attribute("Target").set_value(target.c_str());
      stored.markChanged();
      hasChanged_ = true;
    }
  }
  [[nodiscard]] bool hasChanged() const { return hasChanged_; }
  std::vector<host::Enclosure> take() { return std::move(files_); }

 private:
  std::string changed(const std::string& target) {
    const std::string source = deck::sourcePath(target, original_);
    if (source.empty() || isAddress(source)) return target;
    // "book.xlsx!Sheet1!R1C1:R5C3"
    const std::size_t name = source.find_last_of("/\\") + 1;
    const std::size_t mark = std::min(source.find('!', name), source.size());
    const std::string file = source.substr(0, mark);
    const std::string place = places_.Of(file);
    files_.push_back({file, place, false, {}, "a link of the deck"});
    return goAlong_ ? encoded(place + source.substr(mark)) : absoluteTarget(source);
  }

  const std::string& original_;
  bool goAlong_;
  host::EnclosurePlaces& places_;
  std::vector<host::Enclosure> files_;
  bool hasChanged_ = false;
};

}  // namespace

LinkedDeck withLinks(const std::string& file, const std::string& original, bool goAlong,
                     host::EnclosurePlaces& places) {
  std::string bytes = opc::readPackageFile(file).bytes;
  const auto package = opc::Package::fromBytes(bytes, file);
  LinkChange change(original, goAlong, places);
  for (opc::Part* part : package->parts()) {
    if (part->name().ends_with(".rels")) change.change(*part);
  }
  if (change.hasChanged()) bytes = package->serialize();
  return {std::move(bytes), change.take()};
}

}  // namespace app
