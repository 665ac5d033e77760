#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace platform {

/// How much a line matters, numbered as in syslog(3).
enum class Priority { Error = 3, Warning = 4, Notice = 5, Information = 6 };

/// What lines on standard error look like.
enum class LogForm {
  Text,     ///< "lumenfold: MESSAGE", for people
  Journal,  ///< "<4>MESSAGE", as journald reads priorities (sd-daemon(3)); one line a message
  Json,     ///< {"time":"2026-05-07T09:30:00.125Z","priority":4,"where":"show","message":"…"}, one line a
            ///< message
};

/// Journal where standard error is the journal's own stream (JOURNAL_STREAM, systemd.exec(5)), otherwise
/// Text.
LogForm usualLogForm();
/// The program's form from now on; before the first call the usual one.
void useLogForm(LogForm form);
LogForm logForm();

/// Tells who runs the program. `where` names what it is about in a word, for programs: "settings", "request".
void tell(Priority priority, std::string_view where, std::string_view message);

/// The line of a message, with its end.
std::string logLine(LogForm form, Priority priority, std::string_view where, std::string_view message,
                    std::chrono::system_clock::time_point time);

}  // namespace platform
