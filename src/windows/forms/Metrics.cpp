#include "windows/forms/Metrics.h"

#include <string_view>

#include "windows/platform/Library.h"

namespace windows::forms {

namespace {

/// The system's font for messages, as it is on the main screen.
LOGFONTW messageFont() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (!::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0)) {
    ::GetObjectW(::GetStockObject(DEFAULT_GUI_FONT), sizeof metrics.lfMessageFont, &metrics.lfMessageFont);
  }
  return metrics.lfMessageFont;
}

int systemDpi() {
  const HDC screen = ::GetDC(nullptr);
  const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
  ::ReleaseDC(nullptr, screen);
  return dpi;
}

}  // namespace

unsigned Metrics::dpiOf(HWND window) {
  using Call = UINT(WINAPI*)(HWND);
  // Not there before Windows 10.
  static const auto call = platform::procedure<Call>(::GetModuleHandleW(L"user32.dll"), "GetDpiForWindow");
  const UINT dpi = call == nullptr || window == nullptr ? 0 : call(window);
  return dpi != 0 ? dpi : static_cast<unsigned>(systemDpi());
}

Metrics::Metrics(unsigned dpi)
    : dpi_(dpi), description_(messageFont()), context_(::CreateCompatibleDC(nullptr)) {
  description_.lfHeight = ::MulDiv(description_.lfHeight, static_cast<int>(dpi), systemDpi());
  font_ = ::CreateFontIndirectW(&description_);
  ::SelectObject(context_, font_);
  constexpr std::wstring_view Letters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  SIZE size{};
  ::GetTextExtentPoint32W(context_, Letters.data(), static_cast<int>(Letters.size()), &size);
  baseX_ = (size.cx / 26 + 1) / 2;
  TEXTMETRICW text{};
  ::GetTextMetricsW(context_, &text);
  baseY_ = text.tmHeight;
}

Metrics::~Metrics() {
  ::DeleteDC(context_);
  ::DeleteObject(font_);
}

int Metrics::width(const std::wstring& text) const {
  RECT place{};
  ::DrawTextW(context_, text.c_str(), -1, &place, DT_CALCRECT | DT_SINGLELINE);
  return place.right;
}

int Metrics::height(const std::wstring& text, int width) const {
  RECT place{0, 0, width, 0};
  ::DrawTextW(context_, text.c_str(), -1, &place, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL);
  return place.bottom;
}

}  // namespace windows::forms
