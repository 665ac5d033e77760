#include "windows/com/Text.h"

#include "windows/com/WindowsApi.h"

namespace windows::com {

std::wstring wide(std::string_view utf8) {
  const int size = static_cast<int>(utf8.size());
  std::wstring text(utf8.size(), L'\0');  // never fewer bytes than units
  const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, text.data(), size);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::string narrow(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  std::string utf8(text.size() * 3, '\0');
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, utf8.data(),
                                         static_cast<int>(utf8.size()), nullptr, nullptr);
  utf8.resize(static_cast<std::size_t>(length));
  return utf8;
}

}  // namespace windows::com
