#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/excel.h"
#include "host/powerpoint.h"

namespace LF2000 {

inline constexpr std::string_view ProductTitle = "Corvane Lumenfold 2000";

/// Helpers and process-wide values that every part of the system shares.
namespace modGlobalFunctions {

/// The display type of the presentation assigned last: 1 value, 2 connection,
/// 3 column, 4 index, 5 column and index, 6 connection and column, 7 nothing.
inline std::int32_t CurrentDisplayType = 0;
/// Set while the system produces an off-line copy of a presentation; paths then
/// resolve against OfflineGenerationBase, which the generating runtime sets.
inline bool OfflineGenerationActive = false;
inline std::string OfflineGenerationBase;
/// The flag is set, and paths resolve against `base`, for as long as this lives.
class OfflineGeneration {
 public:
  explicit OfflineGeneration(std::string base) {
    OfflineGenerationBase = std::move(base);
    OfflineGenerationActive = true;
  }
  ~OfflineGeneration() {
    OfflineGenerationActive = false;
    OfflineGenerationBase.clear();
  }
  OfflineGeneration(const OfflineGeneration&) = delete;
  OfflineGeneration& operator=(const OfflineGeneration&) = delete;
};
/// What the files of a presentation of that name lie beside.
[[nodiscard]] inline const std::string& BaseOf(const std::string& presentationName) {
  return OfflineGenerationActive ? OfflineGenerationBase : presentationName;
}
/// The application that the add-in is connected to; null while it is not.
inline std::shared_ptr<PowerPoint::Application> HostApplication;
/// The presentation's Saved flag as it was when the slide show began.
inline std::int32_t SavedBeforeShow = 0;

/// How the system stands to Excel, one state for the whole process.
enum class ExcelState : std::int32_t { Unknown = 0, Unavailable = 1, NotRunning = 2, Started = 3 };
inline ExcelState CurrentExcelState = ExcelState::Unknown;
/// The Excel that the system started; null unless the state is Started.
inline std::shared_ptr<Excel::Application> SystemExcel;

/// Looks whether there is an Excel, starts one when asked and it is there, or
/// lets go of the one that was started, which quits unless the user made it
/// visible. Returns the state.
ExcelState ExcelStatus(bool start, bool shutdown);

/// Puts the module's state back to what it is when the add-in is loaded.
void Reset();

/// Runs a step whose failure stops nothing (On Error Resume Next).
template <typename Step>
void IgnoreErrors(Step&& step) {
  try {
    step();
  } catch (const std::exception&) {  // ignored by the step's own rule
  }
}

/// A value of the per-user settings, section "Info"; empty when missing.
[[nodiscard]] std::string InfoSetting(std::string_view key);

/// Opens a web address in the user's browser; "http://" is put in front of an
/// address that does not begin with it. Errors are ignored.
void OpenUrl(std::string_view url, std::int32_t showCommand);

/// A new, empty, uniquely named temporary file; an empty prefix becomes "TMP".
/// The empty string on failure.
std::string MakeTempFileName(std::string& prefix);

/// The computer's name; the empty string when the system does not tell.
[[nodiscard]] std::string LocalComputerName();

/// A display value by kind: 1 the present date and time in the format picture,
/// 3 the text itself, 2, 4, 5 and 6 "[n/a]", any other kind nothing.
[[nodiscard]] std::string PreviewValue(std::string_view formatOrText, std::int32_t kind);

/// A connection number as it is stored and used as a key: at least three digits.
[[nodiscard]] std::string Format000(std::int32_t number);

/// A file in a folder, with the separator that the folder's own path uses.
[[nodiscard]] std::string FileInFolder(std::string_view folder, std::string_view file);

/// The path of a data file. "[LUMENFOLDFOLDER]" becomes the folder of `base`, a
/// presentation's full name, or the one that the setting LumenfoldFolder names;
/// addresses and absolute paths (of Windows or of this system) stay; any other
/// path is taken from the folder of `base`.
[[nodiscard]] std::string ResolvePath(std::string_view path, std::string_view base);

/// The path as it stands best in a presentation: without the folder of `base` where it begins with that, so
/// that both can be moved together; ResolvePath leads back.
[[nodiscard]] std::string ShortenPath(std::string_view path, std::string_view base);

/// A connection string: the placeholder as above in every value, and the path of a database that
/// is a file as ResolvePath does: after "Data Source=" of a provider that opens
/// one (Jet, ACE, SQLite), after "Database=" and "DBQ=" of such an ODBC driver
/// (SQLite, MDB Tools, Microsoft Access), also within "Extended Properties".
/// Everything else stays as it is.
[[nodiscard]] std::string ResolveConnectionString(std::string_view text, std::string_view base);

/// A connection string with what `path` answers in the place of the path of each database that is a file, as
/// ResolveConnectionString knows them.
[[nodiscard]] std::string WithDatabaseFiles(std::string_view text,
                                            const std::function<std::string(const std::string&)>& path);

}  // namespace modGlobalFunctions
}  // namespace LF2000
