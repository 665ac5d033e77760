// Puts the tags of an old presentation onto what LibreOffice makes of it.

#include "app/import/DeckImport.h"

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "app/import/NewShapes.h"
#include "app/import/ShapeMatch.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Output.h"
#include "basic/CompoundFile.h"
#include "basic/Counted.h"
#include "basic/Quotes.h"
#include "basic/Strings.h"
#include "connections/StoredPassword.h"
#include "deck/objects/Presentation.h"
#include "opc/Xml.h"
#include "ppt/Deck.h"
#include "presentationml/ShapeNode.h"

namespace app {

namespace {

std::string kindOf(const ppt::Shape& shape) {
  switch (shape.kind) {
    case ppt::Shape::Kind::Line:
      return "Line";
    case ppt::Shape::Kind::Picture:
      return "Picture";
    case ppt::Shape::Kind::Object:
      return "Object";
    case ppt::Shape::Kind::Group:
      return "Group";
    case ppt::Shape::Kind::Table:
      return "Table";
    case ppt::Shape::Kind::Shape:
      break;
  }
  return shape.text.empty() ? "Shape" : "Text";
}

/// "Text 5", as a program shows one that its author has not named.
std::string nameOf(const ppt::Shape& shape) {
  return shape.name.empty() ? kindOf(shape) + ' ' + std::to_string(shape.number) : shape.name;
}

/// "Slide 2, 'Text 5' (Departures)".
std::string placeOf(const std::string& page, const ppt::Shape& shape) {
  std::string place = page + ", " + basic::InQuotes(oneLine(nameOf(shape)));
  if (!basic::Trim(shape.text).empty()) place += " (" + oneLine(shape.text) + ')';
  return place;
}

std::string withoutPassword(const std::string& value) {
  const LF2000::StoredPassword stored(value);
  return stored.IsSet() || stored.IsWithheld() ? stored.Shown() : value;
}

std::string listOf(const std::vector<ppt::Tag>& tags) {
  std::string list;
  for (const ppt::Tag& tag : tags) {
    if (!list.empty()) list += ", ";
    list += tag.name + " = " + basic::InQuotes(oneLine(withoutPassword(tag.value)));
  }
  return list;
}

void collectNames(const std::vector<NewShape>& shapes, std::set<std::string>& names) {
  for (const NewShape& shape : shapes) {
    names.insert(basic::UCase(presentationml::shapeName(shape.node)));
    collectNames(shape.members, names);
  }
}

void setName(const ShapeMatch::Pair& pair, const std::string& name) {
  pugi::xml_node properties = presentationml::shapeProperties(pair.made->node);
  pugi::xml_attribute stored = properties.attribute("name");
  if (!stored) stored = properties.append_attribute("name");
  stored = name.c_str();
}

/// The runtime finds shapes by their names: those that an author gave come back, and whoever has none gets
/// one that no other shape of the slide has.
void nameShapes(const std::vector<ShapeMatch::Pair>& pairs, const std::vector<NewShape>& all) {
  for (const ShapeMatch::Pair& pair : pairs) {
    if (!pair.old->name.empty()) setName(pair, opc::xml::legalText(pair.old->name));
  }
  std::set<std::string> taken;
  collectNames(all, taken);
  std::map<std::string, int> further;
  for (const ShapeMatch::Pair& pair : pairs) {
    if (!presentationml::shapeName(pair.made->node).empty()) continue;
    const std::string first = kindOf(*pair.old) + ' ' + std::to_string(pair.old->number);
    std::string name = first;
    for (int& number = further[first]; !taken.insert(basic::UCase(name)).second;) {
      name = first + " (" + std::to_string(++number + 1) + ')';
    }
    setName(pair, name);
  }
}

class Import {
 public:
  Import(std::shared_ptr<deck::Presentation> deck, const ppt::Deck& old)
      : deck_(std::move(deck)), old_(old) {}

  ImportedDeck run() {
    add(*deck_->Tags(), old_.tags);
    for (std::int32_t slide = 1; slide <= deck_->slideCount(); ++slide) {
      importSlide(slide, old_.slides[static_cast<std::size_t>(slide - 1)]);
    }
    loseTagsOf(old_.masters, "Master");
    loseTagsOf(old_.notes, "Notes page");
    deck_->tagStore().write();
    result_.bytes = deck_->package().serialize();
    return std::move(result_);
  }

