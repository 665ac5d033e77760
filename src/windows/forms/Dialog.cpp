// A form's window: its messages become events of the form, and what the form changes is drawn.

#include "windows/forms/Dialog.h"

#include <algorithm>
#include <utility>

#include "basic/Error.h"
#include "windows/com/Guard.h"
#include "windows/com/Text.h"
#include "windows/forms/CommonControls.h"
#include "windows/forms/Template.h"
#include "windows/platform/Library.h"
#include "windows/platform/OwnerWindow.h"
// It needs the headers above.
#include <commctrl.h>

namespace windows::forms {

namespace {

constexpr DWORD DialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_NOIDLEMSG;
/// The numbers of windows; those below are the system's own (IDOK, IDCANCEL).
constexpr int FirstId = 100;
/// Draws the widget of that place.
constexpr UINT DrawMessage = WM_APP;
constexpr UINT ResolutionMessage = 0x02E0;  // WM_DPICHANGED, of Windows 8.1

BOOL CALLBACK setFont(HWND window, LPARAM font) {
  ::SendMessageW(window, WM_SETFONT, static_cast<WPARAM>(font), TRUE);
  return TRUE;
}

}  // namespace

Dialog::Dialog(std::shared_ptr<Forms::Form> form, std::function<void(Forms::Result)> closed)
    : form_(std::move(form)), closed_(std::move(closed)) {}

Dialog::~Dialog() {
  if (window_ == nullptr) return;
  ::SetWindowLongPtrW(window_, DWLP_USER, 0);
  modality_.reset();
  ::DestroyWindow(window_);
}

std::wstring Dialog::title() const {
  const std::string& subject = form_->Subject();
  return com::wide(subject.empty() ? form_->Caption() : form_->Caption() + " \u2013 " + subject);
}

void Dialog::open(Input input) {
  input_ = input;
  const HWND owner = platform::ownerWindow();
  metrics_ = std::make_unique<Metrics>(Metrics::dpiOf(owner));
  const CommonControls themed;
  Template wanted(title(), DialogStyle, metrics_->description(), metrics_->dpi());
  int id = FirstId;
  const auto add = [&](const Part& part, bool isVisible = true) {
    wanted.add({part.className, part.style | (isVisible ? WS_VISIBLE : 0U), part.text, part.extended},
               static_cast<DWORD>(id++));
  };
  for (const auto& control : form_->Controls()) {
    if (auto made = widgetFor(*this, *form_, *control)) widgets_.push_back(std::move(made));
  }
  const Forms::Frame* group = nullptr;
  for (const Forms::Row& row : form_->Rows()) {
    if (row.Group != nullptr && row.Group != group) {
      const auto caption = row.Group->Properties().find("Caption");
      frames_.push_back({row.Group, nullptr});
      add({WC_BUTTONW, BS_GROUPBOX | WS_GROUP, com::wide(std::get<std::string>(caption->second))});
    }
    group = row.Group;
    DialogRow& made = rows_.emplace_back(DialogRow{&row, nullptr, com::wide(row.Label), {}});
    if (!made.labelText.empty()) add({WC_STATICW, SS_LEFT | WS_GROUP, made.labelText});
    for (const Forms::Control* control : row.Controls) {
      Widget* const widget = widgetOf(*control);
      if (widget == nullptr) continue;
      made.widgets.push_back(widget);
      for (const Part& part : widget->parts()) add(part, control->Visible());
    }
  }
  window_ = ::CreateDialogIndirectParamW(platform::thisModule(), wanted.get(), owner, &Dialog::receive,
                                         reinterpret_cast<LPARAM>(this));
  if (window_ == nullptr) {
    throw basic::Error(basic::AdapterError, form_->Name(),
                       "The form cannot be shown: error " + std::to_string(::GetLastError()) + ".");
  }
}

void Dialog::begin() {
  int id = FirstId;
  const auto next = [&] { return ::GetDlgItem(window_, id++); };
  const Forms::Frame* group = nullptr;
  auto frame = frames_.begin();
  for (DialogRow& row : rows_) {
    if (row.row->Group != nullptr && row.row->Group != group) (frame++)->box = next();
    group = row.row->Group;
    if (!row.labelText.empty()) row.label = next();
    for (Widget* widget : row.widgets) {
      std::vector<HWND> windows;
      for (std::size_t i = widget->parts().size(); i-- > 0;) windows.push_back(next());
      for (const HWND each : windows) {
        byWindow_[each] = widget;
        ::SendMessageW(each, WM_SETFONT, reinterpret_cast<WPARAM>(metrics_->font()), FALSE);
      }
      widget->created(std::move(windows));
      widget->draw();
    }
  }
  for (const DialogRow& row : rows_) {
    if (row.label != nullptr)
      ::SendMessageW(row.label, WM_SETFONT, reinterpret_cast<WPARAM>(metrics_->font()), FALSE);
  }
  for (const DialogFrame& each : frames_) {
    ::SendMessageW(each.box, WM_SETFONT, reinterpret_cast<WPARAM>(metrics_->font()), FALSE);
  }
  if (const auto* button = form_->DefaultButton(); button != nullptr) {
    if (const Widget* widget = widgetOf(*button)) {
      ::SendMessageW(window_, DM_SETDEFID, static_cast<WPARAM>(::GetDlgCtrlID(widget->main())), 0);
    }
  }
  tips_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                            0, 0, 0, 0, window_, nullptr, platform::thisModule(), nullptr);
  ::SendMessageW(tips_, TTM_SETMAXTIPWIDTH, 0, metrics_->x(200));
  arrangeAll();
  keys_ = std::make_unique<DialogKeys>(window_);
  if (input_ == Input::Own) modality_ = std::make_unique<Modality>(window_);
  isShown_ = true;
  focusFirst();
  ::ShowWindow(window_, input_ == Input::Own ? SW_SHOW : SW_SHOWNOACTIVATE);
}

