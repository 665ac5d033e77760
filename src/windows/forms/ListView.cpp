#include "windows/forms/ListView.h"

#include <algorithm>

#include "windows/com/Text.h"

namespace windows::forms {

namespace {

int columnCount(HWND window) { return Header_GetItemCount(ListView_GetHeader(window)); }

}  // namespace

void ListView::setColumns(const std::vector<std::string>& titles) const {
  while (ListView_DeleteColumn(window_, 0)) {
  }
  for (std::size_t i = 0; i < titles.size(); ++i) {
    std::wstring title = com::wide(titles[i]);
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = title.data();
    column.cx = 50;
    ::SendMessageW(window_, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
  }
}

void ListView::setRows(const std::vector<std::vector<std::string>>& rows) const {
  ::SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
  ListView_DeleteAllItems(window_);
  const auto columns = static_cast<std::size_t>(columnCount(window_));
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < std::min(rows[row].size(), columns); ++column) {
      std::wstring text = com::wide(rows[row][column]);
      LVITEMW item{};
      item.mask = LVIF_TEXT;
      item.iItem = static_cast<int>(row);
      item.iSubItem = static_cast<int>(column);
      item.pszText = text.data();
      ::SendMessageW(window_, column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0,
                     reinterpret_cast<LPARAM>(&item));
    }
  }
  ::SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
}

void ListView::fitColumns(int width) const {
  const int count = columnCount(window_);
  int taken = 0;
  for (int i = 0; i < count; ++i) {
    ListView_SetColumnWidth(window_, i, LVSCW_AUTOSIZE);
    const int byContent = ListView_GetColumnWidth(window_, i);
    wchar_t title[256] = {};
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT;
    column.pszText = title;
    column.cchTextMax = static_cast<int>(std::size(title));
    ::SendMessageW(window_, LVM_GETCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    constexpr int Margins = 18;
    const int byTitle =
        static_cast<int>(::SendMessageW(window_, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(title))) +
        Margins;
    int wanted = std::max(byContent, byTitle);
    if (i == count - 1) wanted = std::max(wanted, width - taken);
    ListView_SetColumnWidth(window_, i, wanted);
    taken += wanted;
  }
}

}  // namespace windows::forms
