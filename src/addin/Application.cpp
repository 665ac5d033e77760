// The host's events: presentations that open, are saved and close, shows that begin and end.

#include "addin/Application.h"

#include <algorithm>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modVersionSpecific.h"
#include "host/forms.h"
#include "host/services.h"
#include "model/modCommandState.h"
#include "model/modOfflineCopy.h"
#include "model/modTags.h"
#include "pages/modPages.h"

namespace LF2000 {

using modDebug::DebugKind;

Application::~Application() {
  modCommandState::ToldTo({});
  if (gppApp) gppApp->Advise(nullptr);
  modGlobalFunctions::HostApplication = nullptr;
}

void Application::InitHandler(const std::shared_ptr<PowerPoint::Application>& hostApplication,
                              const std::string& progId) {
  Log(DebugKind::Information, "InitHandler");
  gppApp = hostApplication;
  gppApp->Advise(this);
  modGlobalFunctions::HostApplication = gppApp;
  progId_ = progId;
  modPages::Install();
  modOfflineCopy::MadeBy([](const modOfflineCopy::Files& files, const modOfflineCopy::Options& options) {
    return clsRuntime().CreateOfflinePPT(files, options);
  });
  if (!modVersionSpecific::InstallationOK(*gppApp)) return;
  Log(DebugKind::Information, "Opening menu");
  if (modGlobalFunctions::InfoSetting("HideUserInterface") != "1") BuildCommands();
}

void Application::BuildCommands() {
  const auto bars = gppApp->CommandBars();
  if (!bars) return;
  commands_.Build(*bars);
  modCommandState::ToldTo(
      {[this](std::int32_t code) { commands_.DisplayType(code); }, [this] { UpdateCommandState(); }});
  UpdateCommandState();
}

void Application::UpdateCommandState() try { commands_.Update(); } catch (...) {
  modErrors::CatchError();
}

void Application::UnInitHandler() {
  using modGlobalFunctions::ExcelState;
  using modGlobalFunctions::ExcelStatus;
  using modGlobalFunctions::IgnoreErrors;
  Log(DebugKind::Information, "UnInitHandler");
  commands_.Delete();
  // A show that goes on has nobody left who brings back what is hidden.
  if (const auto runtime = runtime_) IgnoreErrors([&] { GiveBack(runtime->ActivePresentation()); });
  runtime_.reset();
  if (ExcelStatus(false, false) == ExcelState::Started) ExcelStatus(false, true);
}

std::shared_ptr<clsPresentation> Application::Find(
    const std::shared_ptr<PowerPoint::Presentation>& presentation) const {
  const auto entry = std::find_if(Presentations.begin(), Presentations.end(), [&](const auto& candidate) {
    return candidate->ActivePresentation() == presentation;
  });
  return entry == Presentations.end() ? nullptr : *entry;
}

std::shared_ptr<clsPresentation> Application::FindVersion(
    const PowerPoint::Presentation& presentation) const {
  const std::string name = presentation.FullName();
  const auto entry = std::find_if(Presentations.rbegin(), Presentations.rend(), [&](const auto& candidate) {
    return candidate->ActivePresentation()->FullName() == name;
  });
  return entry == Presentations.rend() ? nullptr : *entry;
}

void Application::NewPresentation(const std::shared_ptr<PowerPoint::Presentation>& presentation) try {
  Log(DebugKind::Event, "gppApp_NewPresentation");
  host::Current().loop->DoEvents();
  if (modGlobalFunctions::OfflineGenerationActive) {
    Log(DebugKind::Information, "New presentation due to offline generation");
    return;
  }
  auto entry = std::make_shared<clsPresentation>();
  entry->ActivePresentation(presentation);
  if (gppApp->Presentations()->Count() == 1) Presentations.clear();
  Presentations.push_back(std::move(entry));
  UpdateCommandState();
} catch (...) {
  modErrors::CatchError();
}

void Application::PresentationOpen(const std::shared_ptr<PowerPoint::Presentation>& presentation) try {
  Log(DebugKind::Event, "gppApp_PresentationOpen");
  Log(DebugKind::Event, presentation->FullName() + "gppApp_PresentationOpen:");
  host::Current().loop->DoEvents();
  if (modGlobalFunctions::OfflineGenerationActive) return;
  auto entry = std::make_shared<clsPresentation>();
  const auto former = FindVersion(*presentation);
  if (former && host::Current().jobs) {
    entry->ActivePresentation(presentation, *former);
  } else {
    entry->ActivePresentation(presentation);
  }
  Presentations.push_back(std::move(entry));
  UpdateCommandState();
  presentation->Saved(true);
} catch (...) {
  modErrors::CatchError();
}

void Application::PresentationClose(const std::shared_ptr<PowerPoint::Presentation>& presentation) try {
  Log(DebugKind::Event, "gppApp_PresentationClose");
  if (const auto entry = Find(presentation)) {
    Log(DebugKind::Event, presentation->FullName() + "gppApp_PresentationClose:");
    Presentations.erase(std::find(Presentations.begin(), Presentations.end(), entry));
  }
  UpdateCommandState();
} catch (...) {
  modErrors::CatchError();
}

void Application::PresentationSave(const std::shared_ptr<PowerPoint::Presentation>& presentation) try {
  Log(DebugKind::Event, "gppApp_PresentationSave");
  if (modGlobalFunctions::OfflineGenerationActive) return;
  const auto entry = Find(presentation);
  if (!entry) return;
  Log(DebugKind::Event, presentation->FullName() + "gppApp_PresentationSave:");
  entry->SetDisplayType();
  entry->PrepareSave();
  presentation->Save();
  entry->FillValues(false);
  presentation->Saved(true);
} catch (...) {
  modErrors::CatchError();
}

void Application::SlideShowBegin(const std::shared_ptr<PowerPoint::SlideShowWindow>& window) try {
  Log(DebugKind::Event, "gppApp_SlideShowBegin");
  modErrors::ErrorsOccurred = false;
  modErrors::SlideShowRunning = true;
  const auto presentation = window->Presentation();
  if (!modTags::HasVersionTag(*presentation)) {
    Log(DebugKind::Variable, "PresentationLumenfoldEnabled:0");
    return;
  }
  Log(DebugKind::Variable, "PresentationLumenfoldEnabled:-1");
  if (presentation->SlideShowSettings()->ShowType() == PowerPoint::SlideShowType::Kiosk) {
    window->View()->PointerType(PowerPoint::SlideShowPointerType::AlwaysHidden);
  }
  modGlobalFunctions::SavedBeforeShow = presentation->Saved() ? -1 : 0;
  // The show may end while it waits for data.
  const auto runtime = std::make_shared<clsRuntime>();
  runtime_ = runtime;
  if (modGlobalFunctions::InfoSetting("HideProgressMeterOpen") != "1") runtime->ShowProgressMeter(true);
  runtime->ActivePresentation(presentation);
  const auto entry = Find(presentation);
  if (entry && host::Current().jobs) {
    entry->IsShown(true);
    runtime->ReadBy(entry);
  }
  runtime->StartTimers(window);
} catch (...) {
  modErrors::CatchError();
}

void Application::SlideShowNextSlide(const std::shared_ptr<PowerPoint::SlideShowWindow>& window) try {
  Log(DebugKind::Event, "gppApp_SlideShowNextSlide");
  if (const auto runtime = runtime_) runtime->SlideShowNextSlide(window);
} catch (...) {
  modErrors::CatchError();
}

void Application::SlideShowEnd(const std::shared_ptr<PowerPoint::Presentation>& presentation) try {
  Log(DebugKind::Event, "gppApp_SlideShowEnd");
  modErrors::SlideShowRunning = false;
  if (modTags::HasVersionTag(*presentation)) {
    Log(DebugKind::Event, presentation->FullName() + "DisplayTypeModified:");
    GiveBack(presentation);
  }
  runtime_.reset();
  if (modErrors::ErrorsOccurred &&
      modGlobalFunctions::InfoSetting("HideMsgBoxErrorsDuringPresentation") != "1" &&
      host::Current().messageBox->MsgBox(
          "There were errors encountered during the presentation. Do you want to open the log file?",
          host::vbYesNo + host::vbExclamation, ProductTitle) == host::MsgBoxResult::Yes) {
    modErrors::OpenErrorLog();
  }
} catch (...) {
  runtime_.reset();
  modErrors::CatchError();
}

void Application::GiveBack(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  const auto slides = presentation->Slides();
  for (std::int32_t i = 1; i <= slides->Count(); ++i) slides->Item(i)->SlideShowTransition()->Hidden(false);
  if (runtime_) runtime_->UnSetLinkedObjects();
  if (const auto entry = Find(presentation)) entry->IsShown(false);
  presentation->Saved(modGlobalFunctions::SavedBeforeShow != 0);
}

void Application::WindowSelectionChange(const std::shared_ptr<PowerPoint::Selection>&) try {
  Log(DebugKind::Event, "gppApp_WindowSelectionChange");
  UpdateCommandState();
  if (const auto window = gppApp->ActiveWindow()) DockPage(window->Presentation());
} catch (...) {
  modErrors::CatchError();
}

void Application::WindowActivate(const std::shared_ptr<PowerPoint::Presentation>& presentation,
                                 const std::shared_ptr<PowerPoint::DocumentWindow>&) try {
  Log(DebugKind::Event, "gppApp_WindowActivate");
  UpdateCommandState();
  DockPage(presentation);
} catch (...) {
  modErrors::CatchError();
}

void Application::DockPage(const std::shared_ptr<PowerPoint::Presentation>& presentation) const {
  const Forms::View* view = host::Current().forms;
  const auto entry = Find(presentation);
  if (view != nullptr && view->Docks() && entry) modPages::Dock(entry);
}

void Application::PresentationPrint(const std::shared_ptr<PowerPoint::Presentation>&) {
  Log(DebugKind::Event, "gppApp_PresentationPrint");
  UpdateCommandState();
}

void Application::Log(modDebug::DebugKind kind, std::string_view text) {
  modDebug::WriteDebugLog(kind, "Application", text);
}

}  // namespace LF2000
