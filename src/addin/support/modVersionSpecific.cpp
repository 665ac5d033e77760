#include "addin/support/modVersionSpecific.h"

#include <string>

#include "addin/support/modDebug.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "host/services.h"

namespace LF2000::modVersionSpecific {

using modDebug::DebugKind;

namespace {

void Log(DebugKind kind, const std::string& text) {
  modDebug::WriteDebugLog(kind, "modVersionSpecific", text);
}

bool AdoIsThere() {
  bool there = false;
  modGlobalFunctions::IgnoreErrors(
      [&] { there = host::Current().ado != nullptr && host::Current().ado->CreateRecordset() != nullptr; });
  return there;
}

}  // namespace

bool InstallationOK(const PowerPoint::Application& hostApplication) {
  Log(DebugKind::Information, "InstallationOK");
  StartupFailure = true;

  const std::string version = hostApplication.Version();
  if (version.substr(0, version.find('.')) != "9") {
    Log(DebugKind::Information,
        "This version of Corvane Lumenfold 2000 is not compatible with the installed version of Microsoft "
        "PowerPoint.");
    return false;
  }
  if (!AdoIsThere()) {
    const std::string text = "Could not find Microsoft ActiveX Data Objects.";
    Log(DebugKind::Information, text);
    host::Current().messageBox->MsgBox(text, host::vbOKOnly + host::vbCritical, ProductTitle);
    return false;
  }

  StartupFailure = false;
  Log(DebugKind::Variable, "InstallationOK:" + basic::CStr(true));
  Log(DebugKind::Variable, "StartupFailure:" + basic::CStr(StartupFailure));
  return true;
}

}  // namespace LF2000::modVersionSpecific
