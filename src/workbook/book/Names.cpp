#include "workbook/book/Names.h"

#include <clocale>
#include <cwchar>
#include <cwctype>
#include <string>

#include "basic/Strings.h"

namespace workbook {
namespace {

/// The C library's knowledge of letters, whatever locale the program runs in.
locale_t letters() {
  static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale;
}

std::wstring folded(std::string_view text) {
  const locale_t before = ::uselocale(letters());
  std::wstring result;
  mbstate_t state{};
  while (!text.empty()) {
    wchar_t letter = 0;
    const std::size_t size = ::mbrtowc(&letter, text.data(), text.size(), &state);
    if (size == 0 || size > text.size()) break;
    result += static_cast<wchar_t>(::towlower(static_cast<wint_t>(letter)));
    text.remove_prefix(size);
  }
  ::uselocale(before);
  return result;
}

}  // namespace

bool isSameName(std::string_view a, std::string_view b) {
  if (a == b || basic::EqualsIgnoreCase(a, b)) return true;
  if (letters() == nullptr || !basic::IsValidUtf8(a) || !basic::IsValidUtf8(b)) return false;
  return folded(a) == folded(b);
}

}  // namespace workbook
