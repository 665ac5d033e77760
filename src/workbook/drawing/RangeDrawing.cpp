// A range of cells drawn as SVG: fills, borders, texts, what overflows and what is merged.

#include "workbook/drawing/RangeDrawing.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "basic/CellReference.h"
#include "basic/Markup.h"
#include "basic/Strings.h"
#include "workbook/book/Book.h"
#include "workbook/book/Opener.h"
#include "workbook/drawing/CellLooks.h"
#include "workbook/drawing/SheetLayout.h"
#include "workbook/sheet/CellView.h"
#include "workbook/sheet/LinkedItem.h"
#include "workbook/sheet/SheetReader.h"

namespace workbook {
namespace {

constexpr std::uint32_t MostRows = 500;
constexpr std::uint32_t MostColumns = 100;
/// Between a cell's edge and its text, in px.
constexpr double Padding = 3;
/// Of three blanks, in px.
constexpr double IndentStep = 9;
constexpr Rgb GridColor = 0xD4D4D4;

struct DrawnCell {
  std::string text;
  const CellLook* look = nullptr;
  Rgb color = 0;
  CellLook::Across across = CellLook::Across::Left;
  bool isText = true;
  bool isNumber = false;
  /// Hidden below a merged cell.
  bool isCovered = false;
  /// Of a merged cell: how many columns and rows it goes over.
  std::uint32_t columns = 1;
  std::uint32_t rows = 1;
};

std::string number(double value) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.6g", value);
  return digits;
}

std::string colorText(Rgb color) {
  char digits[8];
  std::snprintf(digits, sizeof digits, "#%06x", static_cast<unsigned>(color));
  return digits;
}

/// A number that does not fit is no number any more. Its width as fonts usually
/// have it: half the size for a figure, a quarter for points and blanks.
std::string fitted(const std::string& text, double size, double width) {
  double needed = 0;
  for (const char c : text) {
    // Of a character's bytes only the first one counts.
    if ((static_cast<unsigned char>(c) & 0xC0U) == 0x80U) continue;
    needed += size * (c == '.' || c == ',' || c == ' ' ? 0.25 : 0.5);
  }
  if (needed <= width) return text;
  std::string marks(static_cast<std::size_t>(std::max(width / (size * 0.5), 1.0)), '#');
  return marks;
}

class RangeDrawing {
 public:
  RangeDrawing(Book& book, const Book::Target& target)
      : book_(book),
        sheet_(book.sheets()[target.sheet]),
        area_(target.area),
        looks_(book.parts(), book.stylesPart(), book.themePart()),
        layout_(book.parts(), sheet_.part) {
    area_.lastRow = std::min(area_.lastRow, area_.firstRow + MostRows - 1);
    area_.lastColumn = std::min(area_.lastColumn, area_.firstColumn + MostColumns - 1);
    for (std::uint32_t column = area_.firstColumn; column <= area_.lastColumn; ++column) {
      lefts_.push_back(lefts_.back() + layout_.width(column));
    }
    for (std::uint32_t row = area_.firstRow; row <= area_.lastRow; ++row) {
      tops_.push_back(tops_.back() + layout_.height(row));
    }
    readCells();
    merge();
  }

  std::string svg() {
    const std::string width = number(std::max(lefts_.back(), 1.0));
    const std::string height = number(std::max(tops_.back(), 1.0));
    out_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
           "\" viewBox=\"0 0 " + width + " " + height + "\">";
    forEachCell([this](auto column, auto row, const DrawnCell& cell) { drawFill(column, row, cell); });
    forEachCell([this](auto column, auto row, const DrawnCell& cell) { drawText(column, row, cell); });
    // Where two cells' borders meet, the heavier one is seen.
    for (const bool heavy : {false, true}) {
      forEachCell(
          [&](auto column, auto row, const DrawnCell& cell) { drawBorders(column, row, cell, heavy); });
    }
    return std::move(out_) + "</svg>";
  }

