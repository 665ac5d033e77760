#include "platform/MessageBox.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <string>

#include "basic/Strings.h"
#include "platform/Console.h"

namespace platform {
namespace {

struct Buttons {
  host::MsgBoxResult first;
  host::MsgBoxResult second;
  const char* prompt;
  std::array<std::string_view, 2> answers;  // in capital letters; their beginnings do
};

constexpr Buttons OkCancel = {
    host::MsgBoxResult::OK, host::MsgBoxResult::Cancel, " [OK/cancel] ", {"OK", "CANCEL"}};
constexpr Buttons YesNo = {host::MsgBoxResult::Yes, host::MsgBoxResult::No, " [Yes/no] ", {"YES", "NO"}};

constexpr std::int32_t ButtonsOf = 0xF;

}  // namespace

host::MsgBoxResult MessageBox::MsgBox(std::string_view text, std::int32_t style, std::string_view title) {
  const std::string message = forTerminal(title) + ": " + forTerminal(text);
  const std::int32_t kind = style & ButtonsOf;
  if (kind != host::vbOKCancel && kind != host::vbYesNo) {
    writeTo(output_, message + "\n");
    return host::MsgBoxResult::OK;
  }
  const Buttons& buttons = kind == host::vbYesNo ? YesNo : OkCancel;
  if (::isatty(input_) == 0 || ::isatty(output_) == 0) {
    writeTo(output_, message + "\n");
    return buttons.first;
  }
  writeTo(output_, message);
  for (std::string line;;) {
    writeTo(output_, buttons.prompt);
    if (!readLine(line) || buttons.answers[0].starts_with(line)) return buttons.first;
    if (buttons.answers[1].starts_with(line)) return buttons.second;
  }
}

bool MessageBox::readLine(std::string& line) {
  line.clear();
  for (;;) {
    pollfd waiting{input_, POLLIN, 0};
    ::poll(&waiting, 1, 0);
    if (waiting.revents == 0) {
      loop_.DoEvents();
      continue;
    }
    char c = 0;
    if (::read(input_, &c, 1) != 1) return false;
    if (c == '\n') break;
    line += c;
  }
  line = basic::UCase(basic::Trim(line));
  return true;
}

}  // namespace platform
