#include "render/TableStyles.h"

#include <map>
#include <memory>
#include <string>

#include "basic/Strings.h"

namespace render {

namespace {

struct Known {
  std::string_view id;
  const char* kind;
  const char* color;
};

constexpr Known Styles[] = {
    {"{073A0DAA-6AF3-43AB-8588-CEC1D06C72B9}", "medium2", "dk1"},
    {"{5C22544A-7EE6-4342-B048-85BDC9FD1C3A}", "medium2", "accent1"},
    {"{21E4AEA4-8DFA-4A89-87EB-49C32662AFE0}", "medium2", "accent2"},
    {"{F5AB1C69-6EDB-4FF4-983F-18BD219EF322}", "medium2", "accent3"},
    {"{00A15C55-8517-42AA-B614-E9B94910E393}", "medium2", "accent4"},
    {"{7DF18680-E054-41AD-8BC1-D1AEF772440D}", "medium2", "accent5"},
    {"{93296810-A885-4BE3-A3E7-6D5BEEA58F35}", "medium2", "accent6"},
    {"{5940675A-B579-460E-94D1-54222C63F5DA}", "grid", "tx1"},
    {"{2D5ABB26-0587-4C30-8999-92F81FD0307C}", "plain", "tx1"},
};

std::string border(std::string_view side, int width, std::string_view color) {
  const std::string name(side);
  return "<a:" + name + "><a:ln w=\"" + std::to_string(width) + "\"><a:solidFill><a:schemeClr val=\"" +
         std::string(color) + "\"/></a:solidFill></a:ln></a:" + name + ">";
}

std::string solid(std::string_view color, int tint) {
  std::string text = "<a:fill><a:solidFill><a:schemeClr val=\"" + std::string(color) + "\">";
  if (tint < 100) text += "<a:tint val=\"" + std::to_string(tint * 1000) + "\"/>";
  return text + "</a:schemeClr></a:solidFill></a:fill>";
}

std::string part(std::string_view name, const std::string& textStyle, const std::string& cellStyle) {
  const std::string tag(name);
  return "<a:" + tag + ">" + textStyle + "<a:tcStyle>" + cellStyle + "</a:tcStyle></a:" + tag + ">";
}

std::string textStyle(std::string_view color, bool bold) {
  return std::string("<a:tcTxStyle") + (bold ? " b=\"on\"" : "") +
         "><a:fontRef idx=\"minor\"/><a:schemeClr val=\"" + std::string(color) + "\"/></a:tcTxStyle>";
}

std::string definition(const Known& style) {
  static constexpr std::string_view sides[] = {"left", "right", "top", "bottom", "insideH", "insideV"};
  const std::string_view kind = style.kind;
  const auto borders = [&](std::string_view color) {
    std::string all = "<a:tcBdr>";
    for (const auto side : sides) all += border(side, 12700, color);
    return all + "</a:tcBdr>";
  };
  std::string text = "<a:tblStyle>";
  if (kind == "medium2") {
    const std::string_view color = style.color;
    const auto emphasis = textStyle("lt1", true);
    text += part("wholeTbl", textStyle("dk1", false), borders("lt1") + solid(color, 20));
    text += part("band1H", "", solid(color, 40)) + part("band1V", "", solid(color, 40));
    text += part("lastCol", emphasis, solid(color, 100)) + part("firstCol", emphasis, solid(color, 100));
    text += part("lastRow", emphasis,
                 "<a:tcBdr>" + border("top", 38100, "lt1") + "</a:tcBdr>" + solid(color, 100));
    text += part("firstRow", emphasis,
                 "<a:tcBdr>" + border("bottom", 38100, "lt1") + "</a:tcBdr>" + solid(color, 100));
  } else {
    text += part("wholeTbl", textStyle("tx1", false), kind == "grid" ? borders("tx1") : "");
  }
  return text + "</a:tblStyle>";
}

}  // namespace

pugi::xml_node builtInTableStyle(std::string_view id) {
  static std::map<std::string_view, std::unique_ptr<pugi::xml_document>> made;
  for (const auto& style : Styles) {
    if (!basic::EqualsIgnoreCase(style.id, id)) continue;
    auto& document = made[style.id];
    if (!document) {
      document = std::make_unique<pugi::xml_document>();
      document->load_string(definition(style).c_str());
    }
    return document->document_element();
  }
  return {};
}

}  // namespace render
