// What all widgets have in common: their note, their texts, their places.

#include "windows/forms/Widget.h"

#include "basic/Strings.h"
#include "windows/com/Text.h"

namespace windows::forms {

std::wstring windowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)), L'\0');
  text.resize(
      static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
  return text;
}

void setWindowText(HWND window, const std::wstring& text) {
  if (windowText(window) != text) ::SetWindowTextW(window, text.c_str());
}

std::wstring withLineEnds(std::string_view text) {
  return com::wide(basic::Replace(basic::Replace(text, "\r\n", "\n"), "\n", "\r\n"));
}

std::string withoutLineEnds(const std::wstring& text) {
  return basic::Replace(com::narrow(text), "\r\n", "\n");
}

void Widget::draw() {
  ::EnableWindow(main(), control_.Enabled());
  if (!hasNote()) return;
  setWindowText(windows_.back(), withLineEnds(note()));
  ::InvalidateRect(windows_.back(), nullptr, TRUE);
}

std::string Widget::note() const {
  if (!control_.Problem().empty()) return control_.Problem();
  return control_.Enabled() || control_.Reason().empty() ? control_.Hint() : control_.Reason();
}

std::wstring Widget::text(std::string_view property) const { return com::wide(get<std::string>(property)); }

int Widget::height(int width, int noteWidth) const {
  const std::string below = hasNote() ? note() : std::string();
  const int own = ownHeight(width);
  return below.empty() ? own : own + metrics().y(2) + metrics().height(withLineEnds(below), noteWidth);
}

void Widget::place(int left, int top, int width, int noteWidth, std::vector<Placed>& placed) const {
  const int own = ownHeight(width);
  placeOwn({left, top, left + width, top + own}, placed);
  if (!hasNote()) return;
  const int noteTop = top + own + metrics().y(2);
  const int bottom = note().empty() ? noteTop : top + height(width, noteWidth);
  placed.push_back({windows_.back(), {left, noteTop, left + noteWidth, bottom}});
}

std::optional<COLORREF> Widget::colour(HWND window) const {
  constexpr COLORREF Problem = RGB(176, 0, 32);
  if (!hasNote() || window != windows_.back()) return {};
  return control_.Problem().empty() ? ::GetSysColor(COLOR_GRAYTEXT) : Problem;
}

}  // namespace windows::forms
