#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "windows/com/WindowsApi.h"

namespace windows::forms {

/// A window of a dialog, before it is there.
struct Part {
  const wchar_t* className;
  /// WS_CHILD is added.
  DWORD style;
  std::wstring text = {};
  DWORD extended = 0;
};

/// An extended dialog template in memory (DLGTEMPLATEEX). Its windows stand in their tab order and have no
/// places yet.
class Template {
 public:
  Template(const std::wstring& title, DWORD style, const LOGFONTW& font, unsigned dpi);

  void add(const Part& part, DWORD id);
  [[nodiscard]] const DLGTEMPLATE* get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

 private:
  void word(unsigned value) { words_.push_back(static_cast<std::uint16_t>(value)); }
  void doubleWord(DWORD value);
  void text(std::wstring_view text);

  std::vector<std::uint16_t> words_;
};

}  // namespace windows::forms
