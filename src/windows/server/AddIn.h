#pragma once

#include <functional>
#include <memory>

#include "addin/Connect.h"
#include "host/services.h"
#include "windows/com/Counted.h"
#include "windows/server/Extensibility.h"

namespace windows::server {

/// {6C4F0B52-9E1D-4B0B-8F0A-5D0F3B7C2000}, of LF2000.Connect.
inline constexpr CLSID CLSID_Connect = {
    0x6C4F0B52, 0x9E1D, 0x4B0B, {0x8F, 0x0A, 0x5D, 0x0F, 0x3B, 0x7C, 0x20, 0x00}};

/// What the add-in finds around it but for its host: files, time, settings, dialogs.
class Surroundings {
 public:
  virtual ~Surroundings() = default;
  /// Valid as long as this lives.
  [[nodiscard]] virtual host::Services services() = 0;
};
using MakeSurroundings = std::function<std::unique_ptr<Surroundings>()>;

/// The object that hosts load: it makes of their calls those of the system. A host that lets the add-in go
/// while a handler waits is answered at once; the wait is broken off, and what was loaded goes when the
/// outermost handler has ended.
class AddIn final : public com::Counted<IDTExtensibility2> {
 public:
  /// With one reference, its maker's. Surroundings are made by the first call of a host.
  explicit AddIn(MakeSurroundings make);

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT*,
                                   EXCEPINFO*, UINT*) override;

  HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, ExtConnectMode mode, IDispatch* addInInst,
                                         SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnDisconnection(ExtDisconnectMode mode, SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) override;

 private:
  class InForce;
  ~AddIn() override;  // Release alone ends it
  void prepare();

  MakeSurroundings make_;
  std::shared_ptr<InForce> surroundings_;
  LF2000::Connect connect_;
};

}  // namespace windows::server
