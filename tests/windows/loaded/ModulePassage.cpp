// The add-in as a host loads it: found, created and called by COM.

#include "windows/loaded/ModulePassage.h"

#include <gtest/gtest.h>

#include <utility>

#include "basic/Error.h"
#include "windows/com/Failure.h"
#include "windows/com/Text.h"
#include "windows/loaded/MachineObject.h"
#include "windows/server/Extensibility.h"
#include "windows/strict/Classes.h"
#include "windows/strict/ProgramClasses.h"
#include "windows/support/Windows.h"

namespace loaded {
namespace {

namespace com = windows::com;
using ComAddIn = windows::server::IDTExtensibility2;

template <typename Interface>
com::Ptr<Interface> create(const wchar_t* progId, REFIID iid) {
  CLSID id;
  com::check(CLSIDFromProgID(progId, &id), com::narrow(progId));
  com::Ptr<Interface> object;
  com::check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, iid, reinterpret_cast<void**>(object.out())),
             com::narrow(progId));
  return object;
}

}  // namespace

/// Calls the module's object as a host does: early bound, success expected whatever happens.
class ModulePassage::Entry final : public AddInDesigner::IDTExtensibility2 {
 public:
  explicit Entry(ModulePassage& passage) : passage_(passage) {
    const auto machine = machineObject();
    take(machine.get());
    addIn_ = create<ComAddIn>(L"LF2000.Connect", windows::server::IID_IDTExtensibility2);
  }
  ~Entry() override {
    ModuleForms::giveBack();
    addIn_ = {};
    take(nullptr);
  }
  Entry(const Entry&) = delete;
  Entry& operator=(const Entry&) = delete;

  void OnConnection(const std::shared_ptr<PowerPoint::Application>& application,
                    AddInDesigner::ConnectMode mode,
                    const std::shared_ptr<AddInDesigner::AddIn>& addIn) override {
    passage_.application_ = application;
    const auto program = create<IDispatch>(L"PowerPoint.Application", IID_IDispatch);
    passage_.application_.reset();
    EXPECT_EQ(addIn_->OnConnection(program.get(), static_cast<int>(mode), strict::of(addIn).get(), nullptr),
              S_OK);
  }
  void OnDisconnection(AddInDesigner::RemoveMode mode) override {
    EXPECT_EQ(addIn_->OnDisconnection(static_cast<int>(mode), nullptr), S_OK);
  }
  void OnAddInsUpdate() override { EXPECT_EQ(addIn_->OnAddInsUpdate(nullptr), S_OK); }
  void OnStartupComplete() override { EXPECT_EQ(addIn_->OnStartupComplete(nullptr), S_OK); }
  void OnBeginShutdown() override { EXPECT_EQ(addIn_->OnBeginShutdown(nullptr), S_OK); }

 private:
  void take(IDispatch* machine) const {
    const auto takeMachine = windows::test::exported<TakesMachine>(passage_.module_, "TakeMachine");
    if (takeMachine != nullptr) takeMachine(machine);  // the module as it is delivered has no door
  }

  ModulePassage& passage_;
  com::Ptr<ComAddIn> addIn_;
};

ModulePassage::ModulePassage(const std::wstring& module)
    : module_(LoadLibraryW(module.c_str())),
      programs_(L"PowerPoint.Application", strict::PowerPointProgram,
                [this] { return strict::of(application_); }),
      connections_(L"ADODB.Connection", strict::AdoConnection,
                   [this] { return strict::of(ado_->CreateConnection()); }),
      recordsets_(L"ADODB.Recordset", strict::AdoRecordset,
                  [this] { return strict::of(ado_->CreateRecordset()); }),
      excelPrograms_(L"Excel.Application", strict::ExcelProgram, [this] { return excelProgram(); }) {
  const auto failed = [] { com::raise(HRESULT_FROM_WIN32(GetLastError()), "the module"); };
  if (module_ == nullptr) failed();
  const std::wstring manifest = module + L".manifest";
  ACTCTXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.lpSource = manifest.c_str();
  context_ = CreateActCtxW(&wanted);
  if (context_ == INVALID_HANDLE_VALUE || !ActivateActCtx(context_, &activation_)) failed();
}

ModulePassage::~ModulePassage() {
  DeactivateActCtx(0, activation_);
  ReleaseActCtx(context_);
  FreeLibrary(module_);
}

std::shared_ptr<AddInDesigner::IDTExtensibility2> ModulePassage::newEntry() {
  ++entries_;
  return std::make_shared<Entry>(*this);
}

com::Ptr<IDispatch> ModulePassage::excelProgram() const {
  if (excel_ == nullptr) throw basic::Error(429, "test host", "no Excel here");
  return strict::of(excel_->CreateApplication());
}

bool ModulePassage::canUnload() const {
  return windows::test::exported<HRESULT(STDAPICALLTYPE*)()>(module_, "DllCanUnloadNow")() == S_OK;
}

}  // namespace loaded