 private:
  [[nodiscard]] std::size_t columnCount() const { return lefts_.size() - 1; }
  [[nodiscard]] std::size_t rowCount() const { return tops_.size() - 1; }
  DrawnCell& at(std::size_t column, std::size_t row) { return cells_[row * columnCount() + column]; }

  template <typename Visit>
  void forEachCell(Visit&& visit) {
    for (std::size_t row = 0; row < rowCount(); ++row) {
      for (std::size_t column = 0; column < columnCount(); ++column) {
        const DrawnCell& cell = at(column, row);
        if (!cell.isCovered) visit(column, row, cell);
      }
    }
  }

  void readCells() {
    cells_.resize(columnCount() * rowCount());
    for (DrawnCell& cell : cells_) cell.look = &looks_.at(0);
    SheetReader reader(book_, sheet_, area_);
    CellView view(book_);
    while (reader.next()) {
      for (std::uint32_t column = area_.firstColumn; column <= area_.lastColumn; ++column) {
        const CellData& data = reader.cell(column);
        DrawnCell& cell = at(column - area_.firstColumn, reader.row() - area_.firstRow);
        cell.look = &looks_.at(data.style);
        view.moveTo(reader.row(), column, data);
        cell.text = view.Text();
        cell.isText = data.kind == CellData::Kind::Text || data.kind == CellData::Kind::SharedText;
        cell.isNumber = data.kind == CellData::Kind::Number;
        cell.across = acrossOf(*cell.look, data.kind);
        cell.color = colorOf(*cell.look, data);
      }
    }
  }

  static CellLook::Across acrossOf(const CellLook& look, CellData::Kind kind) {
    if (look.across != CellLook::Across::General) return look.across;
    if (kind == CellData::Kind::Number) return CellLook::Across::Right;
    const bool isCentred = kind == CellData::Kind::Boolean || kind == CellData::Kind::Error;
    return isCentred ? CellLook::Across::Center : CellLook::Across::Left;
  }

  /// A number format may ask for a colour of its own.
  [[nodiscard]] Rgb colorOf(const CellLook& look, const CellData& data) const {
    constexpr std::uint32_t BeforeFormatColors = 7;
    if (data.kind != CellData::Kind::Number) return look.color;
    const int asked = book_.styles().at(data.style).format.color(data.number);
    if (asked <= 0) return look.color;
    return Palette::indexed(static_cast<std::uint32_t>(asked) + BeforeFormatColors).value_or(look.color);
  }

  void merge() {
    for (const basic::Area& merged : layout_.merged()) {
      if (merged.firstColumn < area_.firstColumn || merged.firstColumn > area_.lastColumn ||
          merged.firstRow < area_.firstRow || merged.firstRow > area_.lastRow) {
        continue;
      }
      const std::uint32_t lastColumn = std::min(merged.lastColumn, area_.lastColumn);
      const std::uint32_t lastRow = std::min(merged.lastRow, area_.lastRow);
      for (std::uint32_t row = merged.firstRow; row <= lastRow; ++row) {
        for (std::uint32_t column = merged.firstColumn; column <= lastColumn; ++column) {
          at(column - area_.firstColumn, row - area_.firstRow).isCovered = true;
        }
      }
      DrawnCell& first = at(merged.firstColumn - area_.firstColumn, merged.firstRow - area_.firstRow);
      first.isCovered = false;
      first.columns = lastColumn - merged.firstColumn + 1;
      first.rows = lastRow - merged.firstRow + 1;
    }
  }

  void drawFill(std::size_t column, std::size_t row, const DrawnCell& cell) {
    const double left = lefts_[column];
    const double top = tops_[row];
    const double right = lefts_[column + cell.columns];
    const double bottom = tops_[row + cell.rows];
    if (right <= left || bottom <= top) return;
    if (cell.look->fill) {
      out_ += "<rect x=\"" + number(left) + "\" y=\"" + number(top) + "\" width=\"" + number(right - left) +
              "\" height=\"" + number(bottom - top) + "\" fill=\"" + colorText(*cell.look->fill) + "\"/>";
    } else if (layout_.showsGrid()) {
      // Lines one px wide are sharp between px.
      out_ += "<path d=\"M" + number(left) + " " + number(bottom - 0.5) + "H" + number(right - 0.5) + "V" +
              number(top) + "\" fill=\"none\" stroke=\"" + colorText(GridColor) + "\"/>";
    }
  }

