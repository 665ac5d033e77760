// A block of cells written into a worksheet's XML, with the formats that are there already.

#include "deck/charts/ChartSheet.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>

#include "basic/Markup.h"
#include "basic/Strings.h"
#include "deck/Failure.h"
#include "deck/charts/NumberDigits.h"
#include "deck/charts/SheetXml.h"
#include "opc/Xml.h"

namespace deck {
namespace {

bool isIn(std::uint32_t place, std::uint32_t first, std::uint32_t last) {
  return place >= first && place <= last;
}

bool isIn(const basic::Area& area, std::uint32_t row, std::uint32_t column) {
  return isIn(row, area.firstRow, area.lastRow) && isIn(column, area.firstColumn, area.lastColumn);
}

/// A row or a cell with its place, which files may leave out.
struct Placed {
  std::uint32_t place;
  pugi::xml_node node;
};

class SheetFiller {
 public:
  SheetFiller(opc::Part& part, const ChartData& data, const std::vector<std::string>& header,
              const basic::Area& area, const basic::Area& used)
      : part_(part), xml_(part.xml()), data_(data), header_(header), area_(area), used_(used) {
    above_.resize(area.lastColumn - area.firstColumn + 1);
  }

  FilledSheet fill() {
    pugi::xml_node sheetData = xml_.child(xml_.root(), "sheetData");
    const std::vector<Placed> rows = rowsOf(sheetData);
    giveUpFormulas(rows);
    writeRows(rows);
    if (const pugi::xml_node dimension = xml_.child(xml_.root(), "dimension"))
      widen(dimension.attribute("ref"));
    sheetData.remove_children();
    FilledSheet filled{opc::xml::serialize(part_.xml()), lostFormulas_};
    const std::string name = xml_.name("sheetData");
    const std::size_t begin = filled.text.find("<" + name);
    const std::size_t end = filled.text.find('>', begin) + 1;
    filled.text.replace(begin, end - begin, "<" + name + ">" + out_ + "</" + name + ">");
    return filled;
  }

 private:
  bool isData(std::uint32_t row, std::uint32_t column) const { return isIn(area_, row, column); }
  bool isGone(std::uint32_t row, std::uint32_t column) const {
    return !isData(row, column) && isIn(used_, row, column);
  }

  void requireOrder(const std::vector<Placed>& placed) const {
    if (std::adjacent_find(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) {
          return a.place >= b.place;
        }) != placed.end()) {
      fail("part " + part_.name() + " of its embedded workbook has its rows or cells out of order");
    }
  }

  [[nodiscard]] std::vector<Placed> rowsOf(pugi::xml_node sheetData) const {
    std::vector<Placed> rows;
    std::uint32_t place = 0;
    for (pugi::xml_node row : xml_.children(sheetData, "row")) {
      place = row.attribute("r").as_uint(place + 1);
      if (!row.attribute("r")) row.prepend_attribute("r") = place;
      rows.push_back({place, row});
    }
    requireOrder(rows);
    return rows;
  }

  [[nodiscard]] std::vector<Placed> cellsOf(const Placed& row) const {
    std::vector<Placed> cells;
    std::uint32_t place = 0;
    for (pugi::xml_node cell : xml_.children(row.node, "c")) {
      const auto stated = basic::ParsePlace(cell.attribute("r").value());
      place = stated ? stated->column : place + 1;
      if (!cell.attribute("r")) cell.prepend_attribute("r") = cellName(row.place, place).c_str();
      cells.push_back({place, cell});
    }
    requireOrder(cells);
    return cells;
  }

  static std::string cellName(std::uint32_t row, std::uint32_t column) {
    return basic::ColumnLetters(column) + std::to_string(row);
  }

