#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// An Open Packaging Conventions package (ECMA-376 part 2) held in memory: parts
// by name, their content types and relationships. Parts are inflated and parsed
// when first asked for. A part that nobody changed is saved byte for byte as it
// came, still compressed as it was. Part names are written without the leading
// slash ("ppt/slides/slide1.xml") and compared without regard to case. One thread.
// Everything that fails throws basic::Error with the package's name in the text.

namespace opc {

class Archive;
class ContentTypes;
class Package;
class Relationships;

/// Relationship types as ECMA-376 part 1 names them, without what stands before
/// the last slash: that differs between the transitional and the strict form.
namespace relationship {
inline constexpr std::string_view OfficeDocument = "officeDocument";
inline constexpr std::string_view Slide = "slide";
inline constexpr std::string_view SlideLayout = "slideLayout";
inline constexpr std::string_view SlideMaster = "slideMaster";
inline constexpr std::string_view NotesSlide = "notesSlide";
inline constexpr std::string_view Theme = "theme";
inline constexpr std::string_view ThemeOverride = "themeOverride";
inline constexpr std::string_view PresProps = "presProps";
inline constexpr std::string_view TableStyles = "tableStyles";
inline constexpr std::string_view Tags = "tags";
inline constexpr std::string_view Image = "image";
inline constexpr std::string_view Chart = "chart";
inline constexpr std::string_view Hyperlink = "hyperlink";
inline constexpr std::string_view Thumbnail = "thumbnail";
}  // namespace relationship

struct Relationship {
  std::string id;
  /// The full type URI.
  std::string type;
  /// As written: relative to the source part, or a URI when external.
  std::string target;
  bool external = false;

  /// Whether the type ends in "/" and this name.
  [[nodiscard]] bool is(std::string_view typeName) const;
};

/// One part. Lives as long as its package, or until it is removed: a new one at
/// once, any other when the package is then saved.
class Part {
 public:
  ~Part();
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;

  [[nodiscard]] const std::string& name() const { return name_; }
  /// Empty when the package states none.
  [[nodiscard]] std::string contentType() const;
  [[nodiscard]] Package& package() const { return *package_; }
  /// 0 as the package was opened; another one, never used before, with each setBytes.
  [[nodiscard]] std::uint64_t version() const { return version_; }

  /// The part's present content. The view holds until the part changes or is
  /// parsed by xml().
  [[nodiscard]] std::string_view bytes();
  /// The same without a copy, for keeping: it stays as it is when the part changes.
  [[nodiscard]] std::shared_ptr<const std::string> sharedBytes();

  /// The part parsed, with white space, comments and processing instructions
  /// kept; the names of presentationml, drawingml, its charts and relationships always
  /// carry the prefixes p, a, c and r. A document type declaration is refused. Who alters
  /// a node calls markChanged().
  [[nodiscard]] const pugi::xml_document& xml();
  void markChanged();
  /// For reading a small part once: parses as xml() does, without keeping the
  /// document afterwards.
  void readXml(const std::function<void(const pugi::xml_document&)>& reader);

  [[nodiscard]] const std::vector<Relationship>& relationships();
  /// By id; null when there is none.
  [[nodiscard]] const Relationship* relationship(std::string_view id);
  /// The part that an internal relationship leads to; null when the relationship
  /// or the part is missing, or when it is external.
  [[nodiscard]] Part* target(std::string_view id);
  [[nodiscard]] Part* target(const Relationship& relationship);
  /// The target of the first relationship of a type (see namespace relationship);
  /// null when there is none.
  [[nodiscard]] Part* related(std::string_view typeName);

 private:
  friend class Package;
  Part(Package& package, std::string name, std::int64_t entry);

  [[nodiscard]] std::unique_ptr<pugi::xml_document> parse(std::string& text);
  Relationships& loadRelationships();

