#pragma once

#include <string>

#include "windows/com/WindowsApi.h"

namespace windows::forms {

/// The font of dialogs on a screen of some resolution, and its dialog units: a quarter of the average width
/// of its letters, an eighth of their height.
class Metrics {
 public:
  /// `dpi`: dots per inch.
  explicit Metrics(unsigned dpi);
  ~Metrics();
  Metrics(const Metrics&) = delete;
  Metrics& operator=(const Metrics&) = delete;

  /// Of the screen that a window is on; of the system where that is all that is known.
  [[nodiscard]] static unsigned dpiOf(HWND window);

  [[nodiscard]] unsigned dpi() const { return dpi_; }
  [[nodiscard]] HFONT font() const { return font_; }
  [[nodiscard]] const LOGFONTW& description() const { return description_; }
  /// Dialog units as pixels.
  [[nodiscard]] int x(int units) const { return ::MulDiv(units, baseX_, 4); }
  [[nodiscard]] int y(int units) const { return ::MulDiv(units, baseY_, 8); }

  /// In pixels, on one line; an "&" that stands for an access key is not counted.
  [[nodiscard]] int width(const std::wstring& text) const;
  /// In pixels, broken into lines of that width.
  [[nodiscard]] int height(const std::wstring& text, int width) const;

 private:
  unsigned dpi_;
  LOGFONTW description_{};
  HFONT font_ = nullptr;
  HDC context_ = nullptr;
  int baseX_ = 0;
  int baseY_ = 0;
};

}  // namespace windows::forms
