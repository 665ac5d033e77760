// The entry object, as the host calls it.

#include "windows/server/AddIn.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>

#include "addin/support/modDebug.h"
#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modVersionSpecific.h"
#include "model/modLinkClipboard.h"
#include "pages/modLastUsed.h"
#include "pages/modPages.h"
#include "windows/automation/Application.h"
#include "windows/com/Events.h"
#include "windows/com/Guard.h"
#include "windows/com/Variant.h"
#include "windows/server/Leaving.h"

namespace windows::server {

using com::guarded;

namespace {

/// The members of the interface, by their numbers from 1.
constexpr std::array Members = {L"OnConnection", L"OnDisconnection", L"OnAddInsUpdate", L"OnStartupComplete",
                                L"OnBeginShutdown"};

/// The system as it is when it is loaded: the module may stay in memory in between.
void beginAfresh() {
  LF2000::modDebug::Reset();
  LF2000::modErrors::Reset();
  LF2000::modGlobalFunctions::Reset();
  LF2000::modVersionSpecific::Reset();
  LF2000::modLinkClipboard::Reset();
  LF2000::modLastUsed::Reset();
  LF2000::modPages::Reset();
}

void note(const std::string& text) {
  LF2000::modDebug::WriteDebugLog(LF2000::modDebug::DebugKind::Information, "Application", text);
}

}  // namespace

/// The services of the surroundings, in force for the system while any add-in object lives.
class AddIn::InForce {
 public:
  explicit InForce(std::unique_ptr<Surroundings> surroundings)
      : surroundings_(std::move(surroundings)),
        services_(surroundings_->services()),
        loop_(*services_.loop),
        messageBox_(*services_.messageBox, loop_) {
    services_.loop = &loop_;
    services_.messageBox = &messageBox_;
    beginAfresh();
    host::Use(services_);
  }
  InForce(const InForce&) = delete;
  InForce& operator=(const InForce&) = delete;
  ~InForce() {
    beginAfresh();  // nothing of the host's stays behind
    host::Use({});
  }

  static std::shared_ptr<InForce> of(const MakeSurroundings& make) {
    static std::weak_ptr<InForce> current;
    std::shared_ptr<InForce> inForce = current.lock();
    if (!inForce) current = inForce = std::make_shared<InForce>(make());
    return inForce;
  }
  [[nodiscard]] LeavingLoop& loop() { return loop_; }

 private:
  std::unique_ptr<Surroundings> surroundings_;
  host::Services services_;
  LeavingLoop loop_;
  LeavingMessageBox messageBox_;
};

AddIn::AddIn(MakeSurroundings make)
    : Counted({IID_IUnknown, IID_IDispatch, IID_IDTExtensibility2}), make_(std::move(make)) {}

AddIn::~AddIn() = default;

void AddIn::prepare() {
  if (!surroundings_) surroundings_ = InForce::of(make_);
}

HRESULT AddIn::OnConnection(IDispatch* application, ExtConnectMode mode, IDispatch* addInInst, SAFEARRAY**) {
  return guarded([&] {
    prepare();
    const auto connect = [self = com::Ptr<AddIn>::sharing(this), mode,
                          program = com::Ptr<IDispatch>::sharing(application),
                          entry = com::Ptr<IDispatch>::sharing(addInInst)] {
      self->connect_.OnConnection(std::make_shared<automation::Application>(program, note),
                                  static_cast<AddInDesigner::ConnectMode>(mode),
                                  std::make_shared<automation::AddIn>(entry));
    };
    // What it was loaded for before has not ended yet.
    if (surroundings_->loop().isLeaving()) return com::Entrance::afterwards(connect);
    connect();
  });
}

HRESULT AddIn::OnDisconnection(ExtDisconnectMode mode, SAFEARRAY**) {
  return guarded([&] {
    prepare();
    const auto removeMode = static_cast<AddInDesigner::RemoveMode>(mode);
    if (com::Entrance::depth() == 1) return connect_.OnDisconnection(removeMode);
    surroundings_->loop().leave();
    com::Entrance::afterwards([self = com::Ptr<AddIn>::sharing(this), removeMode] {
      self->connect_.OnDisconnection(removeMode);
      self->surroundings_->loop().stay();
    });
  });
}

HRESULT AddIn::OnAddInsUpdate(SAFEARRAY**) {
  return guarded([&] {
    prepare();
    connect_.OnAddInsUpdate();
  });
}

HRESULT AddIn::OnStartupComplete(SAFEARRAY**) {
  return guarded([&] {
    prepare();
    connect_.OnStartupComplete();
  });
}

HRESULT AddIn::OnBeginShutdown(SAFEARRAY**) {
  return guarded([&] {
    prepare();
    connect_.OnBeginShutdown();
  });
}

HRESULT AddIn::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT AddIn::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (names == nullptr || ids == nullptr) return E_POINTER;
  std::fill(ids, ids + count, DISPID_UNKNOWN);
  for (std::size_t i = 0; i < Members.size(); ++i) {
    if (lstrcmpiW(names[0], Members[i]) != 0) continue;
    ids[0] = static_cast<DISPID>(i) + 1;
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
  }
  return DISP_E_UNKNOWNNAME;
}

HRESULT AddIn::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                      UINT*) {
  if (parameters == nullptr) return E_POINTER;
  if ((kind & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
  constexpr std::array<UINT, 5> Counts = {4, 2, 1, 1, 1};
  if (id < 1 || id > static_cast<DISPID>(Counts.size())) return DISP_E_MEMBERNOTFOUND;
  if (parameters->cArgs != Counts[static_cast<std::size_t>(id) - 1]) return DISP_E_BADPARAMCOUNT;
  const com::Event call(id, *parameters);
  return com::contained([&] {
    switch (id) {
      case 1:
        OnConnection(call.object(0).get(), call.number(1), call.object(2).get(), nullptr);
        break;
      case 2:
        OnDisconnection(call.number(0), nullptr);
        break;
      case 3:
        OnAddInsUpdate(nullptr);
        break;
      case 4:
        OnStartupComplete(nullptr);
        break;
      default:
        OnBeginShutdown(nullptr);
    }
  });
}

}  // namespace windows::server
