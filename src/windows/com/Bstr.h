#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "windows/com/Failure.h"
#include "windows/com/Text.h"

namespace windows::com {

/// A text of automation, freed when it goes.
class Bstr {
 public:
  explicit Bstr(std::string_view utf8) {
    const std::wstring text = wide(utf8);
    text_ = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (text_ == nullptr) raise(E_OUTOFMEMORY, "text");
  }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  ~Bstr() { SysFreeString(text_); }

  [[nodiscard]] BSTR get() const { return text_; }
  /// Hands the text on; who takes it frees it.
  [[nodiscard]] BSTR release() { return std::exchange(text_, nullptr); }

 private:
  BSTR text_ = nullptr;
};

}  // namespace windows::com
