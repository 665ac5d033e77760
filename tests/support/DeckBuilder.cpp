#include "support/DeckBuilder.h"

#include <algorithm>
#include <pugixml.hpp>
#include <sstream>

namespace support {
namespace {

const std::string Declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n";
const std::string Office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
const std::string Types = "application/vnd.openxmlformats-officedocument.presentationml.";
const std::string Namespaces =
    " xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\""
    " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\""
    " xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\"";
const std::string EmptyTree =
    "<p:nvGrpSpPr><p:cNvPr id=\"1\" name=\"\"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr><p:grpSpPr/>";
const std::string ColourMap =
    "<p:clrMap bg1=\"lt1\" tx1=\"dk1\" bg2=\"lt2\" tx2=\"dk2\" accent1=\"accent1\" accent2=\"accent2\" "
    "accent3=\"accent3\" accent4=\"accent4\" accent5=\"accent5\" accent6=\"accent6\" hlink=\"hlink\" "
    "folHlink=\"folHlink\"/>";

std::string escaped(const std::string& text) {
  pugi::xml_document document;
  document.append_child("a").append_attribute("v") = text.c_str();
  std::ostringstream out;
  document.save(out, "", pugi::format_raw | pugi::format_no_declaration);
  const std::string xml = out.str();  // <a v="..."/>
  return xml.substr(6, xml.size() - 9);
}

std::string relationship(const std::string& id, const std::string& type, const std::string& target,
                         bool external = false) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + Office + "/" + type + "\" Target=\"" + escaped(target) +
         "\"" + (external ? " TargetMode=\"External\"" : "") + "/>";
}

std::string relationships(const std::string& list) {
  return Declaration +
         "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" + list +
         "</Relationships>";
}

std::string theme() {
  std::string colours;
  for (const char* name : {"dk1", "lt1", "dk2", "lt2", "accent1", "accent2", "accent3", "accent4", "accent5",
                           "accent6", "hlink", "folHlink"}) {
    const std::string value = std::string(name).ends_with("1") && name[0] == 'l' ? "FFFFFF" : "1F497D";
    colours += std::string("<a:") + name + "><a:srgbClr val=\"" + value + "\"/></a:" + name + ">";
  }
  const std::string font = "<a:latin typeface=\"DejaVu Sans\"/><a:ea typeface=\"\"/><a:cs typeface=\"\"/>";
  const std::string fill = "<a:solidFill><a:schemeClr val=\"phClr\"/></a:solidFill>";
  const std::string line = "<a:ln w=\"9525\">" + fill + "</a:ln>";
  const std::string effect = "<a:effectStyle><a:effectLst/></a:effectStyle>";
  return Declaration +
         "<a:theme xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" name=\"Test\">" +
         "<a:themeElements><a:clrScheme name=\"Test\">" + colours +
         "</a:clrScheme><a:fontScheme name=\"Test\">" + "<a:majorFont>" + font +
         "</a:majorFont><a:minorFont>" + font + "</a:minorFont></a:fontScheme>" +
         "<a:fmtScheme name=\"Test\"><a:fillStyleLst>" + fill + fill + fill +
         "</a:fillStyleLst><a:lnStyleLst>" + line + line + line + "</a:lnStyleLst><a:effectStyleLst>" +
         effect + effect + effect + "</a:effectStyleLst><a:bgFillStyleLst>" + fill + fill + fill +
         "</a:bgFillStyleLst></a:fmtScheme></a:themeElements></a:theme>";
}

std::string master() {
  return Declaration + "<p:sldMaster" + Namespaces + "><p:cSld><p:spTree>" + EmptyTree +
         "</p:spTree></p:cSld>" + ColourMap +
         "<p:sldLayoutIdLst><p:sldLayoutId id=\"2147483649\" "
         "r:id=\"rId1\"/></p:sldLayoutIdLst></p:sldMaster>";
}

std::string layoutOf(const std::string& commonData) {
  return Declaration + "<p:sldLayout" + Namespaces + " type=\"blank\"><p:cSld name=\"Blank\">" + commonData +
         "</p:cSld><p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:sldLayout>";
}

std::string nvSpPr(int id, const std::string& name, const std::string& nvPr) {
  return "<p:nvSpPr><p:cNvPr id=\"" + std::to_string(id) + "\" name=\"" + escaped(name) +
         "\"/><p:cNvSpPr txBox=\"1\"/><p:nvPr>" + nvPr +
         "</p:nvPr></p:nvSpPr><p:spPr><a:xfrm><a:off x=\"100000\" y=\"" + std::to_string(id * 100000) +
         "\"/><a:ext cx=\"3000000\" cy=\"400000\"/></a:xfrm><a:prstGeom prst=\"rect\">" +
         "<a:avLst/></a:prstGeom></p:spPr>";
}

}  // namespace

std::string textShape(int id, const std::string& name, const std::string& text, const std::string& nvPr) {
  return "<p:sp>" + nvSpPr(id, name, nvPr) +
         "<p:txBody><a:bodyPr/><a:lstStyle/><a:p><a:r><a:rPr lang=\"en-US\" sz=\"2400\" b=\"1\"/><a:t>" +
         escaped(text) + "</a:t></a:r></a:p></p:txBody></p:sp>";
}

