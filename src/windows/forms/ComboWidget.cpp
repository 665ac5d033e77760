// Drop-down lists: notes stand behind the texts, or before them.

#include <algorithm>
#include <utility>

#include "windows/com/Text.h"
#include "windows/forms/Widget.h"
// It needs the headers above.
#include <commctrl.h>
#include <windowsx.h>

namespace windows::forms {

namespace {

using Forms::EventKind;
using Forms::ListState;

class ComboWidget final : public Widget {
 public:
  ComboWidget(Surface& surface, const Forms::Control& control)
      : Widget(surface, control), isEditable_(get<bool>("IsEditable")) {}

  [[nodiscard]] std::vector<Part> parts() const override {
    const DWORD kind = isEditable_ ? CBS_DROPDOWN | CBS_AUTOHSCROLL : CBS_DROPDOWNLIST;
    return {{WC_COMBOBOXW, kind | WS_TABSTOP | WS_VSCROLL}, {WC_STATICW, NoteStyle}};
  }
  void draw() override {
    isDrawing_ = true;
    fill();
    const auto present = get<std::string>("Text");
    const int place = placeOf(present);
    if (!isEditable_) {
      ComboBox_SetCurSel(main(), place);
    } else if (windowText(main()) != com::wide(present)) {
      ComboBox_SetText(main(), com::wide(present).c_str());
    }
    Widget::draw();
    isDrawing_ = false;
  }
  void command(HWND, unsigned code) override {
    if (isDrawing_) return;
    switch (code) {
      case CBN_DROPDOWN:
        return raise(EventKind::DropDown);
      case CBN_EDITCHANGE:
        isTouched_ = true;
        return raise(EventKind::Change, com::narrow(windowText(main())));
      case CBN_SELCHANGE:
        return choose();
      case CBN_KILLFOCUS:
        return raiseLeft();
      default:
        return;
    }
  }

 protected:
  [[nodiscard]] int ownHeight(int) const override { return metrics().y(14); }
  void placeOwn(const RECT& place, std::vector<Placed>& placed) const override {
    // The height of a drop-down list counts its list.
    constexpr int Lines = 12;
    placed.push_back({main(), {place.left, place.top, place.right, place.bottom + Lines * metrics().y(9)}});
    // The system takes its height from that of the field within.
    const int frame = ::GetSystemMetrics(SM_CYEDGE) * 2 + 2;
    ComboBox_SetItemHeight(main(), -1, place.bottom - place.top - frame);
  }
  [[nodiscard]] std::string note() const override {
    const auto state = static_cast<ListState>(get<std::int64_t>("ListState"));
    if (!control().Problem().empty() || state == ListState::Ready) return Widget::note();
    return state == ListState::Loading ? "Looking\u2026" : get<std::string>("ListProblem");
  }

 private:
  /// What an entry of the window's list stands for.
  struct Entry {
    std::string text;
    std::wstring shown;
    bool operator==(const Entry&) const = default;
  };

  [[nodiscard]] std::vector<Entry> wanted() const {
    std::vector<Entry> entries;
    const auto items = get<Forms::Items>("Items");
    const auto present = get<std::string>("Text");
    const bool isThere = std::any_of(items.begin(), items.end(),
                                     [&](const Forms::Item& each) { return each.Text == present; });
    if (!isEditable_ && !isThere && !present.empty()) {
      const bool isMissing = present.front() != '(' &&
                             static_cast<ListState>(get<std::int64_t>("ListState")) != ListState::Loading;
      entries.push_back({present, com::wide(present + (isMissing ? " (missing)" : ""))});
    }
    for (const Forms::Item& item : items) {
      std::string shown = item.Text;
      if (!item.Note.empty()) {
        shown =
            get<bool>("NotesFirst") ? item.Note + "   " + item.Text : item.Text + "   (" + item.Note + ")";
      }
      entries.push_back({item.Text, com::wide(shown)});
    }
    return entries;
  }

  void fill() {
    auto entries = wanted();
    if (entries == entries_) return;
    entries_ = std::move(entries);
    const std::wstring typed = windowText(main());
    SetWindowRedraw(main(), FALSE);
    ComboBox_ResetContent(main());
    int widest = 0;
    for (const Entry& entry : entries_) {
      ComboBox_AddString(main(), entry.shown.c_str());
      widest = std::max(widest, metrics().width(entry.shown));
    }
    SetWindowRedraw(main(), TRUE);
    ::SendMessageW(main(), CB_SETDROPPEDWIDTH, static_cast<WPARAM>(widest + metrics().x(16)), 0);
    if (isEditable_) ComboBox_SetText(main(), typed.c_str());
    ::InvalidateRect(main(), nullptr, TRUE);
  }
  [[nodiscard]] int placeOf(const std::string& text) const {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&](const Entry& each) { return each.text == text; });
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
  }
  void choose() {
    const int place = ComboBox_GetCurSel(main());
    if (place < 0 || static_cast<std::size_t>(place) >= entries_.size()) return;
    isTouched_ = true;
    const std::string text = entries_[static_cast<std::size_t>(place)].text;
    raise(EventKind::Change, text);
    // Of an editable one the window shows the whole entry.
    if (isEditable_) drawSoon();
  }

  bool isEditable_;
  std::vector<Entry> entries_;
};

}  // namespace

std::unique_ptr<Widget> comboFor(Surface& surface, const Forms::Control& control) {
  return std::make_unique<ComboWidget>(surface, control);
}

}  // namespace windows::forms
