#include "app/wiring/Environment.h"

#include <unistd.h>

#include "basic/Locale.h"
#include "platform/UserLocale.h"

namespace app {

Environment::Environment() {
  basic::SetUserLocale(platform::readUserLocale());
  host::Services services;
  services.clock = &clock_;
  services.loop = &loop_;
  services.files = &files_;
  services.module = &module_;
  services.settings = &settings_;
  services.messageBox = &messageBox_;
  services.progressMeter = &progressMeter_;
  services.shell = &shell_;
  services.registry = &registry_;
  services.ado = &ado_;
  services.excel = &excel_;
  services.drives = &drives_;
  services.fileWatcher = &watcher_;
  host::Use(services);
  loop_.onFailure(
      [this](const basic::Error& error) { failures_.tell("An event handler failed: " + error.description); });
}

bool Environment::isAttended() { return ::isatty(STDIN_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0; }

Environment::~Environment() { host::Use({}); }

host::MsgBoxResult Environment::CountingMessageBox::MsgBox(std::string_view text, std::int32_t style,
                                                           std::string_view title) {
  ++errorsShown_;
  lastShown_ = text;
  return box_.MsgBox(text, style, title);
}

}  // namespace app