std::string shapeWithParagraphs(int id, const std::string& name, const std::string& paragraphs) {
  return "<p:sp>" + nvSpPr(id, name, {}) + "<p:txBody><a:bodyPr/><a:lstStyle/>" + paragraphs +
         "</p:txBody></p:sp>";
}

std::string plainShape(int id, const std::string& name, const std::string& spPr, const std::string& nvPr,
                       const std::string& more) {
  return "<p:sp><p:nvSpPr><p:cNvPr id=\"" + std::to_string(id) + "\" name=\"" + name +
         "\"/><p:cNvSpPr/><p:nvPr>" + nvPr + "</p:nvPr></p:nvSpPr><p:spPr>" + spPr + "</p:spPr>" + more +
         "</p:sp>";
}

std::string groupShape(int id, const std::string& name, const std::string& shapes,
                       const std::string& grpSpPr) {
  return "<p:grpSp><p:nvGrpSpPr><p:cNvPr id=\"" + std::to_string(id) + "\" name=\"" + name +
         "\"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr><p:grpSpPr>" + grpSpPr + "</p:grpSpPr>" + shapes +
         "</p:grpSp>";
}

std::string pictureShape(int id, const std::string& name, const std::string& blip, const std::string& nvPr) {
  return "<p:pic><p:nvPicPr><p:cNvPr id=\"" + std::to_string(id) + "\" name=\"" + name +
         "\"/><p:cNvPicPr/><p:nvPr>" + nvPr + "</p:nvPr></p:nvPicPr><p:blipFill>" + blip +
         "<a:srcRect l=\"10000\"/><a:stretch><a:fillRect/></a:stretch></p:blipFill><p:spPr><a:xfrm><a:off "
         "x=\"0\" y=\"0\"/><a:ext cx=\"9\" cy=\"9\"/></a:xfrm><a:prstGeom prst=\"rect\"/></p:spPr></p:pic>";
}

std::string graphicFrame(int id, const std::string& name, const std::string& uri,
                         const std::string& content) {
  return "<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id=\"" + std::to_string(id) + "\" name=\"" + name +
         "\"/><p:cNvGraphicFramePr/><p:nvPr/></p:nvGraphicFramePr><p:xfrm/><a:graphic><a:graphicData uri=\"" +
         uri + "\">" + content + "</a:graphicData></a:graphic></p:graphicFrame>";
}

std::string alternative(const std::string& choice, const std::string& fallback) {
  return "<mc:AlternateContent xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\" "
         "xmlns:p14=\"http://schemas.microsoft.com/office/powerpoint/2010/main\"><mc:Choice "
         "Requires=\"p14\">" +
         choice + "</mc:Choice><mc:Fallback>" + fallback + "</mc:Fallback></mc:AlternateContent>";
}

std::string tagsReference(const std::string& relationshipId) {
  return "<p:custDataLst><p:tags r:id=\"" + relationshipId + "\"/></p:custDataLst>";
}

DeckBuilder::DeckBuilder()
    : properties_("<p:showPr showNarration=\"1\"><p:present/><p:sldAll/></p:showPr>") {}

int DeckBuilder::addSlide(const std::string& shapes) {
  slides_.push_back({shapes, {}, {}, {}, {}, 1});
  return static_cast<int>(slides_.size());
}

void DeckBuilder::layout(const std::string& commonData) {
  part("ppt/slideLayouts/slideLayout1.xml", layoutOf(commonData));
}

std::string DeckBuilder::relate(int slide, const std::string& type, const std::string& target,
                                bool external) {
  SlideSource& source = slides_[at(slide)];
  const std::string id = "rId" + std::to_string(++source.lastRelationship);
  source.relationships += relationship(id, type, target, external);
  return id;
}

std::string DeckBuilder::addTags(const std::vector<std::pair<std::string, std::string>>& tags) {
  const std::string file = "tags/tag" + std::to_string(++lastTags_) + ".xml";
  std::string xml = Declaration + "<p:tagLst" + Namespaces + ">";
  for (const auto& [name, value] : tags) {
    xml += "<p:tag name=\"" + escaped(name) + "\" val=\"" + escaped(value) + "\"/>";
  }
  part("ppt/" + file, xml + "</p:tagLst>", Types + "tags+xml");
  return "../" + file;
}

void DeckBuilder::presentationTags(const std::vector<std::pair<std::string, std::string>>& tags) {
  presentationTags_ = addTags(tags).substr(3);
}

void DeckBuilder::customShow(int id, const std::vector<int>& slides, const std::string& more) {
  std::string sequence;
  for (const int slide : slides) sequence += "<p:sld r:id=\"" + slideRelationship(slide) + "\"/>";
  presentationExtra("<p:custShowLst><p:custShow name=\"Short\" id=\"" + std::to_string(id) + "\"><p:sldLst>" +
                    sequence + more + "</p:sldLst></p:custShow></p:custShowLst>");
}

