// What the XML of a shape says of its kind, name and place among the others.

#include "presentationml/ShapeNode.h"

#include <algorithm>
#include <array>

#include "basic/Strings.h"
#include "opc/Xml.h"

namespace presentationml {
namespace {

using PowerPoint::ShapeType;

pugi::xml_node graphicData(pugi::xml_node shape) { return shape.child("a:graphic").child("a:graphicData"); }

/// The last word of the URI that names what a frame holds.
std::string_view contentOf(pugi::xml_node frame) {
  const std::string_view uri = graphicData(frame).attribute("uri").value();
  return uri.substr(uri.rfind('/') + 1);
}

ShapeType typeOfFrame(pugi::xml_node frame) {
  const std::string_view content = contentOf(frame);
  if (content == "table") return ShapeType::Table;
  if (isChart(frame)) return ShapeType::Chart;
  if (content == "diagram") return ShapeType::Diagram;
  if (const pugi::xml_node object = oleObject(frame)) {
    return object.child("p:link") ? ShapeType::LinkedOLEObject : ShapeType::EmbeddedOLEObject;
  }
  return ShapeType::AutoShape;
}

ShapeType typeOfPicture(pugi::xml_node picture) {
  if (media(picture)) return ShapeType::Media;
  return linkRelationship(picture).empty() ? ShapeType::Picture : ShapeType::LinkedPicture;
}

ShapeType typeOfGeometry(pugi::xml_node shape) {
  if (nonVisualProperties(shape).child("p:cNvSpPr").attribute("txBox").as_bool()) return ShapeType::TextBox;
  const pugi::xml_node properties = shape.child("p:spPr");
  if (properties.child("a:custGeom")) return ShapeType::Freeform;
  const std::string_view preset = properties.child("a:prstGeom").attribute("prst").value();
  return preset == "line" || preset == "straightConnector1" ? ShapeType::Line : ShapeType::AutoShape;
}

}  // namespace

std::string_view localName(pugi::xml_node node) {
  const std::string_view name = node.name();
  return name.substr(name.find(':') + 1);
}

pugi::xml_node childByLocalName(pugi::xml_node parent, std::string_view name) {
  return parent.find_child([name](pugi::xml_node child) { return localName(child) == name; });
}

pugi::xml_node shapeTree(pugi::xml_node root) { return root.child("p:cSld").child("p:spTree"); }

bool isShape(pugi::xml_node node) {
  static constexpr std::array<std::string_view, 6> Elements{"p:sp",    "p:pic",   "p:graphicFrame",
                                                            "p:cxnSp", "p:grpSp", "p:contentPart"};
  return std::find(Elements.begin(), Elements.end(), node.name()) != Elements.end();
}

pugi::xml_node nonVisualProperties(pugi::xml_node shape) {
  return shape.find_child([](pugi::xml_node child) {
    const std::string_view name = localName(child);
    return name.starts_with("nv") && name.ends_with("Pr");
  });
}

pugi::xml_node shapeProperties(pugi::xml_node shape) {
  return childByLocalName(nonVisualProperties(shape), "cNvPr");
}

pugi::xml_node applicationProperties(pugi::xml_node shape) {
  return childByLocalName(nonVisualProperties(shape), "nvPr");
}

pugi::xml_node placeholder(pugi::xml_node shape) { return applicationProperties(shape).child("p:ph"); }

pugi::xml_node media(pugi::xml_node picture) {
  static constexpr std::array<std::string_view, 5> Kinds{"a:audioCd", "a:wavAudioFile", "a:audioFile",
                                                         "a:videoFile", "a:quickTimeFile"};
  return applicationProperties(picture).find_child([](pugi::xml_node child) {
    return std::find(Kinds.begin(), Kinds.end(), child.name()) != Kinds.end();
  });
}

std::string_view shapeName(pugi::xml_node shape) { return shapeProperties(shape).attribute("name").value(); }

std::uint32_t shapeId(pugi::xml_node shape) { return shapeProperties(shape).attribute("id").as_uint(); }

ShapeType shapeType(pugi::xml_node shape) {
  const std::string_view element = shape.name();
  if (element == "p:grpSp") return ShapeType::Group;
  if (placeholder(shape)) return ShapeType::Placeholder;
  if (element == "p:graphicFrame") return typeOfFrame(shape);
  if (element == "p:pic") return typeOfPicture(shape);
  return typeOfGeometry(shape);
}

bool isChart(pugi::xml_node shape) {
  const std::string_view content = contentOf(shape);
  return content == "chart" || content == "chartex";
}

pugi::xml_node chartReference(pugi::xml_node shape) {
  return contentOf(shape) == "chart" ? childByLocalName(graphicData(shape), "chart") : pugi::xml_node();
}

pugi::xml_node table(pugi::xml_node shape) { return graphicData(shape).child("a:tbl"); }

pugi::xml_node oleObject(pugi::xml_node shape) {
  pugi::xml_node found;
  opc::xml::forEachPreferred(graphicData(shape), [&](pugi::xml_node node) {
    if (!found && std::string_view(node.name()) == "p:oleObj") found = node;
  });
  return found;
}

std::string_view linkRelationship(pugi::xml_node shape) {
  if (const pugi::xml_node object = oleObject(shape)) {
    return object.child("p:link") ? object.attribute("r:id").value() : "";
  }
  if (const pugi::xml_node played = media(shape)) return played.attribute("r:link").value();
  pugi::xml_node fill = shape.child("p:blipFill");
  if (!fill) fill = shape.child("p:spPr").child("a:blipFill");
  return fill.child("a:blip").attribute("r:link").value();
}

ShapeIndex::ShapeIndex(pugi::xml_node shapeTree) {
  opc::xml::forEachPreferred(shapeTree, [this](pugi::xml_node node) {
    if (!isShape(node)) return;
    all_.push_back(node);
    byName_.emplace(basic::UCase(shapeName(node)), node);
  });
}

pugi::xml_node ShapeIndex::find(std::string_view name) const {
  const auto found = byName_.find(basic::UCase(name));
  return found == byName_.end() ? pugi::xml_node() : found->second;
}

}  // namespace presentationml
