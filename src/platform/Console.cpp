#include "platform/Console.h"

#include <unistd.h>

#include <cerrno>

#include "basic/Strings.h"

namespace platform {

std::string forTerminal(std::string_view text) {
  std::string shown = basic::Replace(basic::Replace(text, "\r\n", "\n"), "\r", "\n");
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const auto code = static_cast<unsigned char>(shown[i]);
    if ((code < 0x20 && shown[i] != '\n') || code == 0x7F) shown[i] = '?';
    // The second control block, U+0080 to U+009F: terminals obey it as well.
    if (code == 0xC2 && i + 1 < shown.size() && static_cast<unsigned char>(shown[i + 1]) < 0xA0) {
      shown.replace(i, 2, "?");
    }
  }
  return shown;
}

void writeTo(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(descriptor, text.data(), text.size());
    if (count < 0 && errno != EINTR) return;
    if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace platform