void DeckBuilder::part(const std::string& name, const std::string& content, const std::string& type) {
  parts_.emplace_back(name, content);
  if (!type.empty()) types_[name] = type;
}

std::vector<ZipEntry> DeckBuilder::entries() const {
  std::string overrides;
  const auto typed = [&](const std::string& name, const std::string& type) {
    overrides += "<Override PartName=\"/" + name + "\" ContentType=\"" + type + "\"/>";
  };
  std::string slideIds;
  std::string slideRelationships;
  std::vector<std::pair<std::string, std::string>> all;
  for (std::size_t i = 0; i < slides_.size(); ++i) {
    const SlideSource& slide = slides_[i];
    const std::string number = std::to_string(i + 1);
    const std::string id = slideRelationship(static_cast<int>(i + 1));
    slideIds += "<p:sldId id=\"" + std::to_string(256 + i) + "\" r:id=\"" + id + "\"/>";
    slideRelationships += relationship(id, "slide", "slides/slide" + number + ".xml");
    typed("ppt/slides/slide" + number + ".xml", Types + "slide+xml");
    all.emplace_back("ppt/slides/slide" + number + ".xml",
                     Declaration + "<p:sld" + Namespaces + " " + slide.attributes + "><p:cSld><p:spTree>" +
                         EmptyTree + slide.shapes + "</p:spTree>" + slide.inCommonData +
                         "</p:cSld><p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr>" + slide.after +
                         "</p:sld>");
    all.emplace_back("ppt/slides/_rels/slide" + number + ".xml.rels",
                     relationships(relationship("rId1", "slideLayout", "../slideLayouts/slideLayout1.xml") +
                                   slide.relationships));
  }
  typed("ppt/presentation.xml", Types + "presentation.main+xml");
  typed("ppt/presProps.xml", Types + "presProps+xml");
  typed("ppt/slideMasters/slideMaster1.xml", Types + "slideMaster+xml");
  typed("ppt/slideLayouts/slideLayout1.xml", Types + "slideLayout+xml");
  typed("ppt/theme/theme1.xml", "application/vnd.openxmlformats-officedocument.theme+xml");
  for (const auto& [name, type] : types_) typed(name, type);

  std::vector<std::pair<std::string, std::string>> first{
      {"[Content_Types].xml",
       Declaration + "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">" +
           "<Default Extension=\"rels\" "
           "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>" +
           "<Default Extension=\"xml\" ContentType=\"application/xml\"/>" +
           "<Default Extension=\"png\" ContentType=\"image/png\"/>" + overrides + "</Types>"},
      {"_rels/.rels", relationships(relationship("rId1", "officeDocument", "ppt/presentation.xml"))},
      {"ppt/presentation.xml",
       Declaration + "<p:presentation" + Namespaces +
           "><p:sldMasterIdLst><p:sldMasterId id=\"2147483648\" r:id=\"rId1\"/></p:sldMasterIdLst>" +
           (slideIds.empty() ? "" : "<p:sldIdLst>" + slideIds + "</p:sldIdLst>") +
           "<p:sldSz cx=\"12192000\" cy=\"6858000\"/><p:notesSz cx=\"6858000\" cy=\"9144000\"/>" +
           presentationExtra_ + (presentationTags_.empty() ? "" : tagsReference("rId3")) +
           "</p:presentation>"},
      {"ppt/_rels/presentation.xml.rels",
       relationships(relationship("rId1", "slideMaster", "slideMasters/slideMaster1.xml") +
                     relationship("rId2", "presProps", "presProps.xml") +
                     (presentationTags_.empty() ? "" : relationship("rId3", "tags", presentationTags_)) +
                     slideRelationships)},
      {"ppt/presProps.xml",
       Declaration + "<p:presentationPr" + Namespaces + ">" + properties_ + "</p:presentationPr>"},
      {"ppt/slideMasters/slideMaster1.xml", master()},
      {"ppt/slideMasters/_rels/slideMaster1.xml.rels",
       relationships(relationship("rId1", "slideLayout", "../slideLayouts/slideLayout1.xml") +
                     relationship("rId2", "theme", "../theme/theme1.xml"))},
      {"ppt/slideLayouts/slideLayout1.xml", layoutOf("<p:spTree>" + EmptyTree + "</p:spTree>")},
      {"ppt/slideLayouts/_rels/slideLayout1.xml.rels",
       relationships(relationship("rId1", "slideMaster", "../slideMasters/slideMaster1.xml"))},
      {"ppt/theme/theme1.xml", theme()}};
  all.insert(all.begin(), first.begin(), first.end());

  std::map<std::string, std::size_t> places;
  for (std::size_t i = 0; i < all.size(); ++i) places.emplace(all[i].first, i);
  for (const auto& added : parts_) {
    const auto [place, isNew] = places.emplace(added.first, all.size());
    if (isNew) {
      all.push_back(added);
    } else {
      all[place->second].second = added.second;
    }
  }
  std::vector<ZipEntry> entries;
  for (const auto& [name, content] : all) {
    if (std::find(removed_.begin(), removed_.end(), name) == removed_.end())
      entries.push_back({name, content});
  }
  return entries;
}

}  // namespace support
