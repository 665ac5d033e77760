#include "render/scene/TableStyles.h"

#include <map>
#include <memory>
#include <string>

#include "basic/Strings.h"

// The styles that decks name without defining them, written as the XML that would define them.

namespace render {

namespace {

/// A family of styles that differ in their colours. Parts are separated by ';', each a name and its
/// properties:
///   text=COLOUR[!]     text, bold with '!'
///   fill=COLOUR
///   SIDES=COLOUR[/W]   lines: l t r b, h and v between cells; W in points, 'd' after it draws two lines
/// A COLOUR is a name of the theme, with C and D for the style's own, then ~N (opacity), ^N (tint) or %N
/// (shade) in per cent, and @N to take the Nth fill or line of the theme.
struct Family {
  const char* name;
  const char* parts;
};

constexpr Family Families[] = {
    {"plain", "wholeTbl text=tx1"},
    {"grid", "wholeTbl text=tx1 ltrbhv=tx1"},
    {"themed1",
     "wholeTbl text=dk1 ltrbhv=C@1;band1H fill=C~40;band1V fill=C~40 tb=C@1;lastCol text=! l=C@2 trbh=C@1;"
     "firstCol text=! r=C@2 ltbh=C@1;lastRow text=! lr=C@1 tb=C@2;firstRow text=lt1! ltr=C@1 b=lt1@2 fill=C"},
    {"themed2",
     "tblBg fill=C@3;wholeTbl text=lt1 ltrb=C^50@1;band1H fill=lt1~20;band1V fill=lt1~20;"
     "lastCol text=! l=lt1@2;firstCol text=! r=lt1@2;lastRow text=! t=lt1@2;firstRow text=! b=lt1@3"},
    {"light1",
     "wholeTbl text=tx1 tb=C;band1H fill=C~20;band1V fill=C~20;lastCol text=!;firstCol text=!;"
     "lastRow text=! t=C;firstRow text=! b=C"},
    {"light2",
     "wholeTbl text=tx1 ltrb=C;band1H tb=C;band1V lr=C;band2V lr=C;lastCol text=!;firstCol text=!;"
     "lastRow text=! t=C/4d;firstRow text=bg1! fill=C@1"},
    {"light3",
     "wholeTbl text=tx1 ltrbhv=C;band1H fill=C~20;band1V fill=C~20;lastCol text=!;firstCol text=!;"
     "lastRow text=! t=C/4d;firstRow text=C! b=C/2"},
    {"medium1",
     "wholeTbl text=dk1 ltrbh=C fill=lt1;band1H fill=C^20;band1V fill=C^20;lastCol text=!;firstCol text=!;"
     "lastRow text=! t=C/4d fill=lt1;firstRow text=lt1! fill=C"},
    {"medium2",
     "wholeTbl text=dk1 ltrbhv=lt1 fill=C^20;band1H fill=C^40;band1V fill=C^40;lastCol text=lt1! fill=C;"
     "firstCol text=lt1! fill=C;lastRow text=lt1! t=lt1/3 fill=C;firstRow text=lt1! b=lt1/3 fill=C"},
    {"medium3",
     "wholeTbl text=dk1 tb=dk1/2 fill=lt1;band1H fill=dk1^20;band1V fill=dk1^20;lastCol text=lt1! fill=C;"
     "firstCol text=lt1! fill=C;lastRow text=! t=dk1/4d fill=lt1;firstRow text=lt1! b=dk1/2 fill=C;"
     "seCell text=dk1;swCell text=dk1"},
    {"medium4",
     "wholeTbl text=dk1 ltrbhv=C fill=C^20;band1H fill=C^40;band1V fill=C^40;lastCol text=!;firstCol text=!;"
     "lastRow text=! t=C/2 fill=C^20;firstRow text=! fill=C^20"},
    {"dark1",
     "wholeTbl text=lt1 fill=C;band1H fill=C%60;band1V fill=C%60;lastCol text=! l=lt1/2 fill=C%60;"
     "firstCol text=! r=lt1/2 fill=C%60;lastRow text=! t=lt1/2 fill=C%40;firstRow text=! b=lt1/2 fill=dk1"},
    {"dark1grey",
     "wholeTbl text=dk1 fill=dk1^20;band1H fill=dk1^40;band1V fill=dk1^40;lastCol text=lt1! l=lt1/2 "
     "fill=dk1^60;"
     "firstCol text=lt1! r=lt1/2 fill=dk1^60;lastRow text=lt1! t=lt1/2 fill=dk1^60;"
     "firstRow text=lt1! b=lt1/2 fill=dk1"},
    {"dark2",
     "wholeTbl text=dk1 fill=C^20;band1H fill=C^40;band1V fill=C^40;lastCol text=!;firstCol text=!;"
     "lastRow text=! t=dk1/4d fill=C^20;firstRow text=lt1! fill=D"},
};

struct Known {
  std::string_view id;
  std::string_view family;
  std::string_view color;
  std::string_view other = {};
};

/// The styles that presentation programs know by their ids alone.
constexpr Known Styles[] = {
    {"{2D5ABB26-0587-4C30-8999-92F81FD0307C}", "plain", "tx1"},
    {"{5940675A-B579-460E-94D1-54222C63F5DA}", "grid", "tx1"},
    {"{3C2FFA5D-87B4-456A-9821-1D502468CF0F}", "themed1", "accent1"},
    {"{284E427A-3D55-4303-BF80-6455036E1DE7}", "themed1", "accent2"},
    {"{69C7853C-536D-4A76-A0AE-DD22124D55A5}", "themed1", "accent3"},
    {"{775DCB02-9BB8-47FD-8907-85C794F793BA}", "themed1", "accent4"},
    {"{35758FB7-9AC5-4552-8A53-C91805E547FA}", "themed1", "accent5"},
    {"{08FB837D-C827-4EFA-A057-4D05807E0F7C}", "themed1", "accent6"},
    {"{D113A9D2-9D6B-4929-AA2D-F23B5EE8CBE7}", "themed2", "accent1"},
    {"{18603FDC-E32A-4AB5-989C-0864C3EAD2B8}", "themed2", "accent2"},
    {"{306799F8-075E-4A3A-A7F6-7FBC6576F1A4}", "themed2", "accent3"},
    {"{E269D01E-BC32-4049-B463-5C60D7B0CCD2}", "themed2", "accent4"},
    {"{327F97BB-C833-4FB7-BDE5-3F7075034690}", "themed2", "accent5"},
    {"{638B1855-1B75-4FBE-930C-398BA8C253C6}", "themed2", "accent6"},
    {"{9D7B26C5-4107-4FEC-AEDC-1716B250A1EF}", "light1", "tx1"},
    {"{3B4B98B0-60AC-42C2-AFA5-B58CD77FA1E5}", "light1", "accent1"},
    {"{0E3FDE45-AF77-4B5C-9715-49D594BDF05E}", "light1", "accent2"},
    {"{C083E6E3-FA7D-4D7B-A595-EF9225AFEA82}", "light1", "accent3"},
    {"{D27102A9-8310-4765-A935-A1911B00CA55}", "light1", "accent4"},
    {"{5FD0F851-EC5A-4D38-B0AD-8093EC10F338}", "light1", "accent5"},
    {"{68D230F3-CF80-4859-8CE7-A43EE81993B5}", "light1", "accent6"},
    {"{7E9639D4-E3E2-4D34-9284-5A2195B3D0D7}", "light2", "tx1"},
    {"{69012ECD-51FC-41F1-AA8D-1B2483CD663E}", "light2", "accent1"},
    {"{72833802-FEF1-4C79-8D5D-14CF1EAF98D9}", "light2", "accent2"},
    {"{F2DE63D5-997A-4646-A377-4702673A728D}", "light2", "accent3"},
    {"{17292A2E-F333-43FB-9621-5CBBE7FDCDCB}", "light2", "accent4"},
    {"{5A111915-BE36-4E01-A7E5-04B1672EAD32}", "light2", "accent5"},
    {"{912C8C85-51F0-491E-9774-3900AFEF0FD7}", "light2", "accent6"},
    {"{616DA210-FB5B-4158-B5E0-FEB733F419BA}", "light3", "tx1"},
    {"{BC89EF96-8CEA-46FF-86C4-4CE0E7609802}", "light3", "accent1"},
    {"{5DA37D80-6434-44D0-A028-1B22A696006F}", "light3", "accent2"},
    {"{8799B23B-EC83-4686-B30A-512413B5E67A}", "light3", "accent3"},
    {"{ED083AE6-46FA-4A59-8FB0-9F97EB10719F}", "light3", "accent4"},
    {"{BDBED569-4797-4DF1-A0F4-6AAB3CD982D8}", "light3", "accent5"},
    {"{E8B1032C-EA38-4F05-BA0D-38AFFFC7BED3}", "light3", "accent6"},
    {"{793D81CF-94F2-401A-BA57-92F5A7B2D0C5}", "medium1", "dk1"},
    {"{B301B821-A1FF-4177-AEE7-76D212191A09}", "medium1", "accent1"},
    {"{9DCAF9ED-07DC-4A11-8D7F-57B35C25682E}", "medium1", "accent2"},
    {"{1FECB4D8-DB02-4DC6-A0A2-4F2EBAE1DC90}", "medium1", "accent3"},
    {"{1E171933-4619-4E11-9A3F-F7608DF75F80}", "medium1", "accent4"},
    {"{FABFCF23-3B69-468F-B69F-88F6DE6A72F2}", "medium1", "accent5"},
    {"{10A1B5D5-9B99-4C35-A422-299274C87663}", "medium1", "accent6"},
    {"{073A0DAA-6AF3-43AB-8588-CEC1D06C72B9}", "medium2", "dk1"},
    {"{5C22544A-7EE6-4342-B048-85BDC9FD1C3A}", "medium2", "accent1"},
    {"{21E4AEA4-8DFA-4A89-87EB-49C32662AFE0}", "medium2", "accent2"},
    {"{F5AB1C69-6EDB-4FF4-983F-18BD219EF322}", "medium2", "accent3"},
    {"{00A15C55-8517-42AA-B614-E9B94910E393}", "medium2", "accent4"},
    {"{7DF18680-E054-41AD-8BC1-D1AEF772440D}", "medium2", "accent5"},
    {"{93296810-A885-4BE3-A3E7-6D5BEEA58F35}", "medium2", "accent6"},
    {"{8EC20E35-A176-4012-BC5E-935CFFF8708E}", "medium3", "dk1"},
    {"{6E25E649-3F16-4E02-A733-19D2CDBF48F0}", "medium3", "accent1"},
    {"{85BE263C-DBD7-4A20-BB59-AAB30ACAA65A}", "medium3", "accent2"},
    {"{EB344D84-9AFB-497E-A393-DC336BA19D2E}", "medium3", "accent3"},
    {"{EB9631B5-78F2-41C9-869B-9F39066F8104}", "medium3", "accent4"},
    {"{74C1A8A3-306A-4EB7-A6B1-4F7E0EB9C5D6}", "medium3", "accent5"},
    {"{2A488322-F2BA-4B5B-9748-0D474271808F}", "medium3", "accent6"},
    {"{D7AC3CCA-C797-4891-BE02-D94E43425B78}", "medium4", "dk1"},
    {"{69CF1AB2-1976-4502-BF36-3FF5EA218861}", "medium4", "accent1"},
    {"{8A107856-5554-42FB-B03E-39F5DBC370BA}", "medium4", "accent2"},
    {"{0505E3EF-67EA-436B-97B2-0124C06EBD24}", "medium4", "accent3"},
    {"{C4B1156A-380E-4F78-BDF5-A606A8083BF9}", "medium4", "accent4"},
    {"{22838BEF-8BB2-4498-84A7-C5851F593DF1}", "medium4", "accent5"},
    {"{16D9F66E-5EB9-4882-86FB-DCBF35E3C3E4}", "medium4", "accent6"},
    {"{E8034E78-7F5D-4C2E-B375-FC64B27BC917}", "dark1grey", "dk1"},
    {"{125E5076-3810-47DD-B79F-674D7AD40C01}", "dark1", "accent1"},
    {"{37CE84F3-28C3-443E-9E96-99CF82512B78}", "dark1", "accent2"},
    {"{D03447BB-5D67-496B-8E87-E561075AD55C}", "dark1", "accent3"},
    {"{E929F9F4-4A8F-4326-A1B4-22849713DDAB}", "dark1", "accent4"},
    {"{8FD4443E-F989-4FC4-A0C8-D5A2AF1F390B}", "dark1", "accent5"},
    {"{AF606853-7671-496A-8E4F-DF71F8EC918B}", "dark1", "accent6"},
    {"{5202B0CA-FC54-4496-8BCA-5EF66A818D29}", "dark2", "dk1", "dk1"},
    {"{0660B408-B3CF-4A94-85FC-2B1E0A45F4A2}", "dark2", "accent1", "accent2"},
    {"{91EBBBCC-DAD2-459C-BE2E-F6DE35CF9A28}", "dark2", "accent3", "accent4"},
    {"{46F890A9-2807-4EBB-B81D-B2AA78EC7F39}", "dark2", "accent5", "accent6"},
};

/// Cuts off what stands before `separator`.
std::string_view cut(std::string_view& rest, char separator) {
  const auto end = rest.find(separator);
  const auto first = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  return first;
}

/// Writes a style's parts as the XML that a deck has for its own styles.
class Definition {
 public:
  explicit Definition(const Known& style) : style_(style) {}

