// Lines on standard error, for people, the journal, or programs.

#include "platform/Log.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <optional>

#include "basic/Strings.h"
#include "json/Json.h"
#include "platform/Console.h"

namespace platform {

namespace {

std::optional<LogForm> chosen;

/// As RFC 3339 has it, in UTC and to the millisecond.
std::string timeText(std::chrono::system_clock::time_point time) {
  using std::chrono::milliseconds;
  const auto since = std::chrono::floor<milliseconds>(time.time_since_epoch());
  const auto seconds = std::chrono::floor<std::chrono::seconds>(since);
  const auto whole = static_cast<std::time_t>(seconds.count());
  std::tm parts{};
  ::gmtime_r(&whole, &parts);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &parts);
  std::array<char, 8> fraction{};
  std::snprintf(fraction.data(), fraction.size(), ".%03dZ", static_cast<int>((since - seconds).count()));
  return std::string(text.data()) + fraction.data();
}

std::string oneLine(std::string_view text) {
  return basic::Replace(basic::Replace(forTerminal(text), " \n", " "), "\n", " ");
}

}  // namespace

LogForm usualLogForm() {
  const char* const stream = std::getenv("JOURNAL_STREAM");
  struct stat status {};
  if (stream == nullptr || ::fstat(STDERR_FILENO, &status) != 0) return LogForm::Text;
  const std::string own = std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
  return own == stream ? LogForm::Journal : LogForm::Text;
}

void useLogForm(LogForm form) { chosen = form; }

LogForm logForm() {
  if (!chosen) chosen = usualLogForm();
  return *chosen;
}

std::string logLine(LogForm form, Priority priority, std::string_view where, std::string_view message,
                    std::chrono::system_clock::time_point time) {
  const int number = static_cast<int>(priority);
  switch (form) {
    case LogForm::Journal:
      return "<" + std::to_string(number) + ">" + oneLine(message) + "\n";
    case LogForm::Json:
      return json::textOf({{"time", timeText(time)},
                           {"priority", number},
                           {"where", std::string(where)},
                           {"message", oneLine(message)}}) +
             "\n";
    case LogForm::Text:
      break;
  }
  return "lumenfold: " + forTerminal(message) + "\n";
}

void tell(Priority priority, std::string_view where, std::string_view message) {
  writeTo(STDERR_FILENO, logLine(logForm(), priority, where, message, std::chrono::system_clock::now()));
}

}  // namespace platform