void Dialog::arrangeAll() {
  const Arrangement arrangement = arrange(*metrics_, form_->Width(), rows_, frames_);
  for (const HWND each : arrangement.hidden) ::ShowWindow(each, SW_HIDE);
  for (const auto& [window, place] : arrangement.placed) {
    ::SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
  }
  setTips(arrangement);
  RECT outer{0, 0, arrangement.size.cx, arrangement.size.cy};
  ::AdjustWindowRectEx(&outer, DialogStyle, FALSE, WS_EX_DLGMODALFRAME);
  const SIZE size{outer.right - outer.left, outer.bottom - outer.top};
  RECT present{};
  ::GetWindowRect(window_, &present);
  if (isShown_ && present.right - present.left == size.cx && present.bottom - present.top == size.cy) return;
  const HWND owner = ::GetWindow(window_, GW_OWNER);
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  ::GetMonitorInfoW(::MonitorFromWindow(owner != nullptr ? owner : window_, MONITOR_DEFAULTTONEAREST),
                    &monitor);
  RECT around = monitor.rcWork;
  if (owner != nullptr) ::GetWindowRect(owner, &around);
  POINT place{present.left, present.top};
  if (!isShown_)
    place = {(around.left + around.right - size.cx) / 2, (around.top + around.bottom - size.cy) / 2};
  // Its end, where the buttons are, is on the screen.
  place.x = std::max(monitor.rcWork.left, std::min(place.x, monitor.rcWork.right - size.cx));
  place.y = std::max(monitor.rcWork.top, std::min(place.y, monitor.rcWork.bottom - size.cy));
  ::SetWindowPos(window_, nullptr, place.x, place.y, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

/// A window that is not enabled hears no mouse: tips belong to places of the dialog.
void Dialog::setTips(const Arrangement& arrangement) {
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.hwnd = window_;
  for (const auto& widget : widgets_) {
    if (widget->windows().empty()) continue;
    tool.uId = reinterpret_cast<UINT_PTR>(widget.get());
    ::SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    std::wstring text = com::wide(widget->tip());
    const auto placed = std::find_if(arrangement.placed.begin(), arrangement.placed.end(),
                                     [&](const Placed& each) { return each.window == widget->main(); });
    if (text.empty() || placed == arrangement.placed.end()) continue;
    TTTOOLINFOW added = tool;
    const bool hears = widget->control().Enabled();
    added.uFlags = TTF_SUBCLASS | (hears ? TTF_IDISHWND : 0U);
    if (hears) added.uId = reinterpret_cast<UINT_PTR>(widget->main());
    added.rect = placed->place;
    added.lpszText = text.data();
    ::SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&added));
    ::SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&added));
  }
}

/// An empty field, as there something is to be typed; else the default button, as what is there need only be
/// confirmed.
void Dialog::focusFirst() {
  const Widget* first = nullptr;
  for (const auto& widget : widgets_) {
    const Forms::Control& control = widget->control();
    if (!widget->isVisible() || !control.Enabled()) continue;
    const bool isEmpty = control.Kind() == Forms::Kind::TextBox && windowText(widget->main()).empty();
    if (isEmpty || (first == nullptr && &control == form_->DefaultButton())) first = widget.get();
    if (isEmpty) break;
  }
  if (first != nullptr) first->focus();
}

void Dialog::changed(const Forms::Changes& changes) {
  if (!isShown_) return;
  for (const auto& change : changes) {
    const Forms::Control* control = form_->Find(change.first);
    Widget* const widget = control == nullptr ? nullptr : widgetOf(*control);
    if (widget != nullptr) widget->draw();
  }
  setWindowText(window_, title());
  arrangeAll();
}

void Dialog::complain(const Forms::Control& control) {
  if (complaint_ == nullptr) complaint_ = &control;
}

void Dialog::focus(const Forms::Control& control) {
  const Widget* const widget = widgetOf(control);
  if (isShown_ && widget != nullptr) widget->focus();
}

void Dialog::raise(const Forms::Control& control, Forms::EventKind kind, std::optional<Forms::Value> value) {
  if (!isShown_) return;
  const auto self = shared_from_this();
  const bool isClick = kind == Forms::EventKind::Click;
  complaint_ = nullptr;
  const auto objection = form_->Raise(Forms::Event{control.Name(), kind, std::move(value)});
  if (!isShown_) return;
  if (objection) {
    if (Widget* const widget = widgetOf(control)) widget->draw();
  }
  // What is wrong with a text that is still being typed stands below it; that is enough.
  if (isClick) tellComplaint();
}

