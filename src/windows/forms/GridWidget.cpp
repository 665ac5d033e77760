// Previews of data. Where the form takes one, a rectangle is drawn over the cells with the mouse; a click on
// a header takes the whole column, with Shift all columns up to there.

#include <algorithm>
#include <array>
#include <utility>

#include "windows/com/Guard.h"
#include "windows/forms/ListView.h"
#include "windows/forms/Widget.h"
// It needs the headers above.
#include <windowsx.h>

namespace windows::forms {

namespace {

using Forms::EventKind;

constexpr UINT_PTR Subclass = 1;
/// The row of the headers, as forms count.
constexpr std::int64_t Headers = -1;

class GridWidget final : public Widget {
 public:
  using Widget::Widget;
  ~GridWidget() override {
    if (!windows().empty()) ::RemoveWindowSubclass(main(), &GridWidget::hear, Subclass);
  }
  GridWidget(const GridWidget&) = delete;
  GridWidget& operator=(const GridWidget&) = delete;

  [[nodiscard]] std::vector<Part> parts() const override {
    constexpr DWORD Style = LVS_REPORT | LVS_SINGLESEL | WS_TABSTOP | WS_BORDER;
    return {{WC_LISTVIEWW, Style, {}, WS_EX_CLIENTEDGE}, {WC_STATICW, NoteStyle}};
  }
  void created(std::vector<HWND> made) override {
    Widget::created(std::move(made));
    list_ = ListView(main());
    list_.extend(LVS_EX_GRIDLINES | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    ::SetWindowSubclass(main(), &GridWidget::hear, Subclass, reinterpret_cast<DWORD_PTR>(this));
  }
  [[nodiscard]] bool isVisible() const override {
    return control().Visible() && !get<Forms::Items>("Columns").empty();
  }
  [[nodiscard]] bool isTall() const override { return true; }
  [[nodiscard]] int textTop() const override { return metrics().y(2); }
  void draw() override {
    isDrawing_ = true;
    auto columns = get<Forms::Items>("Columns");
    auto rows = get<Forms::Rows>("Rows");
    if (columns != columns_ || !(rows == rows_)) {
      columns_ = std::move(columns);
      rows_ = std::move(rows);
      fill();
    }
    taken_ = get<Forms::Places>("Selected");
    Widget::draw();
    ::InvalidateRect(main(), nullptr, FALSE);
    isDrawing_ = false;
  }
  LRESULT notify(const NMHDR& told) override {
    if (told.code == static_cast<UINT>(NM_CUSTOMDRAW)) {
      return paint(const_cast<NMLVCUSTOMDRAW&>(reinterpret_cast<const NMLVCUSTOMDRAW&>(told)));
    }
    if (told.code == static_cast<UINT>(LVN_COLUMNCLICK)) {
      const auto column = std::int64_t{reinterpret_cast<const NMLISTVIEW&>(told).iSubItem} - 1;
      if (selects() && column >= 0) takeColumns(column);
    }
    return 0;
  }

 protected:
  [[nodiscard]] int ownHeight(int) const override {
    const auto lines =
        static_cast<int>(std::clamp<std::size_t>(get<Forms::Rows>("Rows").Cells.size(), 1, MostLines));
    return metrics().y(10 * lines + 28);
  }
  void placeOwn(const RECT& place, std::vector<Placed>& placed) const override {
    Widget::placeOwn(place, placed);
    // Within the borders, and beside the scroll bar of a list that needs one.
    const int borders = 2 * (::GetSystemMetrics(SM_CXEDGE) + ::GetSystemMetrics(SM_CXBORDER));
    const bool scrolls = rows_.Cells.size() > MostLines;
    const int inner = place.right - place.left - borders - (scrolls ? ::GetSystemMetrics(SM_CXVSCROLL) : 0);
    if (std::exchange(fitted_, inner) != inner) list_.fitColumns(inner);
  }
  [[nodiscard]] std::string note() const override {
    const auto count = static_cast<std::int64_t>(get<Forms::Rows>("Rows").Cells.size());
    const auto total = get<std::int64_t>("Total");
    const std::string more = total > count ? std::to_string(total - count) + " more rows" : std::string();
    const std::string own = Widget::note();
    return more.empty() || own.empty() ? more + own : more + ". " + own;
  }

 private:
  static constexpr std::size_t MostLines = 7;

  struct Cell {
    std::int64_t row;
    std::int64_t column;
    bool operator==(const Cell&) const = default;
  };

  [[nodiscard]] bool selects() const { return get<bool>("Selects") && control().Enabled(); }

  void fill() {
    const bool named = get<bool>("Selects");
    std::vector<std::string> titles{""};
    for (const Forms::Item& column : columns_) {
      titles.push_back(named && !column.Note.empty() ? column.Note + "   " + column.Text : column.Text);
    }
    list_.setColumns(titles);
    std::vector<std::vector<std::string>> rows;
    for (std::size_t i = 0; i < rows_.Cells.size(); ++i) {
      std::vector<std::string> cells{std::to_string(rows_.First + static_cast<std::int64_t>(i))};
      cells.insert(cells.end(), rows_.Cells[i].begin(), rows_.Cells[i].end());
      rows.push_back(std::move(cells));
    }
    list_.setRows(rows);
    fitted_ = 0;
  }

  void takeColumns(std::int64_t column) {
    if (::GetKeyState(VK_SHIFT) >= 0 || anchor_.row != Headers) anchor_ = {Headers, column};
    take({Headers, column});
  }
  void take(Cell end) {
    Forms::Places places{std::min(anchor_.row, end.row), std::min(anchor_.column, end.column),
                         std::max(anchor_.row, end.row), std::max(anchor_.column, end.column)};
    isTouched_ = true;
    raise(EventKind::Change, std::move(places));
  }

  /// The cell below the mouse, if there is one.
  [[nodiscard]] std::optional<Cell> cellAt(LPARAM mouse) const {
    LVHITTESTINFO hit{};
    hit.pt = {GET_X_LPARAM(mouse), GET_Y_LPARAM(mouse)};
    if (ListView_SubItemHitTest(main(), &hit) < 0) return {};
    return Cell{hit.iItem, std::max<std::int64_t>(hit.iSubItem - 1, 0)};
  }
  void mark(Cell end) {
    taken_ = {std::min(anchor_.row, end.row), std::min(anchor_.column, end.column),
              std::max(anchor_.row, end.row), std::max(anchor_.column, end.column)};
    ::InvalidateRect(main(), nullptr, FALSE);
  }

  /// Whether the message was the widget's own.
  bool drag(UINT message, LPARAM mouse) {
    if (!selects()) return false;
    const std::optional<Cell> cell = cellAt(mouse);
    if (message == WM_LBUTTONDOWN && cell) {
      ::SetFocus(main());
      ::SetCapture(main());
      isDragging_ = true;
      anchor_ = head_ = *cell;
      mark(head_);
      return true;
    }
    if (!isDragging_) return false;
    if (cell) head_ = *cell;
    if (message == WM_MOUSEMOVE) mark(head_);
    if (message == WM_LBUTTONUP) {
      isDragging_ = false;
      ::ReleaseCapture();
      if (head_ == anchor_) {
        taken_.clear();
        ::InvalidateRect(main(), nullptr, FALSE);
      } else {
        take(head_);
      }
    }
    return true;
  }

  static LRESULT CALLBACK hear(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR,
                               DWORD_PTR self) {
    bool isOwn = false;
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONUP || message == WM_MOUSEMOVE) {
      com::guarded([&] { isOwn = reinterpret_cast<GridWidget*>(self)->drag(message, second); });
    }
    return isOwn ? 0 : ::DefSubclassProc(window, message, first, second);
  }