  std::string write(std::string_view parts) {
    xml_ = "<a:tblStyle>";
    while (!parts.empty()) part(cut(parts, ';'));
    return xml_ + "</a:tblStyle>";
  }

 private:
  struct Colour {
    std::string xml;
    std::string themeIndex;
  };

  [[nodiscard]] Colour colour(std::string_view written) const {
    Colour made;
    if (const auto at = written.find('@'); at != std::string_view::npos) {
      made.themeIndex = written.substr(at + 1);
      written = written.substr(0, at);
    }
    const auto end = written.find_first_of("~^%");
    const auto name = written.substr(0, end);
    made.xml = "<a:schemeClr val=\"";
    made.xml += name == "C" ? style_.color : name == "D" ? style_.other : name;
    made.xml += "\">";
    if (end != std::string_view::npos) {
      made.xml += written[end] == '~' ? "<a:alpha" : written[end] == '^' ? "<a:tint" : "<a:shade";
      made.xml += " val=\"" + std::string(written.substr(end + 1)) + "000\"/>";
    }
    made.xml += "</a:schemeClr>";
    return made;
  }

  void part(std::string_view written) {
    const std::string name(cut(written, ' '));
    std::string text;
    std::string fill;
    std::string lines;
    while (!written.empty()) {
      auto value = cut(written, ' ');
      const auto key = cut(value, '=');
      if (key == "text") {
        const bool bold = value.ends_with('!');
        if (bold) value.remove_suffix(1);
        text = std::string("<a:tcTxStyle") + (bold ? " b=\"on\">" : ">") + "<a:fontRef idx=\"minor\"/>" +
               (value.empty() ? "" : colour(value).xml) + "</a:tcTxStyle>";
      } else if (key == "fill") {
        const auto made = colour(value);
        fill = made.themeIndex.empty()
                   ? "<a:fill><a:solidFill>" + made.xml + "</a:solidFill></a:fill>"
                   : "<a:fillRef idx=\"" + made.themeIndex + "\">" + made.xml + "</a:fillRef>";
      } else {
        for (const char side : key) lines += line(side, value);
      }
    }
    xml_ += "<a:" + name + ">" + text;
    // A background holds its fill itself.
    xml_ += name == "tblBg" ? fill : "<a:tcStyle><a:tcBdr>" + lines + "</a:tcBdr>" + fill + "</a:tcStyle>";
    xml_ += "</a:" + name + ">";
  }