  /// Notes whether the data replace formulas. Cells elsewhere that shared one of
  /// them keep their last value.
  void giveUpFormulas(const std::vector<Placed>& rows) {
    std::set<std::string> given;
    std::vector<pugi::xml_node> sharing;
    for (const Placed& row : rows) {
      for (const Placed& cell : cellsOf(row)) {
        const pugi::xml_node formula = xml_.child(cell.node, "f");
        if (!formula) continue;
        const bool isShared = std::string_view(formula.attribute("t").value()) == "shared";
        if (!isData(row.place, cell.place) && !isGone(row.place, cell.place)) {
          if (isShared && !formula.first_child()) sharing.push_back(cell.node);
          continue;
        }
        lostFormulas_ = true;
        if (isShared && formula.first_child()) given.insert(formula.attribute("si").value());
      }
    }
    for (pugi::xml_node cell : sharing) {
      const pugi::xml_node formula = xml_.child(cell, "f");
      if (given.contains(formula.attribute("si").value())) cell.remove_child(formula);
    }
  }

  void writeRows(const std::vector<Placed>& rows) {
    std::uint32_t next = area_.firstRow;
    const auto writeUpTo = [&](std::uint32_t end) {
      for (; next <= area_.lastRow && next < end; ++next) writeRow({next, {}});
    };
    for (const Placed& row : rows) {
      writeUpTo(row.place);
      if (isIn(row.place, area_.firstRow, area_.lastRow)) {
        writeRow(row);
        next = row.place + 1;
      } else if (isIn(row.place, used_.firstRow, used_.lastRow)) {
        writeRow(row);
      } else {
        opc::xml::append(out_, row.node);
      }
    }
    writeUpTo(area_.lastRow + 1);
  }

  void writeRow(const Placed& row) {
    const bool hasData = isIn(row.place, area_.firstRow, area_.lastRow);
    const std::string name = xml_.name("row");
    out_ += "<" + name + " r=\"" + std::to_string(row.place) + "\"";
    for (const pugi::xml_attribute attribute : row.node.attributes()) {
      const std::string_view attributeName = attribute.name();
      // A chart shows no hidden rows; spans are a mere hint.
      if (attributeName == "r" || attributeName == "spans" || (hasData && attributeName == "hidden"))
        continue;
      out_.append(" ").append(attributeName).append("=\"");
      basic::AppendEscaped(out_, attribute.value());
      out_ += '"';
    }
    out_ += '>';
    writeCells(row, hasData);
    out_ += "</" + name + ">";
  }

  void writeCells(const Placed& row, bool hasData) {
    left_.reset();
    std::uint32_t next = hasData ? area_.firstColumn : area_.lastColumn + 1;
    const auto writeUpTo = [&](std::uint32_t end) {
      for (; next <= area_.lastColumn && next < end; ++next) writeCell(row.place, {next, {}});
    };
    for (const Placed& cell : cellsOf(row)) {
      writeUpTo(cell.place);
      if (isData(row.place, cell.place)) {
        writeCell(row.place, cell);
        next = cell.place + 1;
      } else if (isGone(row.place, cell.place)) {
        beginCell(row.place, cell.place, cell.node.attribute("s").value(), false);
        if (isCellOpen_) out_ += "/>";
      } else {
        opc::xml::append(out_, cell.node);
      }
    }
    writeUpTo(area_.lastColumn + 1);
  }

  /// Begins the tag of a cell, unless it would say nothing.
  void beginCell(std::uint32_t row, std::uint32_t column, std::string_view style, bool hasValue) {
    isCellOpen_ = hasValue || !style.empty();
    if (!isCellOpen_) return;
    out_ += "<" + xml_.name("c") + " r=\"" + cellName(row, column) + "\"";
    if (!style.empty()) {
      out_ += " s=\"";
      basic::AppendEscaped(out_, style);
      out_ += '"';
    }
  }

