#include "app/wiring/AddInHost.h"

#include "addin/support/modVersionSpecific.h"
#include "app/wiring/LinkedSheets.h"
#include "basic/Error.h"
#include "deck/objects/LinkedPictures.h"
#include "host/addin.h"
#include "host/services.h"
#include "model/modOfflineLinks.h"

namespace app {

namespace {

/// The add-in's entry in this host.
class Entry final : public AddInDesigner::AddIn {
 public:
  [[nodiscard]] basic::Variant Property(std::string_view name) const override {
    if (name == "ProgId") return std::string("LF2000.Connect");
    throw basic::Error(basic::AdapterError, "lumenfold",
                       "An add-in has no property '" + std::string(name) + "' here.");
  }
};

std::vector<std::string> drawSheets(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  const auto deck = std::dynamic_pointer_cast<deck::Presentation>(presentation);
  return deck ? LinkedSheets(deck, *host::Current().loop).failures() : std::vector<std::string>();
}

}  // namespace

AddInHost::AddInHost() : application_(std::make_shared<deck::Application>()) {
  connect_.OnConnection(application_, AddInDesigner::ConnectMode::Startup, std::make_shared<Entry>());
  connect_.OnStartupComplete();
  if (!connect_.Application()) {
    throw basic::Error(basic::AdapterError, "lumenfold",
                       "The add-in does not run in this host; the debug log says why.");
  }
  LF2000::modOfflineLinks::DoneBy(
      {drawSheets,
       [this](const std::shared_ptr<PowerPoint::Presentation>& copy, const std::string& original) {
         const auto deck = std::dynamic_pointer_cast<deck::Presentation>(copy);
         if (!deck) return std::vector<std::string>();
         return deck::takePicturesIn(
             *deck, original, [this](const std::string& path) { application_->requireReadable(path); });
       }});
}

AddInHost::~AddInHost() {
  LF2000::modOfflineLinks::DoneBy({});
  const auto open = application_->openPresentations();
  for (const auto& presentation : open) application_->close(presentation);
  if (!connect_.Application()) return;
  connect_.OnBeginShutdown();
  connect_.OnDisconnection(AddInDesigner::RemoveMode::HostShutdown);
}

std::shared_ptr<deck::Presentation> AddInHost::open(const std::string& path,
                                                    deck::Application::Damaged damaged) {
  return application_->open(path, damaged);
}

std::shared_ptr<LF2000::clsPresentation> AddInHost::entryOf(
    const std::shared_ptr<deck::Presentation>& presentation) const {
  const auto& application = connect_.Application();
  return application ? application->Find(presentation) : nullptr;
}

LF2000::FrmRuntimeTimer* AddInHost::runtimeTimer() const {
  const auto& application = connect_.Application();
  const LF2000::clsRuntime* runtime = application ? application->Runtime() : nullptr;
  return runtime != nullptr ? runtime->Form() : nullptr;
}

}  // namespace app
