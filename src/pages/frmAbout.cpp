#include "pages/frmAbout.h"

#include <string>

#include "addin/support/modDebug.h"
#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "host/services.h"

namespace LF2000 {

frmAbout::frmAbout() : frmPage("frmAbout", "About", Forms::Placement::Dialog, nullptr) {
  const host::Services& services = host::Current();
  const host::Module& module = *services.module;
  std::string all;
  const auto add = [&](const char* name, std::string label, const std::string& text) {
    auto& control = Add<Forms::Label>(name);
    control.Text(text);
    all += label + ": " + text + "\r\n";
    AddRow(std::move(label), {&control});
  };
  add("lblProduct", "Product", module.Title());
  add("lblVersion", "Version",
      std::to_string(module.Major()) + "." + std::to_string(module.Minor()) + "." +
          std::to_string(module.Revision()));
  const std::string computer = modGlobalFunctions::LocalComputerName();
  add("lblComputer", "Computer", computer.empty() ? "not known" : computer);
  add("lblSettings", "Settings", services.settings->Location());
  add("lblErrorsLog", "Errors log", modErrors::ErrorLogFile());
  add("lblDebugLog", "Debug log", modDebug::DebugLogFile() + (modDebug::DebugOn ? "" : " (switched off)"));
  add("lblLicences", "Licences", module.Licences());
  auto& cmdCopy = Add<Forms::CommandButton>("cmdCopy", "&Copy");
  cmdCopy.Copies(all);
  cmdCopy.Click = [&cmdCopy] { cmdCopy.Caption("Copied"); };
  auto& cmdOK = Add<Forms::CommandButton>("cmdOK", "OK");
  cmdOK.Click = [this] { Close(Forms::Result::OK); };
  AddButtons({&cmdCopy, &cmdOK});
  DefaultButton(cmdOK);
  CancelButton(cmdOK);
}

}  // namespace LF2000
