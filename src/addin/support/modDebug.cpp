#include "addin/support/modDebug.h"

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "host/services.h"

namespace LF2000::modDebug {

namespace {

std::string_view Label(DebugKind kind) {
  switch (kind) {
    case DebugKind::Event:
      return "Event       ";
    case DebugKind::Variable:
      return "Variable    ";
    case DebugKind::Information:
      return "Information ";
    case DebugKind::Error:
      return "Error       ";
  }
  return {};
}

}  // namespace

void Reset() {
  DebugOn = false;
  DebugLogStarted = false;
  DebugLogSize = 0;
}

std::string DebugLogFile() {
  const host::Module& module = *host::Current().module;
  return modGlobalFunctions::FileInFolder(module.Path(), module.EXEName() + ".dbg");
}

void WriteDebugLog(DebugKind kind, std::string_view /*module*/, std::string_view text) {
  if (!DebugOn) return;
  std::string body(Label(kind));
  body.append(" ").append(text);
  modErrors::WriteLogLine(DebugLogFile(), DebugLogStarted, DebugLogSize, body);
}

}  // namespace LF2000::modDebug
