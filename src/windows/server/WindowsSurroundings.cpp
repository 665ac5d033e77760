#include "windows/server/WindowsSurroundings.h"

#include "basic/Locale.h"
#include "windows/automation/Ado.h"
#include "windows/automation/Excel.h"
#include "windows/forms/FormView.h"
#include "windows/forms/ProgressMeter.h"
#include "windows/platform/Machine.h"
#include "windows/platform/UserLocale.h"

namespace windows::server {
namespace {

class WindowsSurroundings final : public Surroundings {
 public:
  WindowsSurroundings() { basic::SetUserLocale(platform::readUserLocale()); }
  host::Services services() override {
    host::Services services;
    machine_.supply(services);
    services.ado = &dataObjects_;
    services.excel = &excel_;
    services.forms = &forms_;
    services.progressMeter = &progressMeter_;
    return services;
  }

 private:
  platform::Machine machine_;
  automation::DataObjects dataObjects_;
  automation::ExcelFactory excel_;
  forms::FormView forms_{machine_.loop};
  forms::ProgressMeter progressMeter_;
};

}  // namespace

std::unique_ptr<Surroundings> makeWindowsSurroundings() { return std::make_unique<WindowsSurroundings>(); }

}  // namespace windows::server