  [[nodiscard]] std::string line(char side, std::string_view value) const {
    const auto written = cut(value, '/');
    const auto made = colour(written);
    const bool isDouble = value.ends_with('d');
    if (isDouble) value.remove_suffix(1);
    const std::string name = side == 'l'   ? "left"
                             : side == 't' ? "top"
                             : side == 'r' ? "right"
                             : side == 'b' ? "bottom"
                             : side == 'h' ? "insideH"
                                           : "insideV";
    std::string inner;
    if (!made.themeIndex.empty()) {
      inner = "<a:lnRef idx=\"" + made.themeIndex + "\">" + made.xml + "</a:lnRef>";
    } else {
      const int points = value.empty() ? 1 : value.front() - '0';
      inner = "<a:ln w=\"" + std::to_string(points * 12700) + "\" cmpd=\"" + (isDouble ? "dbl" : "sng") +
              "\"><a:solidFill>" + made.xml + "</a:solidFill></a:ln>";
    }
    return "<a:" + name + ">" + inner + "</a:" + name + ">";
  }

  const Known& style_;
  std::string xml_;
};

}  // namespace

pugi::xml_node builtInTableStyle(std::string_view id) {
  static std::map<std::string_view, std::unique_ptr<pugi::xml_document>> made;
  for (const auto& style : Styles) {
    if (!basic::EqualsIgnoreCase(style.id, id)) continue;
    auto& document = made[style.id];
    if (!document) {
      document = std::make_unique<pugi::xml_document>();
      for (const auto& family : Families) {
        if (style.family == family.name) document->load_string(Definition(style).write(family.parts).c_str());
      }
    }
    return document->document_element();
  }
  return {};
}

}  // namespace render