 private:
  void add(PowerPoint::Tags& tags, const std::vector<ppt::Tag>& old) {
    for (const ppt::Tag& tag : old) tags.Add(tag.name, tag.value);
    result_.tags += old.size();
  }

  /// Of masters and notes nothing says which of the new ones is which.
  void loseTagsOf(const std::vector<ppt::Slide>& pages, const std::string& kind) {
    for (std::size_t i = 0; i < pages.size(); ++i) {
      const std::string page = kind + ' ' + std::to_string(i + 1);
      if (!pages[i].tags.empty()) result_.lost.push_back(page + ": " + listOf(pages[i].tags));
      loseTagsOf(pages[i].shapes, page);
    }
  }
  void loseTagsOf(const std::vector<ppt::Shape>& shapes, const std::string& page) {
    for (const ppt::Shape& shape : shapes) {
      if (!shape.tags.empty()) result_.lost.push_back(placeOf(page, shape) + ": " + listOf(shape.tags));
      loseTagsOf(shape.members, page);
    }
  }

  static std::string slideNumber(std::int32_t index) { return "Slide " + std::to_string(index); }

  void importSlide(std::int32_t index, const ppt::Slide& old) {
    add(*deck_->Slides()->Item(index)->Tags(), old.tags);
    opc::Part& part = deck_->slidePart(index);
    const std::vector<NewShape> made = newShapesOf(part);
    const ShapeMatch match = matchShapes(old.shapes, made);
    nameShapes(match.pairs, made);
    part.markChanged();
    for (const ShapeMatch::Pair& pair : match.pairs) importShape(index, *pair.old, pair.made->node);
    for (const ppt::Shape* lost : match.lost) {
      if (!lost->tags.empty())
        result_.lost.push_back(placeOf(slideNumber(index), *lost) + ": " + listOf(lost->tags));
    }
  }

  void importShape(std::int32_t slide, const ppt::Shape& old, pugi::xml_node node) {
    if (basic::EqualsIgnoreCase(old.program.substr(0, old.program.find('.')), "MSGraph")) {
      result_.warnings.push_back(placeOf(slideNumber(slide), old) + ": it is an embedded graph (" +
                                 old.program +
                                 "), which stays an object and shows no data. Put a chart in its place.");
    }
    if (old.tags.empty()) return;
    deck::TagList& list = deck_->tagStore().of(deck_->slidePart(slide), node);
    for (const ppt::Tag& tag : old.tags) list.add(tag.name, tag.value);
    result_.tags += old.tags.size();
    ++result_.taggedShapes;
  }

  std::shared_ptr<deck::Presentation> deck_;
  const ppt::Deck& old_;
  ImportedDeck result_;
};

ImportedDeck importBytes(std::string_view bytes, const std::string& name, host::Loop& loop,
                         const PresentationConversion& conversion) {
  const ppt::Deck old = ppt::readDeck(bytes);
  auto package = opc::Package::fromBytes(convertPresentation(bytes, loop, conversion), name);
  const auto deck = std::make_shared<deck::Presentation>(std::move(package), std::string(), std::nullopt);
  if (deck->slideCount() != static_cast<std::int32_t>(old.slides.size())) {
    fail("LibreOffice makes " + basic::Counted(deck->slideCount(), "slide") + " of its " +
         std::to_string(old.slides.size()));
  }
  return Import(deck, old).run();
}

}  // namespace

std::string ImportedDeck::summary() const {
  std::string text = "with " + basic::Counted(tags, "tag") + ", on " + basic::Counted(taggedShapes, "shape") +
                     " among others";
  if (!lost.empty()) text += "; without those that are listed";
  return text;
}

bool isOldPresentation(std::string_view bytes) { return basic::IsCompoundFile(bytes); }

ImportedDeck importDeck(std::string_view bytes, const std::string& name, host::Loop& loop,
                        const PresentationConversion& conversion) {
  try {
    return importBytes(bytes, name, loop, conversion);
  } catch (const basic::Error& error) {
    fail(name + " cannot be imported: " + error.description + '.');
  }
}

}  // namespace app
