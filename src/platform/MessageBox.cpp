#include "platform/MessageBox.h"

#include <poll.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "basic/Strings.h"
#include "platform/Console.h"
#include "platform/Log.h"

namespace platform {
namespace {

constexpr std::string_view Yes = "YES";
constexpr std::string_view No = "NO";

constexpr std::int32_t ButtonsOf = 0xF;

}  // namespace

host::MsgBoxResult MessageBox::MsgBox(std::string_view text, std::int32_t style, std::string_view title) {
  const bool isQuestion = (style & ButtonsOf) == host::vbYesNo;
  if (logForm() != LogForm::Text) {
    // Nobody answers a log.
    const bool isError = (style & host::vbInformation) == 0;
    if (!isQuestion) tell(isError ? Priority::Error : Priority::Notice, "program", text);
    return isQuestion ? host::MsgBoxResult::Yes : host::MsgBoxResult::OK;
  }
  const std::string message = forTerminal(title) + ": " + forTerminal(text);
  if (!isQuestion) {
    writeTo(output_, message + "\n");
    return host::MsgBoxResult::OK;
  }
  if (::isatty(input_) == 0 || ::isatty(output_) == 0) {
    writeTo(output_, message + "\n");
    return host::MsgBoxResult::Yes;
  }
  writeTo(output_, message);
  for (std::string line;;) {
    writeTo(output_, " [Yes/no] ");
    if (!readLine(line) || Yes.starts_with(line)) return host::MsgBoxResult::Yes;
    if (No.starts_with(line)) return host::MsgBoxResult::No;
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
