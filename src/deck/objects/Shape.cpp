// Shapes of a slide, over their XML.

#include "deck/objects/Shape.h"

#include "basic/Format.h"
#include "deck/Failure.h"
#include "deck/objects/Chart.h"
#include "deck/objects/Links.h"
#include "deck/objects/Table.h"
#include "deck/objects/Tags.h"
#include "deck/objects/TextBody.h"
#include "host/services.h"
#include "opc/Xml.h"

namespace deck {

std::int32_t Shapes::Count() const {
  return static_cast<std::int32_t>(presentation_->shapesOf(slideIndex_).all().size());
}

std::shared_ptr<PowerPoint::Shape> Shapes::Item(std::int32_t index) {
  if (index < 1 || index > Count()) {
    fail("There is no shape " + std::to_string(index) + " on slide " + std::to_string(slideIndex_) +
         ", which has " + std::to_string(Count()) + ".");
  }
  const pugi::xml_node node = presentation_->shapesOf(slideIndex_).all()[static_cast<std::size_t>(index - 1)];
  return std::make_shared<Shape>(presentation_, slideIndex_, node);
}

std::shared_ptr<PowerPoint::Shape> Shapes::Item(std::string_view name) {
  const pugi::xml_node node = presentation_->shapesOf(slideIndex_).find(name);
  if (!node)
    fail("There is no shape " + basic::InQuotes(name) + " on slide " + std::to_string(slideIndex_) + ".");
  return std::make_shared<Shape>(presentation_, slideIndex_, node);
}

void Shape::failFor(const char* what) const {
  fail("The shape " + basic::InQuotes(Name()) + " on slide " + std::to_string(slideIndex_) + " " + what +
       ".");
}

void Shape::Name(std::string_view name) { presentation_->renameShape(slideIndex_, node_, name); }

bool Shape::HasTextFrame() const { return std::string_view(node_.name()) == "p:sp"; }

std::shared_ptr<PowerPoint::TextFrame> Shape::TextFrame() {
  if (!HasTextFrame()) failFor("cannot hold text");
  return std::make_shared<ShapeText>(presentation_, slideIndex_, node_);
}

std::shared_ptr<PowerPoint::Tags> Shape::Tags() {
  return std::make_shared<deck::Tags>(
      presentation_, presentation_->tagStore().of(presentation_->slidePart(slideIndex_), node_));
}

std::shared_ptr<PowerPoint::LinkFormat> Shape::LinkFormat() {
  if (!pictureOf(node_) && linkSource(*presentation_, slideIndex_, node_).empty()) {
    failFor("shows no picture and is not linked to a file");
  }
  return std::make_shared<deck::LinkFormat>(presentation_, slideIndex_, node_);
}

std::shared_ptr<PowerPoint::OLEFormat> Shape::OLEFormat() {
  if (presentationml::isChart(node_)) return std::make_shared<Chart>(presentation_, slideIndex_, node_);
  const pugi::xml_node object = presentationml::oleObject(node_);
  if (!object) failFor("is neither a chart nor an embedded or linked object");
  return std::make_shared<deck::OLEFormat>(object.attribute("progId").value());
}

bool Shape::HasTable() const { return static_cast<bool>(presentationml::table(node_)); }

std::shared_ptr<PowerPoint::Table> Shape::Table() {
  if (!HasTable()) failFor("is no table");
  return std::make_shared<deck::Table>(presentation_, slideIndex_, node_);
}

std::shared_ptr<PowerPoint::GroupShapes> Shape::GroupItems() {
  if (Type() != PowerPoint::ShapeType::Group) failFor("is no group");
  return std::make_shared<GroupShapes>(presentation_, slideIndex_, node_);
}

GroupShapes::GroupShapes(std::shared_ptr<Presentation> presentation, std::int32_t slideIndex,
                         pugi::xml_node group)
    : presentation_(std::move(presentation)), slideIndex_(slideIndex) {
  collect(group);
}

void GroupShapes::collect(pugi::xml_node group) {
  opc::xml::forEachPreferred(group, [this](pugi::xml_node node) {
    if (std::string_view(node.name()) == "p:grpSp") {
      collect(node);
    } else if (presentationml::isShape(node)) {
      items_.push_back(node);
    }
  });
}

std::shared_ptr<PowerPoint::Shape> GroupShapes::Item(std::int32_t index) {
  if (index < 1 || index > Count()) {
    fail("There is no shape " + std::to_string(index) + " in a group on slide " +
         std::to_string(slideIndex_) + ", which has " + std::to_string(Count()) + ".");
  }
  return std::make_shared<Shape>(presentation_, slideIndex_, items_[static_cast<std::size_t>(index - 1)]);
}

std::string ShapeText::Text() const { return textOf(shape_.child("p:txBody")); }

void ShapeText::Text(std::string_view text) {
  pugi::xml_node body = shape_.child("p:txBody");
  if (!body) {
    if (text.empty()) return;
    body = addTextBody(shape_);
  }
  if (setText(body, text)) presentation_->noteShapeChange(slideIndex_, shape_);
}

void ShapeText::InsertDateTime(PowerPoint::DateTimeFormat format, bool insertAsField) {
  Text(basic::Format(host::Current().clock->Now(), PowerPoint::PictureOf(format)));
  if (!insertAsField) return;
  makeField(shape_.child("p:txBody"), "datetime" + std::to_string(static_cast<std::int32_t>(format)));
  presentation_->noteShapeChange(slideIndex_, shape_);
}

}  // namespace deck
