#include "render/scene/TableReader.h"

#include <algorithm>
#include <map>

#include "render/geometry/XmlValues.h"

// Tables: the grid with its merged cells, and the parts of a style that a cell takes over by its place.

namespace render {

namespace {

/// A part of a table style that holds for a cell, and where the cell lies in the
/// part's region.
struct StylePart {
  pugi::xml_node node;
  /// Left, top, right, bottom: the cell is at this edge of the region.
  bool edge[4];
};

class TableReader {
  /// "No Style, Table Grid": what a table looks like that names no style.
  static constexpr std::string_view Unnamed = "{5940675A-B579-460E-94D1-54222C63F5DA}";

 public:
  TableReader(pugi::xml_node tbl, Inheritance& inheritance, const TextContext& context)
      : tbl_(tbl), inheritance_(inheritance), context_(context), properties_(tbl.child("a:tblPr")) {
    style_ = properties_.child("a:tableStyle");
    if (!style_) {
      const std::string_view named = properties_.child_value("a:tableStyleId");
      style_ = inheritance.tableStyle(named.empty() ? Unnamed : named);
    }
    const auto flag = [&](const char* name) { return boolOf(properties_.attribute(name)).value_or(false); };
    firstRow_ = flag("firstRow");
    lastRow_ = flag("lastRow");
    firstColumn_ = flag("firstCol");
    lastColumn_ = flag("lastCol");
    bandRows_ = flag("bandRow");
    bandColumns_ = flag("bandCol");
  }

  Table read() {
    Table table;
    table.rightToLeft = boolOf(properties_.attribute("rtl")).value_or(false);
    for (const auto column : tbl_.child("a:tblGrid").children("a:gridCol")) {
      table.columns.push_back(pxFromEmu(std::max(0.0, emuOf(column.attribute("w")).value_or(0))));
    }
    columnCount_ = static_cast<int>(table.columns.size());
    for ([[maybe_unused]] const auto tr : tbl_.children("a:tr")) ++rowCount_;
    if (auto fill = readFill(properties_, context_.paint)) {
      table.fill = std::move(*fill);
    } else if (auto background = styleFill(style_.child("a:tblBg"))) {
      table.fill = std::move(*background);
    }
    int row = 0;
    for (const auto tr : tbl_.children("a:tr")) {
      auto& out = table.rows.emplace_back();
      out.height = pxFromEmu(std::max(0.0, emuOf(tr.attribute("h")).value_or(0)));
      int column = 0;
      for (const auto tc : tr.children("a:tc")) {
        if (column >= columnCount_) break;
        const bool covered =
            boolOf(tc.attribute("hMerge")).value_or(false) || boolOf(tc.attribute("vMerge")).value_or(false);
        if (!covered) out.cells.push_back(cell(tc, row, column));
        ++column;
      }
      ++row;
    }
    return table;
  }

 private:
  /// Weakest first; `key` tells which parts these are.
  std::vector<StylePart> parts(int row, int column, unsigned& key) const {
    std::vector<StylePart> found;
    const bool left = column == 0;
    const bool right = column == columnCount_ - 1;
    const bool top = row == 0;
    const bool bottom = row == rowCount_ - 1;
    unsigned bit = 1;
    const auto add = [&](bool holds, const char* name, bool oneRow, bool oneColumn) {
      const auto node = holds ? style_.child(name) : pugi::xml_node();
      if (node) {
        found.push_back({node, {left || oneColumn, top || oneRow, right || oneColumn, bottom || oneRow}});
        key |= bit;
      }
      bit <<= 1;
    };
    const bool inBody = !(firstRow_ && top) && !(lastRow_ && bottom);
    const bool inMiddle = !(firstColumn_ && left) && !(lastColumn_ && right);
    const bool oddRow = (row - (firstRow_ ? 1 : 0)) % 2 == 0;
    const bool oddColumn = (column - (firstColumn_ ? 1 : 0)) % 2 == 0;
    add(true, "a:wholeTbl", false, false);
    add(bandColumns_ && inMiddle && oddColumn, "a:band1V", false, true);
    add(bandColumns_ && inMiddle && !oddColumn, "a:band2V", false, true);
    add(bandRows_ && inBody && oddRow, "a:band1H", true, false);
    add(bandRows_ && inBody && !oddRow, "a:band2H", true, false);
    add(lastColumn_ && right, "a:lastCol", false, true);
    add(firstColumn_ && left, "a:firstCol", false, true);
    add(lastRow_ && bottom, "a:lastRow", true, false);
    add(firstRow_ && top, "a:firstRow", true, false);
    add(lastRow_ && lastColumn_ && bottom && right, "a:seCell", true, true);
    add(lastRow_ && firstColumn_ && bottom && left, "a:swCell", true, true);
    add(firstRow_ && lastColumn_ && top && right, "a:neCell", true, true);
    add(firstRow_ && firstColumn_ && top && left, "a:nwCell", true, true);
    return found;
  }

  PaintContext styleContext(pugi::xml_node reference) const {
    auto paint = inheritance_.paint(inheritance_.themePart());
    paint.colors.placeholder = readChildColor(reference, paint.colors);
    return paint;
  }

