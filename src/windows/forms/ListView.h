#pragma once

#include <string>
#include <vector>

#include "windows/com/WindowsApi.h"
#include "windows/forms/Metrics.h"
// It needs the headers above.
#include <commctrl.h>

namespace windows::forms {

/// The system's list with columns, as widgets use it. Texts are UTF-8.
class ListView {
 public:
  ListView() = default;
  explicit ListView(HWND window) : window_(window) {}

  void extend(DWORD styles) const { ListView_SetExtendedListViewStyle(window_, styles); }
  /// In place of the columns that were there.
  void setColumns(const std::vector<std::string>& titles) const;
  /// Each with as many cells as there are columns, at most; in place of those that were there.
  void setRows(const std::vector<std::vector<std::string>>& rows) const;
  /// As wide as what stands in them; what is left of the window's width goes to the last.
  void fitColumns(int width) const;

 private:
  HWND window_ = nullptr;
};

}  // namespace windows::forms