  void drawBorders(std::size_t column, std::size_t row, const DrawnCell& cell, bool heavy) {
    const double left = lefts_[column];
    const double top = tops_[row];
    // The borders of a merged cell are those of its cells at the edges.
    const DrawnCell& last = at(column + cell.columns - 1, row + cell.rows - 1);
    const double right = lefts_[column + cell.columns];
    const double bottom = tops_[row + cell.rows];
    if (right <= left || bottom <= top) return;
    const auto draw = [&](const Border& border, double x1, double y1, double x2, double y2) {
      if ((border.width > 1) == heavy) drawBorder(border, x1, y1, x2, y2);
    };
    draw(cell.look->border(Side::Left), left, top, left, bottom);
    draw(last.look->border(Side::Right), right, top, right, bottom);
    draw(cell.look->border(Side::Top), left, top, right, top);
    draw(last.look->border(Side::Bottom), left, bottom, right, bottom);
  }

  void drawBorder(const Border& border, double x1, double y1, double x2, double y2) {
    if (border.width <= 0) return;
    const auto line = [&](double shift, double width) {
      const double dx = x1 == x2 ? shift : 0;
      const double dy = y1 == y2 ? shift : 0;
      out_ += "<path d=\"M" + number(x1 + dx) + " " + number(y1 + dy) + "L" + number(x2 + dx) + " " +
              number(y2 + dy) + "\" stroke=\"" + colorText(border.color) + "\" stroke-width=\"" +
              number(width) + "\"";
      if (border.dash == Border::Dash::Dashed) out_ += " stroke-dasharray=\"4 2\"";
      if (border.dash == Border::Dash::Dotted) out_ += " stroke-dasharray=\"1 1\"";
      out_ += "/>";
    };
    if (border.isDouble) {
      line(-1, 1);
      line(1, 1);
    } else {
      line(border.width == 1 ? -0.5 : 0, border.width);
    }
  }

  void drawText(std::size_t column, std::size_t row, const DrawnCell& cell) {
    if (cell.text.empty()) return;
    const double left = lefts_[column];
    const double right = lefts_[column + cell.columns];
    const double top = tops_[row];
    const double bottom = tops_[row + cell.rows];
    if (right <= left || bottom <= top) return;
    const bool isBroken = cell.look->wraps || cell.text.find('\n') != std::string::npos;
    if (isBroken) {
      drawParagraph(cell, left, top, right, bottom);
    } else {
      drawLine(column, row, cell, left, top, right, bottom);
    }
  }

  /// The room of a text: its own cell, and the empty ones that it may run over.
  [[nodiscard]] std::pair<double, double> room(std::size_t column, std::size_t row, const DrawnCell& cell) {
    std::size_t first = column;
    std::size_t last = column + cell.columns;
    if (!cell.isText || cell.columns > 1) return {lefts_[first], lefts_[last]};
    const auto isFree = [&](std::size_t other) {
      return at(other, row).text.empty() && !at(other, row).isCovered && at(other, row).columns == 1;
    };
    if (cell.across != CellLook::Across::Right) {
      while (last < columnCount() && isFree(last)) ++last;
    }
    if (cell.across != CellLook::Across::Left) {
      while (first > 0 && isFree(first - 1)) --first;
    }
    return {lefts_[first], lefts_[last]};
  }

