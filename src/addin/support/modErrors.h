#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "host/services.h"

/// Error codes, their texts, the record of the last error, the rule by which an
/// error reaches the user, and the errors log.
namespace LF2000::modErrors {

/// Errors that the system raises carry ErrorBase + n (0x80040000 + n).
inline constexpr std::int32_t ErrorBase = -2147221504;

/// The codes n of the system's own errors.
enum Code : std::int32_t {
  SettingConnectionTag = 1,
  RetrievingConnectionTag = 2,
  OpeningFile = 3,
  OpeningDatabase = 4,
  ReadingFile = 5,
  ReadingDatabase = 6,
  RequeryingFile = 7,
  RequeryingDatabase = 8,
  SettingShape = 9,
  SavingShapeTags = 10,
  SavingConnectionTags = 12,
  FillingValues = 13,
  OpeningPresentation = 14,
  RequeryingData = 15,
  RefreshingSlide = 16,
  RetrievingValue = 17,
  SavingDistributionList = 19,
  SendingPresentation = 20,
  SavingScrollStep = 21,
  CreatingOfflinePresentation = 24,
  StartingTimers = 25,
  OpeningExcelFile = 26,
  ReadingExcelFile = 27,
  RequeryingExcelFile = 28,
  ReadingSheets = 29,
  DuplicatedColumn = 30,
};

/// The message text of a code, with its placeholders "%1", "%2", "%3"; empty
/// for a number without a text.
[[nodiscard]] std::string_view MessageText(std::int32_t code);

/// Texts that belong to the table and that no code carries.
inline constexpr std::string_view PreparingSave = "Error while preparing save. ";
inline constexpr std::string_view RefreshingValues = "Error while refreshing values. ";
inline constexpr std::string_view SettingClock = "Error setting clock.";
inline constexpr std::string_view InvalidSourceType = "Invalid source type or source type not set.";
inline constexpr std::string_view RefreshingClocks = "Error while refreshing clocks. ";
inline constexpr std::string_view RequeryingExcel = "Error requerying excel file %1. ";

/// The error most recently caught by any handler.
struct ErrorRecord {
  double Number = 0;
  std::string Source;
  std::string Description;
};

inline ErrorRecord LastError;
inline bool ErrorsLogStarted = false;
/// Bytes that this process has written to the errors log since it was begun anew.
inline std::size_t ErrorsLogSize = 0;
/// Set by every write to the errors log, cleared when a slide show begins.
inline bool ErrorsOccurred = false;
inline bool SlideShowRunning = false;

/// Puts the module's state back to what it is when the add-in is loaded.
void Reset();

/// True while no slide show runs: a message box may be shown.
[[nodiscard]] bool MessagesAllowed();

/// Called in a catch block: copies the exception being handled into LastError.
void SetLastError();

/// Raises ErrorBase + code with the code's text, placeholders filled.
[[noreturn]] void RaiseError(std::int32_t code, std::string_view p1 = {}, std::string_view p2 = {},
                             std::string_view p3 = {});

/// Reports LastError in a procedure that owns a code: a message box with the
/// code's text, or while a show runs a line in the errors log. The answer is the
/// message box's, OK after a log line.
host::MsgBoxResult ReportError(std::int32_t code);
/// Reports LastError with its own description and number.
void ReportError();
/// Called in a catch block whose procedure reports: SetLastError(), then ReportError() with or without a
/// code.
void CatchError(std::int32_t code);
void CatchError();

/// A description for those who see the screens, whoever they are: one that could hold a password is
/// withheld.
[[nodiscard]] std::string ForEverybody(std::string_view description);

/// Appends a line to the errors log, which each process starts afresh.
void WriteErrorLog(std::string_view text);
/// Has each line of the errors log told to the host as well; an empty function ends that.
void AlsoTell(std::function<void(std::string_view text)> hear);
/// The errors log's path.
[[nodiscard]] std::string ErrorLogFile();
/// Shows the errors log in whatever program the user reads text files with.
void OpenErrorLog();

/// Appends one line with its time stamp to a log file. The milliseconds are
/// padded on the right: 5 ms is written 500. Returns the bytes written.
std::size_t AppendLogLine(const std::string& path, std::string_view text);

/// What a log file holds before its lines make way, in bytes.
inline constexpr std::size_t LongestLog = std::size_t{1} << 20U;
/// Where older lines of the process go: "errors.1.txt" of "errors.txt".
[[nodiscard]] std::string OlderLogFile(const std::string& path);
/// Appends a line to a log that each process starts afresh and that never grows
/// beyond LongestLog: then it becomes the older one, in whose place it goes.
/// `started` and `size` are the log's.
void WriteLogLine(const std::string& path, bool& started, std::size_t& size, std::string_view text);

}  // namespace LF2000::modErrors
