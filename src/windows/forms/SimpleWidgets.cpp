// The widgets of one window each: labels, text boxes, ticks, buttons, steps, progress.

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

#include "windows/com/Text.h"
#include "windows/forms/Widget.h"
// It needs the headers above.
#include <commctrl.h>

namespace windows::forms {

namespace {

using Forms::EventKind;

constexpr int FieldHeight = 14;
constexpr int LineHeight = 8;

class LabelWidget final : public Widget {
 public:
  using Widget::Widget;
  [[nodiscard]] std::vector<Part> parts() const override { return {{WC_STATICW, NoteStyle}}; }
  void draw() override {
    setWindowText(main(), shown());
    ::InvalidateRect(main(), nullptr, TRUE);
  }
  [[nodiscard]] bool isVisible() const override { return control().Visible() && !shown().empty(); }
  [[nodiscard]] int textTop() const override { return 0; }
  [[nodiscard]] std::optional<COLORREF> colour(HWND) const override {
    switch (static_cast<Forms::Severity>(get<std::int64_t>("Severity"))) {
      case Forms::Severity::Ok:
        return RGB(16, 110, 40);
      case Forms::Severity::Warning:
        return RGB(150, 80, 0);
      case Forms::Severity::Error:
        return RGB(176, 0, 32);
      case Forms::Severity::Plain:
        break;
    }
    return {};
  }

 protected:
  [[nodiscard]] int ownHeight(int width) const override {
    return std::max(metrics().y(LineHeight), metrics().height(shown(), width));
  }
  [[nodiscard]] bool hasNote() const override { return false; }

 private:
  [[nodiscard]] std::wstring shown() const {
    const auto said = get<std::string>("Text");
    const std::string& hint = control().Hint();
    return withLineEnds(said.empty() || hint.empty() ? said + hint : said + "\n" + hint);
  }
};

class TextWidget final : public Widget {
 public:
  TextWidget(Surface& surface, const Forms::Control& control, bool hasSteps)
      : Widget(surface, control), hasSteps_(hasSteps), lines_(static_cast<int>(get<std::int64_t>("Lines"))) {}

  [[nodiscard]] std::vector<Part> parts() const override {
    DWORD style = WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL;
    if (lines_ > 1)
      style = WS_TABSTOP | WS_BORDER | WS_VSCROLL | ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL;
    if (get<bool>("Secret")) style |= ES_PASSWORD;
    return {{WC_EDITW, style, {}, WS_EX_CLIENTEDGE}, {WC_STATICW, NoteStyle}, {WC_STATICW, NoteStyle}};
  }
  void draw() override {
    isDrawing_ = true;
    setWindowText(main(), withLineEnds(get<std::string>("Text")));
    setWindowText(unit(), text("Unit"));
    ::SendMessageW(main(), EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(text("Placeholder").c_str()));
    Widget::draw();
    isDrawing_ = false;
  }
  [[nodiscard]] int fixedWidth() const override {
    if (lines_ > 1 || (!hasSteps_ && get<std::string>("Unit").empty())) return 0;
    return metrics().x(NumberWidth) + unitWidth();
  }
  [[nodiscard]] int unitWidth() const override {
    const std::wstring text = this->text("Unit");
    return text.empty() ? 0 : metrics().x(UnitGap) + metrics().width(text) + 1;
  }
  [[nodiscard]] bool isTall() const override { return lines_ > 1; }
  void command(HWND, unsigned code) override {
    if (isDrawing_) return;
    if (code == EN_CHANGE) {
      isTouched_ = true;
      raise(EventKind::Change, withoutLineEnds(windowText(main())));
    } else if (code == EN_KILLFOCUS) {
      raiseLeft();
    }
  }
  void focus() const override {
    Widget::focus();
    ::SendMessageW(main(), EM_SETSEL, 0, -1);
  }

 protected:
  [[nodiscard]] int ownHeight(int) const override {
    return metrics().y(FieldHeight + (lines_ - 1) * LineHeight);
  }
  void placeOwn(const RECT& place, std::vector<Placed>& placed) const override {
    RECT field = place;
    field.right -= unitWidth();
    placed.push_back({main(), field});
    const LONG top = place.top + metrics().y(3);
    const LONG steps = hasSteps_ ? metrics().x(StepsWidth) : 0;
    const LONG left = unitWidth() == 0 ? place.right : field.right + steps + metrics().x(UnitGap);
    const LONG bottom = unitWidth() == 0 ? top : top + metrics().y(LineHeight);
    placed.push_back({unit(), {left, top, unitWidth() == 0 ? left : place.right + steps, bottom}});
  }

