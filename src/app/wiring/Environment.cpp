#include "app/wiring/Environment.h"

#include <unistd.h>

#include "basic/Locale.h"
#include "platform/UserLocale.h"

namespace app {

Environment::Environment() {
  basic::SetUserLocale(platform::readUserLocale());
  host::Use({.clock = &clock_,
             .loop = &loop_,
             .files = &files_,
             .module = &module_,
             .settings = &settings_,
             .messageBox = &messageBox_,
             .progressMeter = &progressMeter_,
             .shell = &shell_,
             .registry = &registry_,
             .ado = &ado_,
             .excel = &excel_,
             .drives = &drives_,
             .fileWatcher = &watcher_});
  loop_.onFailure(
      [this](const basic::Error& error) { failures_.tell("An event handler failed: " + error.description); });
}

bool Environment::isAttended() { return ::isatty(STDIN_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0; }

Environment::~Environment() { host::Use({}); }

host::MsgBoxResult Environment::CountingMessageBox::MsgBox(std::string_view text, std::int32_t style,
                                                           std::string_view title) {
  const bool isError = (style & host::vbInformation) == 0;
  if (isError) ++errorsShown_;
  lastShown_ = text;
  return box_.MsgBox(text, style, title);
}

}  // namespace app
