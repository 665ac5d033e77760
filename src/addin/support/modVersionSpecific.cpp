#include "addin/support/modVersionSpecific.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "addin/support/modDebug.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Strings.h"
#include "host/services.h"

namespace LF2000::modVersionSpecific {

using modDebug::DebugKind;

namespace {

void Log(DebugKind kind, const std::string& text) {
  modDebug::WriteDebugLog(kind, "modVersionSpecific", text);
}

/// Version 9, and those that the user has let in by a setting, separated by commas.
bool IsAccepted(std::string_view version) {
  const std::string_view major = version.substr(0, version.find('.'));
  if (major == "9") return true;
  const std::string setting = modGlobalFunctions::InfoSetting("AcceptedVersions");
  const auto accepted = basic::Split(setting, ',');
  return std::any_of(accepted.begin(), accepted.end(),
                     [major](std::string_view each) { return !major.empty() && basic::Trim(each) == major; });
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

  if (!IsAccepted(hostApplication.Version())) {
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
