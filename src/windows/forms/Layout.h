#pragma once

#include <string>
#include <vector>

#include "host/forms.h"
#include "windows/forms/Metrics.h"
#include "windows/forms/Widget.h"

namespace windows::forms {

/// A row of a dialog: its label's window (null without one) and what stands behind it.
struct DialogRow {
  const Forms::Row* row = nullptr;
  HWND label = nullptr;
  std::wstring labelText;
  std::vector<Widget*> widgets;
};

/// The box of a frame.
struct DialogFrame {
  const Forms::Frame* frame = nullptr;
  HWND box = nullptr;
};

/// Where everything is to be.
struct Arrangement {
  std::vector<Placed> placed;
  /// What is not to be seen now.
  std::vector<HWND> hidden;
  SIZE size{};
};

/// Rows below one another: labels at the left, fields behind them in one line, lists without a label across
/// both; the buttons at the end at the right. Margins and gaps are those of the system's guidelines (7 and 4
/// dialog units).
[[nodiscard]] Arrangement arrange(const Metrics& metrics, Forms::Width width,
                                  const std::vector<DialogRow>& rows, const std::vector<DialogFrame>& frames);

}  // namespace windows::forms
