// What a workbook lists: its sheets, defined names and the parts that hold texts and styles.

#include "workbook/book/Book.h"

#include <utility>

#include "basic/Strings.h"
#include "workbook/Failure.h"
#include "workbook/book/Names.h"
#include "workbook/book/Relationships.h"
#include "workbook/book/Xml.h"

namespace workbook {
namespace {

/// The part that the package is about.
std::string mainPart(const Parts& parts) {
  if (parts.has("mimetype")) {
    failOpening(parts.path(), "it is an OpenDocument file; give it the name that belongs to it (.ods)");
  }
  std::string part = targetOfKind(readRelationships(parts, ""), "officeDocument");
  if (part.empty()) failOpening(parts.path(), "it is a ZIP archive, but no workbook");
  if (part.ends_with(".bin")) {
    failOpening(parts.path(), "it is a binary workbook; give it the name that belongs to it (.xlsb)");
  }
  return part;
}

[[noreturn]] void failAsOther(const Parts& parts, std::string_view root) {
  const std::string what = root == "presentation" ? "a presentation"
                           : root == "document"   ? "a text document"
                                                  : "a document of " + basic::InQuotes(root);
  failOpening(parts.path(), "it is " + what + ", no workbook");
}

/// A list for a message, not without end.
class NameList {
 public:
  void add(std::string_view name) {
    if (++count_ > Most) return;
    text_ += (count_ == 1 ? "" : ", ") + basic::InQuotes(name);
  }
  [[nodiscard]] std::string text() const {
    if (count_ == 0) return "none";
    return count_ <= Most ? text_ : text_ + " and " + std::to_string(count_ - Most) + " more";
  }

 private:
  static constexpr int Most = 20;
  std::string text_;
  int count_ = 0;
};

constexpr std::string_view Example = "Enter A1:B2 for cells A1, A2, B1 and B2";

}  // namespace

Book::Book(std::string bytes, const std::string& path) : parts_(std::move(bytes), path) {
  const std::string part = mainPart(parts_);
  const auto document = xml::parse(parts_, part);
  const pugi::xml_node root = document->document_element();
  if (xml::localName(root.name()) != "workbook") failAsOther(parts_, xml::localName(root.name()));

  const std::vector<Relationship> relationships = readRelationships(parts_, part);
  stylesPart_ = targetOfKind(relationships, "styles");
  stringsPart_ = targetOfKind(relationships, "sharedStrings");
  themePart_ = targetOfKind(relationships, "theme");
  if (xml::flag(xml::child(root, "workbookPr"), "date1904")) dateSystem_ = basic::DateSystem::From1904;

  for (pugi::xml_node node : xml::child(root, "sheets").children()) {
    SheetEntry sheet;
    sheet.name = xml::attribute(node, "name");
    const std::string_view state = xml::attribute(node, "state");
    sheet.isVisible = state.empty() || state == "visible";
    const std::string_view id = xml::attribute(node, "id");
    for (const Relationship& relationship : relationships) {
      if (relationship.id != id) continue;
      sheet.part = relationship.target;
      sheet.isWorksheet = relationship.kind == "worksheet";
    }
    sheets_.push_back(std::move(sheet));
  }
  for (pugi::xml_node node : xml::child(root, "definedNames").children()) {
    const auto local = xml::number(xml::attribute(node, "localSheetId"));
    names_.push_back({std::string(xml::attribute(node, "name")), node.child_value(),
                      local ? std::optional<std::size_t>(*local) : std::nullopt, xml::flag(node, "hidden")});
  }
}

SharedStrings& Book::strings() {
  if (!strings_) strings_ = std::make_unique<SharedStrings>(parts_, stringsPart_);
  return *strings_;
}

const Styles& Book::styles() {
  if (!styles_) styles_ = std::make_unique<Styles>(parts_, stylesPart_);
  return *styles_;
}

std::size_t Book::find(std::string_view name) const {
  std::optional<std::size_t> found;
  NameList worksheets;
  for (std::size_t i = 0; i < sheets_.size(); ++i) {
    if (sheets_[i].isWorksheet) worksheets.add(sheets_[i].name);
    if (!isSameName(sheets_[i].name, name)) continue;
    if (found)
      fail("workbook " + basic::InQuotes(parts_.path()) + " has several sheets named " +
           basic::InQuotes(name));
    found = i;
  }
  const std::string list = ". Its worksheets: " + worksheets.text();
  if (!found) {
    fail("workbook " + basic::InQuotes(parts_.path()) + " has no sheet named " + basic::InQuotes(name) +
         list);
  }
  if (!sheets_[*found].isWorksheet) {
    fail("sheet " + basic::InQuotes(name) + " of workbook " + basic::InQuotes(parts_.path()) +
         " has no cells: it is a chart or a dialog" + list);
  }
  return *found;
}

/// The sheet's own names come before those of the workbook.
const DefinedName* Book::findName(std::size_t sheet, std::string_view name) const {
  const DefinedName* found = nullptr;
  for (const DefinedName& defined : names_) {
    if (!isSameName(defined.name, name)) continue;
    if (defined.sheet == sheet) return &defined;
    if (!defined.sheet) found = &defined;
  }
  return found;
}

Book::Target Book::resolve(std::size_t sheet, std::string_view reference) const {
  std::optional<basic::Reference> parsed = basic::ParseReference(reference);
  if (!parsed) {
    const DefinedName* name = findName(sheet, basic::Trim(reference));
    if (name == nullptr) {
      NameList known;
      for (const DefinedName& defined : names_) {
        if (!defined.isHidden && (!defined.sheet || defined.sheet == sheet)) known.add(defined.name);
      }
      fail("invalid range specification " + basic::InQuotes(reference) + " for workbook " +
           basic::InQuotes(parts_.path()) + ". " + std::string(Example) +
           ", or a defined name (there are: " + known.text() + ")");
    }
    parsed = basic::ParseReference(name->refersTo);
    if (!parsed) {
      fail("the name " + basic::InQuotes(reference) + " of workbook " + basic::InQuotes(parts_.path()) +
           " does not stand for one range of cells, but for " + basic::InQuotes(name->refersTo) + ". " +
           std::string(Example));
    }
  }
  return {parsed->sheet ? find(*parsed->sheet) : sheet, parsed->area};
}

}  // namespace workbook