void Dialog::tellComplaint() {
  const Forms::Control* const control = std::exchange(complaint_, nullptr);
  if (control == nullptr || control->Problem().empty()) return;
  focus(*control);
  ::MessageBoxW(window_, com::wide(control->Problem()).c_str(), com::wide(form_->Caption()).c_str(),
                MB_OK | MB_ICONEXCLAMATION);
  focus(*control);
}

void Dialog::drawSoon(const Forms::Control& control) {
  const auto found = std::find_if(widgets_.begin(), widgets_.end(),
                                  [&](const auto& each) { return &each->control() == &control; });
  ::PostMessageW(window_, DrawMessage, static_cast<WPARAM>(found - widgets_.begin()), 0);
}

void Dialog::close(Forms::Result result) {
  if (!std::exchange(isShown_, false)) return;
  const auto self = shared_from_this();
  keys_.reset();
  // Before the window goes, or the system would activate another program's.
  modality_.reset();
  const HWND window = std::exchange(window_, nullptr);
  ::SetWindowLongPtrW(window, DWLP_USER, 0);
  for (const auto& widget : widgets_) {
    for (const HWND each : widget->windows()) byWindow_.erase(each);
  }
  ::DestroyWindow(window);
  if (const auto told = std::exchange(closed_, nullptr)) told(result);
}

Widget* Dialog::widgetOf(const Forms::Control& control) const {
  const auto found = std::find_if(widgets_.begin(), widgets_.end(),
                                  [&](const auto& each) { return &each->control() == &control; });
  return found == widgets_.end() ? nullptr : found->get();
}

Widget* Dialog::widgetOf(HWND window) const {
  const auto found = byWindow_.find(window);
  return found == byWindow_.end() ? nullptr : found->second;
}

INT_PTR CALLBACK Dialog::receive(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(window, DWLP_USER, second);
    auto* self = reinterpret_cast<Dialog*>(second);
    self->window_ = window;
    com::guarded([&] { self->begin(); });
    return FALSE;  // the focus has been set
  }
  auto* const found = reinterpret_cast<Dialog*>(::GetWindowLongPtrW(window, DWLP_USER));
  if (found == nullptr || !found->isShown_) return FALSE;
  const auto self = found->shared_from_this();
  INT_PTR answer = FALSE;
  com::guarded([&] { answer = self->handle(message, first, second); });
  return answer;
}

INT_PTR Dialog::handle(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_COMMAND:
      command(first, second);
      return TRUE;
    case WM_NOTIFY: {
      const auto& told = *reinterpret_cast<const NMHDR*>(second);
      Widget* const widget = widgetOf(told.hwndFrom);
      if (widget == nullptr) return FALSE;
      const LRESULT answer = widget->notify(told);
      if (window_ != nullptr) ::SetWindowLongPtrW(window_, DWLP_MSGRESULT, answer);
      return TRUE;
    }
    case WM_CTLCOLORSTATIC:
      return colour(reinterpret_cast<HDC>(first), reinterpret_cast<HWND>(second));
    case DrawMessage:
      if (first < widgets_.size()) widgets_[first]->draw();
      return TRUE;
    case ResolutionMessage:
      useResolution(HIWORD(first), *reinterpret_cast<const RECT*>(second));
      return TRUE;
    case WM_CLOSE:
      form_->QueryClose();
      return TRUE;
    case WM_DESTROY:  // with its owner
      close(Forms::Result::Cancel);
      return FALSE;
    default:
      return FALSE;
  }
}

void Dialog::command(WPARAM first, LPARAM second) {
  if (LOWORD(first) == IDCANCEL && second == 0) return form_->QueryClose();
  if (LOWORD(first) == IDCANCEL && widgetOf(reinterpret_cast<HWND>(second)) == nullptr)
    return form_->QueryClose();
  if (Widget* const widget = widgetOf(::GetDlgItem(window_, LOWORD(first)))) {
    widget->command(reinterpret_cast<HWND>(second), HIWORD(first));
  }
}

INT_PTR Dialog::colour(HDC context, HWND window) const {
  const Widget* const widget = widgetOf(window);
  const auto wanted = widget == nullptr ? std::nullopt : widget->colour(window);
  if (!wanted) return FALSE;
  ::SetTextColor(context, *wanted);
  ::SetBkColor(context, ::GetSysColor(COLOR_3DFACE));
  return reinterpret_cast<INT_PTR>(::GetSysColorBrush(COLOR_3DFACE));
}

void Dialog::useResolution(unsigned dpi, const RECT& place) {
  const auto former = std::exchange(metrics_, std::make_unique<Metrics>(dpi));
  ::EnumChildWindows(window_, &setFont, reinterpret_cast<LPARAM>(metrics_->font()));
  ::SetWindowPos(window_, nullptr, place.left, place.top, 0, 0, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOSIZE);
  for (const auto& widget : widgets_) widget->draw();
  arrangeAll();
}

}  // namespace windows::forms