  std::string styleOf(std::uint32_t row, const Placed& cell) {
    const bool isHeader = row == area_.firstRow;
    std::optional<std::string>& above = above_[cell.place - area_.firstColumn];
    std::string style;
    if (cell.node) {
      style = cell.node.attribute("s").value();
    } else if (!isHeader && above) {
      style = *above;
    } else if (left_) {
      style = *left_;
    }
    if (!isHeader) above = style;
    // What a column of values has is no pattern for the categories, nor theirs for it.
    if (isHeader || cell.place > area_.firstColumn) left_ = style;
    return style;
  }

  void writeCell(std::uint32_t row, const Placed& cell) {
    const std::string style = styleOf(row, cell);
    const std::size_t column = cell.place - area_.firstColumn;
    if (row == area_.firstRow) return writeText(row, cell.place, style, header_[column]);
    const std::size_t index = row - area_.firstRow - 1;
    if (column > 0) return writeNumber(row, cell.place, style, data_.columns[column - 1].values[index]);
    const Category& category = data_.categories[index];
    if (const auto* text = std::get_if<std::string>(&category))
      return writeText(row, cell.place, style, *text);
    const auto* number = std::get_if<double>(&category);
    writeNumber(row, cell.place, style, number != nullptr ? *number : std::nan(""));
  }

  void writeNumber(std::uint32_t row, std::uint32_t column, std::string_view style, double value) {
    beginCell(row, column, style, !std::isnan(value));
    if (!isCellOpen_) return;
    if (std::isnan(value)) {
      out_ += "/>";
      return;
    }
    const std::string v = xml_.name("v");
    out_ += "><" + v + ">" + NumberDigits(value).text() + "</" + v + "></" + xml_.name("c") + ">";
  }

  void writeText(std::uint32_t row, std::uint32_t column, std::string_view style, std::string_view text) {
    beginCell(row, column, style, true);
    const std::string is = xml_.name("is");
    const std::string t = xml_.name("t");
    out_ += " t=\"inlineStr\"><" + is + "><" + t + " xml:space=\"preserve\">";
    basic::AppendEscaped(out_, escapedForSheet(text));
    out_ += "</" + t + "></" + is + "></" + xml_.name("c") + ">";
  }

  void widen(pugi::xml_attribute dimension) const {
    const auto stated = basic::ParseReference(dimension.value());
    if (!stated) return;
    const basic::Area& old = stated->area;
    const basic::Area now{std::min(old.firstRow, area_.firstRow), std::max(old.lastRow, area_.lastRow),
                          std::min(old.firstColumn, area_.firstColumn),
                          std::max(old.lastColumn, area_.lastColumn)};
    dimension = basic::AreaText(now).c_str();
  }

  opc::Part& part_;
  SheetXml xml_;
  const ChartData& data_;
  const std::vector<std::string>& header_;
  basic::Area area_;
  basic::Area used_;
  std::string out_;
  bool isCellOpen_ = false;
  bool lostFormulas_ = false;
  std::vector<std::optional<std::string>> above_;  // style of each column's last cell
  std::optional<std::string> left_;                // style of the row's last cell
};

/// Whether a text begins as _xHHHH_ does.
bool isEscape(std::string_view text) {
  constexpr std::size_t Length = 7;
  return text.size() >= Length && text.starts_with("_x") && text[Length - 1] == '_' &&
         text.substr(2, 4).find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

}  // namespace

std::string escapedForSheet(std::string_view text) {
  constexpr std::size_t LongestCell = 32000;
  text = basic::Left(text, LongestCell);
  std::string escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r') {
      if (!text.substr(i + 1).starts_with('\n')) escaped += '\n';
    } else if (isEscape(text.substr(i))) {
      escaped += "_x005F_";
    } else {
      escaped += text[i];
    }
  }
  return escaped;
}

FilledSheet fillSheet(opc::Part& part, const ChartData& data, const std::vector<std::string>& header,
                      const basic::Area& area, const basic::Area& used) {
  return SheetFiller(part, data, header, area, used).fill();
}

}  // namespace deck