  void drawLine(std::size_t column, std::size_t row, const DrawnCell& cell, double left, double top,
                double right, double bottom) {
    const double size = cell.look->size * PxPerPoint;
    const auto [roomLeft, roomRight] = room(column, row, cell);
    const double indent = Padding + IndentStep * cell.look->indent;
    double x = left + indent;
    const char* anchor = "start";
    if (cell.across == CellLook::Across::Right) {
      x = right - indent;
      anchor = "end";
    } else if (cell.across == CellLook::Across::Center) {
      x = (left + right) / 2;
      anchor = "middle";
    }
    // Of usual fonts: capitals are 0.7 high, letters go 0.2 below the line.
    double baseline = bottom - 2 - 0.2 * size;
    if (cell.look->down == CellLook::Down::Top) baseline = top + 1 + 0.95 * size;
    if (cell.look->down == CellLook::Down::Center) baseline = (top + bottom) / 2 + 0.35 * size;
    out_ += "<svg x=\"" + number(roomLeft) + "\" y=\"" + number(top) + "\" width=\"" +
            number(roomRight - roomLeft) + "\" height=\"" + number(bottom - top) + "\"><text x=\"" +
            number(x - roomLeft) + "\" y=\"" + number(baseline - top) + "\" text-anchor=\"" + anchor +
            "\" xml:space=\"preserve\" fill=\"" + colorText(cell.color) + "\" style=\"" +
            fontStyle(*cell.look) + "\">" +
            basic::Escaped(cell.isNumber ? fitted(cell.text, size, right - left) : cell.text) +
            "</text></svg>";
  }

  /// Only a browser can break lines.
  void drawParagraph(const DrawnCell& cell, double left, double top, double right, double bottom) {
    const char* down = cell.look->down == CellLook::Down::Top      ? "flex-start"
                       : cell.look->down == CellLook::Down::Center ? "center"
                                                                   : "flex-end";
    const char* across = cell.across == CellLook::Across::Right     ? "right"
                         : cell.across == CellLook::Across::Center  ? "center"
                         : cell.across == CellLook::Across::Justify ? "justify"
                                                                    : "left";
    out_ += "<foreignObject x=\"" + number(left) + "\" y=\"" + number(top) + "\" width=\"" +
            number(right - left) + "\" height=\"" + number(bottom - top) +
            "\"><div xmlns=\"http://www.w3.org/1999/xhtml\" style=\"display:flex;flex-direction:column;"
            "box-sizing:border-box;height:100%;overflow:hidden;padding:1px " +
            number(Padding) + "px;line-height:1.22;overflow-wrap:break-word;white-space:" +
            (cell.look->wraps ? "pre-wrap" : "pre") + ";justify-content:" + down + ";text-align:" + across +
            ";color:" + colorText(cell.color) + ";" + fontStyle(*cell.look) + "\"><div>" +
            basic::Escaped(cell.text) + "</div></div></foreignObject>";
  }

  static std::string fontStyle(const CellLook& look) {
    // In an attribute, and in quotes of its own there.
    const std::string name = basic::Escaped(basic::Replace(look.font, "'", ""));
    // Few programs but browsers read the shorthand of all these.
    std::string style;
    if (look.isItalic) style += "font-style:italic;";
    if (look.isBold) style += "font-weight:bold;";
    style +=
        "font-size:" + number(look.size * PxPerPoint) + "px;font-family:'" + name + "',Carlito,sans-serif";
    if (look.isUnderlined || look.isStruck) {
      style += std::string(";text-decoration:") + (look.isUnderlined ? "underline " : "") +
               (look.isStruck ? "line-through" : "");
    }
    return style;
  }

  Book& book_;
  const SheetEntry& sheet_;
  basic::Area area_;
  CellLooks looks_;
  SheetLayout layout_;
  std::vector<double> lefts_{0.0};
  std::vector<double> tops_{0.0};
  std::vector<DrawnCell> cells_;
  std::string out_;
};

}  // namespace

std::string drawRange(const std::string& path, std::string_view item, host::Loop& loop) {
  const std::shared_ptr<Book> book = Opener(loop).open(path);
  return RangeDrawing(*book, findLinkedItem(*book, item)).svg();
}

}  // namespace workbook
