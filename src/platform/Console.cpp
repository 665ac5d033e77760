#include "platform/Console.h"

#include <unistd.h>

#include <cerrno>

#include "basic/Strings.h"

namespace platform {

std::string forTerminal(std::string_view text) {
  std::string shown = basic::Replace(basic::Replace(text, "\r\n", "\n"), "\r", "\n");
  for (char& c : shown) {
    const auto code = static_cast<unsigned char>(c);
    if ((code < 0x20 && c != '\n') || code == 0x7F) c = '?';
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
