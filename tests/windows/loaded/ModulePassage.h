#pragma once

#include <memory>
#include <string>

#include "fakes/Passage.h"
#include "windows/door/Door.h"
#include "windows/loaded/MachineObject.h"
#include "windows/strict/Registered.h"

namespace loaded {

/// Leads to the system by way of COM: the module's class is created by its ProgID, and the fakes are the
/// strict objects of a host that is itself created by name.
class ModulePassage final : public fakes::Passage {
 public:
  /// The module's class is known to this thread as long as this lives, by a manifest beside the module
  /// instead of entries in the registry.
  explicit ModulePassage(const std::wstring& module);
  ~ModulePassage() override;

  std::shared_ptr<AddInDesigner::IDTExtensibility2> newEntry() override;
  std::shared_ptr<PowerPoint::Application> hand(
      const std::shared_ptr<fakes::Application>& application) override {
    return application;
  }
  std::shared_ptr<PowerPoint::Presentation> hand(
      const std::shared_ptr<fakes::Presentation>& presentation) override {
    return presentation;
  }
  std::shared_ptr<PowerPoint::SlideShowWindow> hand(const std::shared_ptr<fakes::Window>& window) override {
    return window;
  }
  std::shared_ptr<AddInDesigner::AddIn> hand(const std::shared_ptr<fakes::AddIn>& addIn) override {
    return addIn;
  }
  ADODB::Factory* hand(ADODB::Factory* factory) override { return ado_ = factory; }
  Excel::Factory* hand(Excel::Factory* factory) override { return excel_ = factory; }
  fakes::FormUser* hand(fakes::FormView*) override { return &forms_; }

  /// How many entries have been made.
  [[nodiscard]] int entries() const { return entries_; }
  /// Whether the module may go: nobody holds an object of it.
  [[nodiscard]] bool canUnload() const;

 private:
  class Entry;
  [[nodiscard]] windows::com::Ptr<IDispatch> excelProgram() const;

  HMODULE module_ = nullptr;
  HANDLE context_ = INVALID_HANDLE_VALUE;
  ULONG_PTR activation_ = 0;
  int entries_ = 0;
  std::shared_ptr<PowerPoint::Application> application_;
  ADODB::Factory* ado_ = nullptr;
  Excel::Factory* excel_ = nullptr;
  ModuleForms forms_;
  strict::Registered programs_;
  strict::Registered connections_;
  strict::Registered recordsets_;
  strict::Registered excelPrograms_;
};

}  // namespace loaded
