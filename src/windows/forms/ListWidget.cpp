// Lists of one or several columns; where several lines may be chosen, each has a box.

#include <algorithm>
#include <utility>

#include "windows/forms/ListView.h"
#include "windows/forms/Widget.h"

namespace windows::forms {

namespace {

using Forms::EventKind;

class ListWidget final : public Widget {
 public:
  ListWidget(Surface& surface, const Forms::Control& control)
      : Widget(surface, control), isMulti_(get<bool>("IsMulti")), columns_(get<Forms::Items>("Columns")) {}

  [[nodiscard]] std::vector<Part> parts() const override {
    const DWORD header = columns_.empty() ? LVS_NOCOLUMNHEADER : LVS_NOSORTHEADER;
    const DWORD style = LVS_REPORT | LVS_SHOWSELALWAYS | LVS_SINGLESEL | header;
    return {{WC_LISTVIEWW, style | WS_TABSTOP | WS_BORDER, {}, WS_EX_CLIENTEDGE}, {WC_STATICW, NoteStyle}};
  }
  void created(std::vector<HWND> made) override {
    Widget::created(std::move(made));
    list_ = ListView(main());
    list_.extend(LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP |
                 (isMulti_ ? LVS_EX_CHECKBOXES : 0U));
    std::vector<std::string> titles;
    for (const Forms::Item& column : columns_) titles.push_back(column.Text);
    if (columns_.empty()) titles = {"", ""};
    list_.setColumns(titles);
  }
  void draw() override {
    isDrawing_ = true;
    auto items = get<Forms::Items>("Items");
    if (!isFilled_ || items != items_) {
      isFilled_ = true;
      items_ = std::move(items);
      fill();
    }
    const auto chosen = get<Forms::Places>("Selected");
    for (int i = 0; i < static_cast<int>(items_.size()); ++i) {
      const bool isChosen = std::find(chosen.begin(), chosen.end(), i) != chosen.end();
      if (isMulti_) {
        ListView_SetCheckState(main(), i, isChosen);
      } else {
        ListView_SetItemState(main(), i, isChosen ? LVIS_SELECTED | LVIS_FOCUSED : 0U,
                              LVIS_SELECTED | LVIS_FOCUSED);
        if (isChosen) ListView_EnsureVisible(main(), i, FALSE);
      }
    }
    Widget::draw();
    isDrawing_ = false;
  }
  [[nodiscard]] bool isTall() const override { return true; }
  [[nodiscard]] int textTop() const override { return metrics().y(2); }
  LRESULT notify(const NMHDR& told) override {
    if (told.code == static_cast<UINT>(NM_CUSTOMDRAW))
      return paint(reinterpret_cast<const NMLVCUSTOMDRAW&>(told));
    if (isDrawing_) return 0;
    if (told.code == static_cast<UINT>(LVN_ITEMCHANGED)) {
      changed(reinterpret_cast<const NMLISTVIEW&>(told));
    } else if (told.code == static_cast<UINT>(NM_DBLCLK)) {
      raise(EventKind::DblClick);
    } else if (told.code == static_cast<UINT>(NM_KILLFOCUS)) {
      raiseLeft();
    }
    return 0;
  }

 protected:
  [[nodiscard]] int ownHeight(int) const override {
    const auto lines = static_cast<int>(std::clamp(get<Forms::Items>("Items").size(), LeastLines, MostLines));
    return metrics().y(10 * lines + (columns_.empty() ? 4 : 16));
  }
  void placeOwn(const RECT& place, std::vector<Placed>& placed) const override {
    Widget::placeOwn(place, placed);
    // Within the borders, and beside the scroll bar of a list that needs one.
    const int borders = 2 * (::GetSystemMetrics(SM_CXEDGE) + ::GetSystemMetrics(SM_CXBORDER));
    const bool scrolls = items_.size() > MostLines;
    const int inner = place.right - place.left - borders - (scrolls ? ::GetSystemMetrics(SM_CXVSCROLL) : 0);
    if (std::exchange(fitted_, inner) != inner) list_.fitColumns(inner);
  }
  [[nodiscard]] std::string note() const override {
    const std::string own = Widget::note();
    return own.empty() && get<Forms::Items>("Items").empty() ? "Nothing yet." : own;
  }

 private:
  static constexpr std::size_t LeastLines = 4;
  static constexpr std::size_t MostLines = 8;

  void fill() {
    std::vector<std::vector<std::string>> rows;
    for (const Forms::Item& item : items_) {
      std::vector<std::string> cells{item.Text};
      cells.insert(cells.end(), item.Cells.begin(), item.Cells.end());
      if (columns_.empty()) cells.push_back(item.Note);
      rows.push_back(std::move(cells));
    }
    list_.setRows(rows);
    fitted_ = 0;
  }
  void changed(const NMLISTVIEW& told) {
    constexpr UINT Boxes = LVIS_STATEIMAGEMASK;
    if (isMulti_ && ((told.uNewState ^ told.uOldState) & Boxes) != 0 && (told.uOldState & Boxes) != 0) {
      Forms::Places places;
      for (int i = 0; i < static_cast<int>(items_.size()); ++i) {
        if (ListView_GetCheckState(main(), i) != 0) places.push_back(i);
      }
      isTouched_ = true;
      return raise(EventKind::Change, std::move(places));
    }
    if (isMulti_ || (told.uNewState & LVIS_SELECTED) == 0 || (told.uOldState & LVIS_SELECTED) != 0) return;
    isTouched_ = true;
    raise(EventKind::Change, Forms::Places{told.iItem});
    drawSoon();
  }
  [[nodiscard]] LRESULT paint(const NMLVCUSTOMDRAW& drawing) const {
    if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (drawing.nmcd.dwDrawStage != CDDS_ITEMPREPAINT || drawing.nmcd.dwItemSpec >= items_.size())
      return CDRF_DODEFAULT;
    if (!items_[drawing.nmcd.dwItemSpec].Enabled) {
      const_cast<NMLVCUSTOMDRAW&>(drawing).clrText = ::GetSysColor(COLOR_GRAYTEXT);
    }
    return CDRF_DODEFAULT;
  }

  bool isMulti_;
  Forms::Items columns_;
  Forms::Items items_;
  bool isFilled_ = false;
  ListView list_;
  mutable int fitted_ = 0;
};

}  // namespace

std::unique_ptr<Widget> listFor(Surface& surface, const Forms::Control& control) {
  return std::make_unique<ListWidget>(surface, control);
}

}  // namespace windows::forms
