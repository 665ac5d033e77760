// Takes the place of the surroundings that the add-in makes of Windows.

#include <memory>
#include <optional>

#include "basic/Locale.h"
#include "windows/automation/Ado.h"
#include "windows/automation/Excel.h"
#include "windows/door/Door.h"
#include "windows/door/MachineForms.h"
#include "windows/door/MachineServices.h"
#include "windows/platform/Registry.h"
#include "windows/server/WindowsSurroundings.h"

namespace windows::server {
namespace {

com::Ptr<IDispatch>& machine() {
  static com::Ptr<IDispatch> given;
  return given;
}
com::Class machineClass{"Machine"};

class MachineSurroundings final : public Surroundings {
 public:
  MachineSurroundings() { basic::SetUserLocale({}); }
  host::Services services() override {
    host::Services services;
    services.clock = &clock_;
    services.loop = &loop_;
    services.files = &files_;
    services.module = &module_;
    services.settings = &settings_;
    services.messageBox = &messageBox_;
    services.progressMeter = &meter_;
    services.shell = &shell_;
    services.registry = &registry_;
    services.ado = &dataObjects_;
    services.excel = &excel_;
    if (machine_.flag(L"ShowsForms")) services.forms = &forms_.emplace(machine_).view();
    if (machine_.flag(L"WatchesFiles")) services.fileWatcher = &watcher_;
    return services;
  }

 private:
  com::Object machine_{machine(), machineClass};
  door::Clock clock_{machine_};
  door::Loop loop_{machine_};
  door::Files files_{machine_};
  door::Module module_{machine_};
  door::Settings settings_{machine_};
  door::MessageBox messageBox_{machine_};
  door::ProgressMeter meter_{machine_};
  door::Shell shell_{machine_};
  door::FileWatcher watcher_{machine_};
  std::optional<door::Forms> forms_;
  platform::Registry registry_;
  automation::DataObjects dataObjects_;
  automation::ExcelFactory excel_;
};

}  // namespace

std::unique_ptr<Surroundings> makeWindowsSurroundings() { return std::make_unique<MachineSurroundings>(); }

}  // namespace windows::server

extern "C" __declspec(dllexport) void TakeMachine(IDispatch* machine) {
  using windows::com::Ptr;
  windows::server::machine() = Ptr<IDispatch>::sharing(machine);
}