 private:
  static constexpr int NumberWidth = 40;
  static constexpr int UnitGap = 3;
  [[nodiscard]] HWND unit() const { return windows()[1]; }
  bool hasSteps_;
  int lines_;
};

class StepsWidget final : public Widget {
 public:
  using Widget::Widget;
  [[nodiscard]] std::vector<Part> parts() const override { return {{UPDOWN_CLASSW, 0}}; }
  void created(std::vector<HWND> made) override {
    Widget::created(std::move(made));
    ::SendMessageW(main(), UDM_SETRANGE32, static_cast<WPARAM>(-1), 1);
  }
  [[nodiscard]] int fixedWidth() const override { return metrics().x(StepsWidth); }
  LRESULT notify(const NMHDR& told) override {
    if (told.code != static_cast<UINT>(UDN_DELTAPOS)) return 0;
    const int delta = reinterpret_cast<const NMUPDOWN&>(told).iDelta;
    raise(EventKind::Step, std::int64_t{delta});
    return TRUE;  // it stays in its middle
  }

 protected:
  [[nodiscard]] int ownHeight(int) const override { return metrics().y(FieldHeight); }
  [[nodiscard]] bool hasNote() const override { return false; }
};

class TickWidget final : public Widget {
 public:
  TickWidget(Surface& surface, const Forms::Control& control, bool isFirstOfGroup)
      : Widget(surface, control),
        isOption_(control.Kind() == Forms::Kind::OptionButton),
        isFirstOfGroup_(isFirstOfGroup) {}
  [[nodiscard]] std::vector<Part> parts() const override {
    // The system moves the stop of options to the one that is chosen.
    const DWORD kind = isOption_ ? BS_AUTORADIOBUTTON : BS_3STATE;
    const DWORD first = isFirstOfGroup_ ? WS_GROUP | WS_TABSTOP : 0;
    return {{WC_BUTTONW, kind | first, text("Caption")}, {WC_STATICW, NoteStyle}};
  }
  void draw() override {
    const WPARAM value = get<bool>("Value") ? BST_CHECKED : BST_UNCHECKED;
    ::SendMessageW(main(), BM_SETCHECK, get<bool>("Mixed") ? BST_INDETERMINATE : value, 0);
    Widget::draw();
  }
  [[nodiscard]] int fixedWidth() const override { return metrics().x(14) + metrics().width(text("Caption")); }
  [[nodiscard]] int textTop() const override { return metrics().y(1); }
  void command(HWND, unsigned code) override {
    if (code != BN_CLICKED) return;
    raise(EventKind::Change, isOption_ || get<bool>("Mixed") || !get<bool>("Value"));
    draw();
  }

 protected:
  [[nodiscard]] int ownHeight(int) const override { return metrics().y(10); }

 private:
  bool isOption_;
  bool isFirstOfGroup_;
};

/// Where the clipboard is another program's at the moment, nothing is copied.
void putOnClipboard(HWND owner, const std::wstring& text) {
  if (!::OpenClipboard(owner)) return;
  ::EmptyClipboard();
  const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
  if (HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, size)) {
    std::memcpy(::GlobalLock(memory), text.c_str(), size);
    ::GlobalUnlock(memory);
    // The clipboard owns what it takes.
    if (::SetClipboardData(CF_UNICODETEXT, memory) == nullptr) ::GlobalFree(memory);
  }
  ::CloseClipboard();
}

class ButtonWidget final : public Widget {
 public:
  ButtonWidget(Surface& surface, const Forms::Control& control, bool isDefault)
      : Widget(surface, control), isDefault_(isDefault) {}
  [[nodiscard]] std::vector<Part> parts() const override {
    const DWORD kind = isDefault_ ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    return {{WC_BUTTONW, kind | WS_TABSTOP | WS_GROUP, text("Caption")}};
  }
  void draw() override {
    setWindowText(main(), text("Caption"));
    Widget::draw();
  }
  [[nodiscard]] int fixedWidth() const override {
    const int wanted = metrics().width(text("Caption")) + metrics().x(10);
    return std::max(wanted, metrics().x(text("Caption") == L"\u2026" ? 16 : 50));
  }
  void command(HWND, unsigned code) override {
    if (code != BN_CLICKED) return;
    if (const std::wstring copied = text("Copies"); !copied.empty()) putOnClipboard(main(), copied);
    raise(EventKind::Click);
  }
  [[nodiscard]] std::string tip() const override {
    return control().Enabled() ? control().Hint() : control().Reason();
  }