  /// Of a:fill or a:fillRef.
  std::optional<Fill> styleFill(pugi::xml_node node) const {
    if (const auto fill = node.child("a:fill")) return readFill(fill, context_.paint);
    if (const auto reference = node.child("a:fillRef")) {
      const int index = wholeOf(reference.attribute("idx"), 0, 0, LargestStyleIndex);
      if (index > 0) return readFillElement(inheritance_.theme().fill(index), styleContext(reference));
    }
    return {};
  }

  std::optional<Line> styleLine(pugi::xml_node side) const {
    if (const auto ln = side.child("a:ln")) {
      Line line;
      applyLine(line, ln, context_.paint);
      return line;
    }
    if (const auto reference = side.child("a:lnRef")) {
      Line line;
      const int index = wholeOf(reference.attribute("idx"), 0, 0, LargestStyleIndex);
      applyLine(line, inheritance_.theme().line(index), styleContext(reference));
      return line;
    }
    return {};
  }

  const ListStyle& listStyle(const std::vector<StylePart>& styleParts, unsigned key) {
    const auto known = listStyles_.find(key);
    if (known != listStyles_.end()) return known->second;
    ListStyle list = inheritance_.of({}).listStyle;
    for (const auto& part : styleParts) {
      const auto text = part.node.child("a:tcTxStyle");
      if (!text) continue;
      const auto color = readChildColor(text, context_.paint.colors);
      const auto bold = boolOf(text.attribute("b"));
      const auto italic = boolOf(text.attribute("i"));
      const std::string_view font = text.child("a:fontRef").attribute("idx").value();
      RunStyle own;
      if (const auto fonts = text.child("a:font")) own.apply(fonts, context_.paint);
      for (auto& level : list.levels) {
        if (color) level.run.fill = *color;
        if (bold) level.run.bold = bold;
        if (italic) level.run.italic = italic;
        if (!font.empty())
          level.run.latin = inheritance_.theme().typeface(font == "major" ? "+mj-lt" : "+mn-lt");
        if (!own.latin.empty()) level.run.latin = own.latin;
        if (!own.eastAsian.empty()) level.run.eastAsian = own.eastAsian;
        if (!own.complexScript.empty()) level.run.complexScript = own.complexScript;
      }
    }
    return listStyles_.emplace(key, std::move(list)).first->second;
  }

  TableCell cell(pugi::xml_node tc, int row, int column) {
    TableCell out;
    out.column = column;
    const auto span = [&](const char* name, int most) {
      return wholeOf(tc.attribute(name), 1, 1, std::max(1, most));
    };
    out.columnSpan = span("gridSpan", columnCount_ - column);
    out.rowSpan = span("rowSpan", rowCount_ - row);
    unsigned key = 0;
    const auto styleParts = parts(row, column, key);
    const auto tcPr = tc.child("a:tcPr");

    for (const auto& part : styleParts) {
      const auto style = part.node.child("a:tcStyle");
      if (auto fill = styleFill(style)) out.fill = std::move(*fill);
      const auto borders = style.child("a:tcBdr");
      static constexpr const char* outer[] = {"a:left", "a:top", "a:right", "a:bottom"};
      static constexpr const char* inner[] = {"a:insideV", "a:insideH", "a:insideV", "a:insideH"};
      for (int side = 0; side < 4; ++side) {
        if (auto line = styleLine(borders.child(part.edge[side] ? outer[side] : inner[side]))) {
          out.borders[side] = std::move(line);
        }
      }
    }
    if (auto fill = readFill(tcPr, context_.paint)) out.fill = std::move(*fill);
    static constexpr const char* own[] = {"a:lnL", "a:lnT", "a:lnR", "a:lnB"};
    for (int side = 0; side < 4; ++side) {
      const auto ln = tcPr.child(own[side]);
      if (!ln) continue;
      Line line = out.borders[side].value_or(Line{});
      applyLine(line, ln, context_.paint);
      out.borders[side] = std::move(line);
    }

    BodyProperties properties;
    const auto margin = [&](double& target, const char* name) {
      if (const auto emu = emuOf(tcPr.attribute(name))) target = pxFromEmu(*emu);
    };
    margin(properties.left, "marL");
    margin(properties.top, "marT");
    margin(properties.right, "marR");
    margin(properties.bottom, "marB");
    const std::string_view anchor = tcPr.attribute("anchor").value();
    properties.anchor = anchor == "ctr" ? Anchor::Center : anchor == "b" ? Anchor::Bottom : Anchor::Top;
    const std::string_view vert = tcPr.attribute("vert").value();
    if (vert == "vert") properties.direction = TextDirection::Down;
    if (vert == "vert270") properties.direction = TextDirection::Up;
    out.text = readText(tc.child("a:txBody"), listStyle(styleParts, key), properties, context_);
    return out;
  }

  pugi::xml_node tbl_;
  Inheritance& inheritance_;
  const TextContext& context_;
  pugi::xml_node properties_;
  pugi::xml_node style_;
  bool firstRow_ = false;
  bool lastRow_ = false;
  bool firstColumn_ = false;
  bool lastColumn_ = false;
  bool bandRows_ = false;
  bool bandColumns_ = false;
  int columnCount_ = 0;
  int rowCount_ = 0;
  std::map<unsigned, ListStyle> listStyles_;
};

}  // namespace

std::shared_ptr<const Table> readTable(pugi::xml_node tbl, Inheritance& inheritance,
                                       const TextContext& context) {
  return std::make_shared<Table>(TableReader(tbl, inheritance, context).read());
}

}  // namespace render
