#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "basic/Date.h"
#include "host/addin.h"
#include "host/adodb.h"
#include "host/bytes.h"
#include "host/excel.h"

namespace Forms {
class View;
}

// What the system asks of the machine it runs on: time, timers, files,
// settings, message boxes, the shell, the registry. Hosts supply them through
// host::Services; tests supply fakes. Everything is called on one thread. A
// member that fails throws basic::Error, unless it says otherwise. What may keep
// its caller waiting (files on other machines, questions to the user) lets the
// loop run meanwhile, so that the caller may find the world changed behind it.

namespace host {

class Clock {
 public:
  virtual ~Clock() = default;
  /// Present local date and time, to the second.
  [[nodiscard]] virtual basic::Date Now() const = 0;
  /// Seconds since local midnight, with fraction.
  [[nodiscard]] virtual float Timer() const = 0;
  /// Milliseconds since some moment in the past. Goes on evenly, whatever is done
  /// to the time of day.
  [[nodiscard]] virtual std::int64_t TickCount() const = 0;
};

/// A form's timer: created off. It never fires inside its own handler, and its
/// interval counts from the handler's end: what a handler does takes nothing from the
/// interval that follows. It is never early and at least 8 ms late, so that an interval has
/// passed by Clock::Timer's single precision as well.
class Timer {
 public:
  virtual ~Timer() = default;
  [[nodiscard]] virtual std::int32_t Interval() const = 0;
  /// Milliseconds; 0 never fires. A change starts the interval anew.
  virtual void Interval(std::int32_t milliseconds) = 0;
  [[nodiscard]] virtual bool Enabled() const = 0;
  /// Switching it on begins an interval; switching on what is on changes nothing.
  virtual void Enabled(bool enabled) = 0;
};

/// The host's message loop.
class Loop {
 public:
  virtual ~Loop() = default;
  /// The handler must not throw; it is not called after the timer is gone.
  [[nodiscard]] virtual std::unique_ptr<Timer> CreateTimer(std::function<void()> handler) = 0;
  /// Lets everything that is ready run; sleeps a moment when nothing is. The caller's objects may be ended in
  /// there: it holds them itself, and looks afterwards whether they are still wanted.
  virtual void DoEvents() = 0;
};

/// A file opened for sequential input; closed when destroyed.
class InputFile {
 public:
  virtual ~InputFile() = default;
  /// The whole file as it stands, from its beginning. A file that grows
  /// meanwhile gives what it held when the read began.
  [[nodiscard]] virtual Bytes ReadAll() = 0;
};

/// Files by path. A path may be one that this system does not know (a drive
/// letter, a UNC share): the host translates it by the user's settings or fails
/// with an error that says how to add a translation.
class Files {
 public:
  virtual ~Files() = default;
  /// A missing file, and one that another program holds, is an error.
  [[nodiscard]] virtual std::unique_ptr<InputFile> OpenForInput(std::string_view path) = 0;
  /// Opens for appending (creating the file, not its folder), writes, closes.
  virtual void Append(std::string_view path, std::string_view text) = 0;
  /// Deletes a file; a missing one is an error.
  virtual void Kill(std::string_view path) = 0;
  /// Renames a file; one of the new name must not be there.
  virtual void Name(std::string_view path, std::string_view newPath) = 0;
  /// FileDateTime, to the finest resolution that the file system keeps. A file
  /// that was changed in another way (size, place on the disk, status) and says
  /// the same time as before gets another fraction of the same second.
  [[nodiscard]] virtual basic::Date FileDateTime(std::string_view path) const = 0;
  /// The path as this system knows it, whether there is such a file or not.
  [[nodiscard]] virtual std::string LocalPath(std::string_view path) const = 0;
  /// The path, as this system knows it, of a file in a folder or in one below it.
  /// A name that leads out of the folder, by itself or through links, is an error
  /// whether there is such a file or not; so is a file that is missing.
  [[nodiscard]] virtual std::string FileWithin(std::string_view folder, std::string_view name) const = 0;
  /// Folder of temporary files, with the separator at its end.
  [[nodiscard]] virtual std::string TempPath() const = 0;
  /// Creates a new empty file with a unique name that begins with the prefix.
  [[nodiscard]] virtual std::string TempFileName(std::string_view folder, std::string_view prefix) = 0;
};

/// The running module (the language's App object).
class Module {
 public:
  virtual ~Module() = default;
  /// The product's name.
  [[nodiscard]] virtual std::string Title() const = 0;
  /// File name without extension.
  [[nodiscard]] virtual std::string EXEName() const = 0;
  /// The add-in folder, without a separator at its end.
  [[nodiscard]] virtual std::string Path() const = 0;
  [[nodiscard]] virtual std::int32_t Major() const = 0;
  [[nodiscard]] virtual std::int32_t Minor() const = 0;
  [[nodiscard]] virtual std::int32_t Revision() const = 0;
  /// What the module is made of and under which licences, in sentences.
  [[nodiscard]] virtual std::string Licences() const = 0;
};

/// The per-user application settings store.
class Settings {
 public:
  virtual ~Settings() = default;
  /// The empty string for a missing key.
  [[nodiscard]] virtual std::string GetSetting(std::string_view application, std::string_view section,
                                               std::string_view key) const = 0;
  /// Where the user finds and changes them: a file, a key of the registry.
  [[nodiscard]] virtual std::string Location() const = 0;
};

/// Styles and answers of MsgBox, to be added together.
enum MsgBoxStyle : std::int32_t {
  vbOKOnly = 0,
  vbOKCancel = 1,
  vbYesNo = 4,
  vbCritical = 16,
  vbExclamation = 48,
  vbInformation = 64,
};
enum class MsgBoxResult : std::int32_t { OK = 1, Cancel = 2, Yes = 6, No = 7 };

class MessageBox {
 public:
  virtual ~MessageBox() = default;
  /// Shows the text with the buttons and icon of `style`, a sum of MsgBoxStyle, and waits for the answer.
  /// Where nobody can be asked the host answers.
  virtual MsgBoxResult MsgBox(std::string_view text, std::int32_t style, std::string_view title) = 0;
};

/// The progress window: caption, maximum, step, text line.
class ProgressMeter {
 public:
  virtual ~ProgressMeter() = default;
  /// Opens at no step of `maximum`.
  virtual void Show(std::string_view caption, std::int32_t maximum) = 0;
  /// What is being done now.
  virtual void Text(std::string_view text) = 0;
  /// Advances by one step.
  virtual void Step() = 0;
  /// Nothing when it is not open.
  virtual void Close() = 0;
};

/// The shell calls. They do not throw; a window handle of 0 is no window.
class Shell {
 public:
  virtual ~Shell() = default;
  /// ShellExecuteA; false when nothing could be started.
  virtual bool ShellExecute(std::string_view verb, std::string_view file, std::int32_t showCommand) = 0;
  /// HtmlHelpA; the window handle or 0.
  virtual std::int64_t HtmlHelp(std::int64_t ownerWindow, std::string_view file, std::uint32_t command,
                                std::uint32_t data) = 0;
  /// GetComputerNameA; nothing when the call fails.
  [[nodiscard]] virtual std::optional<std::string> ComputerName() const = 0;
  /// SHBrowseForFolder, rooted at the special folder `root` when there is one;
  /// the display name and, for a file-system folder, the path. Nothing on cancel.
  struct Browsed {
    std::string displayName;
    std::optional<std::string> path;
  };
  virtual std::optional<Browsed> BrowseForFolder(std::int64_t ownerWindow, std::string_view title,
                                                 std::optional<std::int32_t> root, std::uint32_t flags) = 0;
};

/// The registry calls. Results are the system's error codes, 0 for success.
/// A handle of 0 is no key.
class Registry {
 public:
  using Key = std::uintptr_t;
  virtual ~Registry() = default;
  /// `access` as RegOpenKeyEx takes it. `opened` is to be closed, also a created one.
  virtual std::int32_t OpenKey(Key root, std::string_view subkey, std::uint32_t access, Key& opened) = 0;
  virtual std::int32_t CreateKey(Key root, std::string_view subkey, Key& opened) = 0;
  virtual std::int32_t DeleteKey(Key root, std::string_view subkey) = 0;
  virtual std::int32_t CloseKey(Key key) = 0;
  /// Type and size only when `data` is null; the size of a string counts its NUL.
  virtual std::int32_t QueryValue(Key key, std::string_view name, std::uint32_t& type,
                                  std::vector<unsigned char>* data, std::uint32_t& size) = 0;
  virtual std::int32_t SetValue(Key key, std::string_view name, std::uint32_t type,
                                const std::vector<unsigned char>& data) = 0;
  virtual std::int32_t DeleteValue(Key key, std::string_view name) = 0;
};

class Distribution;
class Drives;
class FileWatcher;
class Jobs;

/// Everything a host supplies. The host keeps the objects alive for as long as
/// the system runs.
struct Services {
  Clock* clock = nullptr;
  Loop* loop = nullptr;
  Files* files = nullptr;
  Module* module = nullptr;
  Settings* settings = nullptr;
  MessageBox* messageBox = nullptr;
  ProgressMeter* progressMeter = nullptr;
  Shell* shell = nullptr;
  Registry* registry = nullptr;
  ADODB::Factory* ado = nullptr;
  /// Null where there are no worksheets.
  Excel::Factory* excel = nullptr;
  /// Null where no drive needs care (host/drives.h).
  Drives* drives = nullptr;
  /// Null where nobody tells of changes (host/file_watch.h).
  FileWatcher* fileWatcher = nullptr;
  /// Null where what may wait is done at once, in the handler that asks for it (host/jobs.h).
  Jobs* jobs = nullptr;
  /// Null where no form can be shown (host/forms.h).
  Forms::View* forms = nullptr;
  /// Null where nothing can be sent to players (host/distribution.h).
  Distribution* distribution = nullptr;
};

/// The services in force, set once by the program (or anew by each test).
const Services& Current();
/// Takes a copy of the pointers; {} ends the use of the former.
void Use(const Services& services);

}  // namespace host