 protected:
  [[nodiscard]] int ownHeight(int) const override { return metrics().y(FieldHeight); }
  [[nodiscard]] bool hasNote() const override { return false; }

 private:
  bool isDefault_;
};

class ProgressWidget final : public Widget {
 public:
  using Widget::Widget;
  [[nodiscard]] std::vector<Part> parts() const override {
    return {{PROGRESS_CLASSW, 0}, {WC_STATICW, NoteStyle}};
  }
  void draw() override {
    const auto maximum = get<std::int64_t>("Maximum");
    const LONG_PTR style = ::GetWindowLongPtrW(main(), GWL_STYLE);
    const LONG_PTR wanted = maximum == 0 ? style | PBS_MARQUEE : style & ~LONG_PTR{PBS_MARQUEE};
    if (wanted != style) ::SetWindowLongPtrW(main(), GWL_STYLE, wanted);
    ::SendMessageW(main(), PBM_SETMARQUEE, maximum == 0 ? TRUE : FALSE, 0);
    ::SendMessageW(main(), PBM_SETRANGE32, 0, static_cast<LPARAM>(maximum));
    ::SendMessageW(main(), PBM_SETPOS, static_cast<WPARAM>(get<std::int64_t>("Step")), 0);
    Widget::draw();
  }

 protected:
  [[nodiscard]] int ownHeight(int) const override { return metrics().y(8); }
  [[nodiscard]] std::string note() const override { return get<std::string>("Text"); }
};

bool hasSteps(const Forms::Form& form, const Forms::Control& box) {
  return std::any_of(form.Controls().begin(), form.Controls().end(), [&](const auto& each) {
    const auto buddy = each->Properties().find("Buddy");
    return buddy != each->Properties().end() && std::get<std::string>(buddy->second) == box.Name();
  });
}

bool isFirstOfGroup(const Forms::Form& form, const Forms::Control& option) {
  const Forms::Control* before = nullptr;
  for (const auto& each : form.Controls()) {
    if (each.get() == &option) break;
    before = each.get();
  }
  if (option.Kind() != Forms::Kind::OptionButton || before == nullptr) return true;
  const auto group = [](const Forms::Control& control) {
    const auto found = control.Properties().find("Group");
    return found == control.Properties().end() ? std::string() : std::get<std::string>(found->second);
  };
  return group(*before) != group(option);
}

}  // namespace

std::unique_ptr<Widget> widgetFor(Surface& surface, const Forms::Form& form, const Forms::Control& control) {
  switch (control.Kind()) {
    case Forms::Kind::Label:
      return std::make_unique<LabelWidget>(surface, control);
    case Forms::Kind::TextBox:
      return std::make_unique<TextWidget>(surface, control, hasSteps(form, control));
    case Forms::Kind::UpDown:
      return std::make_unique<StepsWidget>(surface, control);
    case Forms::Kind::CheckBox:
    case Forms::Kind::OptionButton:
      return std::make_unique<TickWidget>(surface, control, isFirstOfGroup(form, control));
    case Forms::Kind::CommandButton:
      return std::make_unique<ButtonWidget>(surface, control, &control == form.DefaultButton());
    case Forms::Kind::ProgressBar:
      return std::make_unique<ProgressWidget>(surface, control);
    case Forms::Kind::ComboBox:
      return comboFor(surface, control);
    case Forms::Kind::ListBox:
      return listFor(surface, control);
    case Forms::Kind::Grid:
      return gridFor(surface, control);
    case Forms::Kind::Picture:
      return pictureFor(surface, control);
    case Forms::Kind::Frame:
      break;
  }
  return nullptr;
}

}  // namespace windows::forms
