#pragma once

#include <memory>

#include "fakes/FakeFormView.h"
#include "fakes/Passage.h"
#include "windows/automation/Ado.h"
#include "windows/automation/Application.h"
#include "windows/automation/Excel.h"
#include "windows/strict/Registered.h"

namespace conformance {

/// Leads from the system to the fakes by the adapters of automation, and from those by IDispatch to strict
/// objects.
class AutomationPassage final : public fakes::Passage {
 public:
  AutomationPassage();

  std::shared_ptr<AddInDesigner::IDTExtensibility2> newEntry() override;
  std::shared_ptr<PowerPoint::Application> hand(
      const std::shared_ptr<fakes::Application>& application) override;
  std::shared_ptr<PowerPoint::Presentation> hand(
      const std::shared_ptr<fakes::Presentation>& presentation) override;
  std::shared_ptr<PowerPoint::SlideShowWindow> hand(const std::shared_ptr<fakes::Window>& window) override;
  std::shared_ptr<AddInDesigner::AddIn> hand(const std::shared_ptr<fakes::AddIn>& addIn) override;
  ADODB::Factory* hand(ADODB::Factory* factory) override;
  Excel::Factory* hand(Excel::Factory* factory) override;
  fakes::FormUser* hand(fakes::FormView* view) override { return view; }

 private:
  /// Presentations are known to the application that handed them out, or else to this.
  std::shared_ptr<windows::automation::KnownPresentations> known_;
  std::weak_ptr<fakes::Application> application_;
  std::weak_ptr<PowerPoint::Application> handed_;

  ADODB::Factory* ado_ = nullptr;
  Excel::Factory* excel_ = nullptr;
  windows::automation::DataObjects dataObjects_;
  windows::automation::ExcelFactory excelFactory_;
  strict::Registered connections_;
  strict::Registered recordsets_;
  strict::Registered excelPrograms_;
};

}  // namespace conformance