  Package* package_;
  std::string name_;
  std::int64_t entry_;  // index in the archive, -1 for a new part
  std::uint64_t version_ = 0;
  bool changed_ = false;  // since the package was opened or saved
  bool removed_ = false;
  std::shared_ptr<const std::string> bytes_;  // null while they are not needed
  std::string parsedText_;                    // what the nodes of xml_ point into
  std::unique_ptr<pugi::xml_document> xml_;
  std::unique_ptr<Relationships> relationships_;
};

/// What a package may inflate to; beyond it the package is refused as a bomb.
struct Limits {
  std::uint64_t partBytes = 512ULL << 20;
  std::uint64_t totalBytes = 4ULL << 30;
  /// Largest inflated size in multiples of the compressed one, asked of what is
  /// bigger than ratioFrom: of each part and of the whole.
  std::uint64_t ratio = 300;
  std::uint64_t ratioFrom = 8ULL << 20;
};

class Package {
 public:
  /// Reads the file once; it is not kept open.
  static std::unique_ptr<Package> open(const std::string& path, const Limits& limits = {});
  /// From bytes in memory; `name` is what error texts call it.
  static std::unique_ptr<Package> fromBytes(std::string bytes, std::string name, const Limits& limits = {});
  ~Package();
  Package(const Package&) = delete;
  Package& operator=(const Package&) = delete;

  /// What error texts call the package: the path it was opened from.
  [[nodiscard]] const std::string& name() const { return name_; }

  /// Made from the bytes that it was read from or last saved as.
  [[nodiscard]] std::size_t fingerprint() const;
  /// Reads every part, and throws when one is not whole. Keeps nothing.
  void verify() const;

  /// Null when there is no such part. The name may carry a leading slash.
  [[nodiscard]] Part* find(std::string_view name) const;
  /// An error when there is no such part.
  [[nodiscard]] Part& part(std::string_view name) const;
  /// All parts in the order of the archive, new ones last.
  [[nodiscard]] std::vector<Part*> parts() const;
  /// The target of the first package relationship of a type: the presentation
  /// part, the thumbnail. Null when there is none.
  [[nodiscard]] Part* related(std::string_view typeName);

  /// Adds a part; its name must be free.
  Part& add(std::string name, std::string_view contentType, std::string bytes);
  /// Adds a part with the content, content type and relationships of another, whose ids stay; the name must
  /// be free and lie in the same folder. `targetOf` names the part that an internal relationship leads to in
  /// the copy, which may be added later; empty: where it led.
  Part& copy(Part& source, const std::string& name,
             const std::function<std::string(const Relationship&)>& targetOf);
  /// Replaces a part's content.
  void setBytes(Part& part, std::string bytes);
  /// Removes a part with its relationships and content type. Relationships that
  /// lead to it are the caller's.
  void remove(Part& part);
  /// The name `stem` N `extension` with the smallest N above every one given out
  /// so far that is free ("ppt/tags/tag", ".xml").
  [[nodiscard]] std::string freeName(std::string_view stem, std::string_view extension);

  /// Returns the new relationship's id. `type` is the full type URI.
  std::string addRelationship(Part& source, std::string_view type, const Part& target);
  /// An id that is not there is no error.
  void removeRelationship(Part& source, std::string_view id);

  /// The package as it would be saved now. Equal states give equal bytes.
  [[nodiscard]] std::string serialize();
  /// Takes bytes that serialize() just gave as the saved state.
  void rebase(std::string bytes);

 private:
  friend class Part;
  /// Hashes part names without regard to the case of ASCII letters.
  struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const;
  };
  struct NameEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
  };

  Package(std::string bytes, std::string name, const Limits& limits);
  void readDirectory(const Limits& limits);
  Part& insert(std::string name, std::int64_t entry);
  Part& relationshipsPartOf(Part& source);
  [[nodiscard]] std::string inflate(const Part& part) const;
  [[noreturn]] void fail(const std::string& what) const;

  std::string name_;
  std::unique_ptr<Archive> archive_;
  std::vector<std::unique_ptr<Part>> parts_;
  std::unordered_map<std::string_view, Part*, NameHash, NameEqual> byName_;
  std::unordered_map<std::string, int> lastNumber_;  // given out by freeName, by stem
  std::uint64_t lastVersion_ = 0;                    // given out by setBytes
  std::unique_ptr<Part> root_;                       // the nameless source of the package's relationships
  std::unique_ptr<ContentTypes> contentTypes_;
};

}  // namespace opc