  [[nodiscard]] LRESULT paint(NMLVCUSTOMDRAW& drawing) const {
    switch (drawing.nmcd.dwDrawStage) {
      case CDDS_PREPAINT:
        return CDRF_NOTIFYITEMDRAW;
      case CDDS_ITEMPREPAINT:
        return CDRF_NOTIFYSUBITEMDRAW;
      case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
        break;
      default:
        return CDRF_DODEFAULT;
    }
    const auto row = static_cast<std::int64_t>(drawing.nmcd.dwItemSpec);
    const auto column = std::int64_t{drawing.iSubItem} - 1;
    const bool isAll = taken_.size() == 4 && taken_[2] == Headers;
    const bool isTaken = taken_.size() == 4 && column >= taken_[1] && column <= taken_[3] &&
                         (isAll || (row >= taken_[0] && row <= taken_[2]));
    const bool isNumber = column < 0 || !control().Enabled();
    drawing.clrTextBk = ::GetSysColor(isTaken ? COLOR_HIGHLIGHT : COLOR_WINDOW);
    drawing.clrText = ::GetSysColor(isTaken    ? COLOR_HIGHLIGHTTEXT
                                    : isNumber ? COLOR_GRAYTEXT
                                               : COLOR_WINDOWTEXT);
    return CDRF_NEWFONT;
  }

  ListView list_;
  Forms::Items columns_;
  Forms::Rows rows_;
  Forms::Places taken_;
  Cell anchor_{0, 0};
  Cell head_{0, 0};
  bool isDragging_ = false;
  mutable int fitted_ = 0;
};

}  // namespace

std::unique_ptr<Widget> gridFor(Surface& surface, const Forms::Control& control) {
  return std::make_unique<GridWidget>(surface, control);
}

}  // namespace windows::forms
