#include "fakes/FakeServices.h"

#include "addin/support/modDebug.h"
#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modVersionSpecific.h"
#include "basic/Locale.h"
#include "fakes/Passage.h"

namespace fakes {

Machine::Machine() {
  services_ = {&clock, &loop,  &files,    &module, &settings, &messageBox,
               &meter, &shell, &registry, nullptr, nullptr};
  UseAdo(&ado);
  LF2000::modDebug::Reset();
  LF2000::modErrors::Reset();
  LF2000::modGlobalFunctions::Reset();
  LF2000::modVersionSpecific::Reset();
  basic::SetUserLocale({});
}

Machine::~Machine() { host::Use({}); }

void Machine::UseAdo(ADODB::Factory* factory) {
  services_.ado = handed(factory);
  host::Use(services_);
}

void Machine::UseExcel(Excel::Factory* factory) {
  services_.excel = handed(factory);
  host::Use(services_);
}

void Machine::UseFileWatcher(host::FileWatcher* watcher) {
  services_.fileWatcher = watcher;
  host::Use(services_);
}

void Machine::UseJobs(host::Jobs* jobs) {
  services_.jobs = jobs;
  host::Use(services_);
}

void Machine::UseForms(Forms::View* view) {
  services_.forms = view;
  host::Use(services_);
}

}  // namespace fakes
