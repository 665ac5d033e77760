// The texts of the error codes, the way of an error to the user, and the errors log.

#include "addin/support/modErrors.h"

#include <cmath>
#include <exception>
#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "basic/ConnectionString.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Format.h"
#include "basic/Strings.h"

namespace LF2000::modErrors {

std::string_view MessageText(std::int32_t code) {
  switch (code) {
    case SettingConnectionTag:
      return "Error setting connection tag.";
    case RetrievingConnectionTag:
      return "Error retrieving connection tag.";
    case OpeningFile:
      return "Error while opening file %1. \r\n%2";
    case OpeningDatabase:
      return "Error while opening database %1. \r\n%2";
    case ReadingFile:
      return "Error while reading file %1. \r\n%2";
    case ReadingDatabase:
      return "Error while reading database %1. \r\n%2";
    case RequeryingFile:
      return "Error requerying file %1. \r\n%2";
    case RequeryingDatabase:
      return "Error requerying database %1. \r\n%2";
    case SettingShape:
      return "Error setting shape information.";
    case SavingShapeTags:
      return "Error saving shape tags. \r\n%1";
    case SavingConnectionTags:
      return "Error while saving connection tags. \r\n%1";
    case FillingValues:
      return "Error while filling values. \r\n%1";
    case OpeningPresentation:
      return "Error while opening presentation. \r\n%1";
    case RequeryingData:
      return "Error while requerying data. \r\n%1";
    case RefreshingSlide:
      return "%1";
    case RetrievingValue:
      return "Error while retrieving value of column %1 of row %2.\r\n%3";
    case SavingDistributionList:
      return "Error while saving distribution list tags.";
    case SendingPresentation:
      return "Error while sending presentation. \r\n%1";
    case SavingScrollStep:
      return "Error while saving scroll step information.";
    case CreatingOfflinePresentation:
      return "Error while creating off-line presentation. \r\n%1";
    case StartingTimers:
      return "Error while starting timer functions. \r\n%1";
    case OpeningExcelFile:
      return "Error while opening excel file %1. \r\n%2";
    case ReadingExcelFile:
      return "Error while reading excel file %1. \r\n%2";
    case RequeryingExcelFile:
      return "Error requerying excel file %1. \r\n%2";
    case ReadingSheets:
      return "Error while reading sheets from excel file %1. \r\n%2";
    case DuplicatedColumn:
      return "Duplicated column name '%1' detected.";
    default:
      return {};
  }
}

void Reset() {
  LastError = {};
  ErrorsLogStarted = false;
  ErrorsLogSize = 0;
  ErrorsOccurred = false;
  SlideShowRunning = false;
}

bool MessagesAllowed() { return !SlideShowRunning; }

void SetLastError() {
  try {
    throw;
  } catch (const basic::Error& error) {
    LastError = {static_cast<double>(error.number), error.source, error.description};
  } catch (const std::exception& error) {
    LastError = {static_cast<double>(basic::AdapterError), basic::DefaultSource, error.what()};
  }
}

void RaiseError(std::int32_t code, std::string_view p1, std::string_view p2, std::string_view p3) {
  std::string text = basic::Replace(MessageText(code), "%1", p1);
  text = basic::Replace(text, "%2", p2);
  text = basic::Replace(text, "%3", p3);
  throw basic::Error(ErrorBase + code, basic::DefaultSource, std::move(text));
}

namespace {

void LogLastError(std::string_view number) {
  WriteErrorLog(LastError.Description + " (" + std::string(number) + "-" + LastError.Source + ")");
}

}  // namespace

host::MsgBoxResult ReportError(std::int32_t code) {
  if (MessagesAllowed()) {
    return host::Current().messageBox->MsgBox(basic::Replace(MessageText(code), "%1", LastError.Description),
                                              host::vbOKCancel + host::vbExclamation, ProductTitle);
  }
  LogLastError(basic::CStr(ErrorBase + code));
  return host::MsgBoxResult::OK;
}

void ReportError() {
  if (MessagesAllowed()) {
    host::Current().messageBox->MsgBox(LastError.Description, host::vbOKOnly + host::vbExclamation,
                                       ProductTitle);
  } else {
    LogLastError(basic::CStr(LastError.Number));
  }
}

void CatchError(std::int32_t code) {
  SetLastError();
  ReportError(code);
}

void CatchError() {
  SetLastError();
  ReportError();
}

std::string ForEverybody(std::string_view description) {
  return basic::MayHoldSecret(description) ? "The source's message could hold a password; see the errors log."
                                           : std::string(description);
}

std::string ErrorLogFile() {
  return modGlobalFunctions::FileInFolder(host::Current().module->Path(), "errors.txt");
}

namespace {

std::function<void(std::string_view)> Hear;

}  // namespace

void AlsoTell(std::function<void(std::string_view text)> hear) { Hear = std::move(hear); }

void WriteErrorLog(std::string_view text) {
  WriteLogLine(ErrorLogFile(), ErrorsLogStarted, ErrorsLogSize, text);
  ErrorsOccurred = true;
  if (Hear) Hear(text);
}

void OpenErrorLog() {
  constexpr std::int32_t SW_SHOW = 5;
  modGlobalFunctions::IgnoreErrors(
      [] { host::Current().shell->ShellExecute("open", ErrorLogFile(), SW_SHOW); });
}

std::size_t AppendLogLine(const std::string& path, std::string_view text) {
  std::string line;
  modGlobalFunctions::IgnoreErrors([&] {
    const host::Services& services = host::Current();
    const float a = services.clock->Timer();
    const float b = services.clock->Timer();
    const auto milliseconds = static_cast<std::int32_t>((a - std::floor(b)) * 1000.0F);
    const std::string padded = (basic::CStr(milliseconds) + "000").substr(0, 3);
    line = basic::Format(services.clock->Now(), "c");
    line.append(".").append(padded).append(" ").append(text).append("\r\n");
    services.files->Append(path, line);
  });
  return line.size();
}

std::string OlderLogFile(const std::string& path) {
  std::string older = path;
  return older.insert(path.rfind('.'), ".1");
}

void WriteLogLine(const std::string& path, bool& started, std::size_t& size, std::string_view text) {
  host::Files& files = *host::Current().files;
  const auto remove = [&](const std::string& file) {
    modGlobalFunctions::IgnoreErrors([&] { files.Kill(file); });
  };
  const bool isFull = started && size + text.size() > LongestLog;
  if (!started || isFull) {
    remove(OlderLogFile(path));
    if (isFull) modGlobalFunctions::IgnoreErrors([&] { files.Name(path, OlderLogFile(path)); });
    // Where it could not make way, its lines are given up rather than the disk.
    remove(path);
    started = true;
    size = 0;
  }
  size += AppendLogLine(path, text);
}

}  // namespace LF2000::modErrors
