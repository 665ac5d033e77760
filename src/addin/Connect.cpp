#include "addin/Connect.h"

#include <string>
#include <variant>

#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modVersionSpecific.h"
#include "basic/Conversion.h"
#include "host/services.h"

namespace LF2000 {

using modDebug::DebugKind;
using modGlobalFunctions::IgnoreErrors;

namespace {

std::string VersionText(const host::Module& module) {
  return std::to_string(module.Major()) + "." + std::to_string(module.Minor()) + "." +
         std::to_string(module.Revision());
}

}  // namespace

void Connect::OnConnection(const std::shared_ptr<PowerPoint::Application>& application,
                           AddInDesigner::ConnectMode /*mode*/,
                           const std::shared_ptr<AddInDesigner::AddIn>& addInInst) {
  // A text that is no boolean leaves the switch as it is.
  IgnoreErrors([] { modDebug::DebugOn = basic::CBool(modGlobalFunctions::InfoSetting("Debug")); });
  IgnoreErrors([] {
    const host::Module& module = *host::Current().module;
    Log(DebugKind::Event, "OnConnection");
    Log(DebugKind::Information, module.Title());
    Log(DebugKind::Information, module.EXEName());
    Log(DebugKind::Information, module.Path());
    Log(DebugKind::Information, VersionText(module));
  });
  std::string progId;
  IgnoreErrors([&] {
    progId = basic::CStr(addInInst->Property("ProgId"));
    Log(DebugKind::Information, progId);
  });
  IgnoreErrors([&] {
    if (!application_) application_ = std::make_unique<LF2000::Application>();
    application_->InitHandler(application, progId);
  });
  if (modVersionSpecific::StartupFailure) application_.reset();
  connected_ = true;
}

void Connect::OnDisconnection(AddInDesigner::RemoveMode /*mode*/) {
  IgnoreErrors([] { Log(DebugKind::Event, "OnDisconnection"); });
  IgnoreErrors([&] {
    if (!application_) application_ = std::make_unique<LF2000::Application>();
    application_->UnInitHandler();
  });
  application_.reset();
  IgnoreErrors([] { Log(DebugKind::Information, "Program shut down."); });
}

void Connect::OnAddInsUpdate() {
  IgnoreErrors([] { Log(DebugKind::Event, "OnAddInsUpdate"); });
}

void Connect::OnStartupComplete() {
  IgnoreErrors([] { Log(DebugKind::Event, "OnStartupComplete"); });
}

void Connect::OnBeginShutdown() {
  IgnoreErrors([] { Log(DebugKind::Event, "OnBeginShutdown"); });
}

void Connect::Log(modDebug::DebugKind kind, std::string_view text) {
  modDebug::WriteDebugLog(kind, "Connect", text);
}

}  // namespace LF2000
