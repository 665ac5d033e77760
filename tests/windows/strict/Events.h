#pragma once

#include <functional>
#include <map>
#include <vector>

#include "windows/strict/Object.h"

namespace strict {

/// Where an object raises its events. Sinks must answer to the interface of the events, as hosts ask for it.
class EventPoint final : public windows::com::Counted<IConnectionPoint> {
 public:
  /// Hears whether anybody is subscribed now.
  EventPoint(REFIID events, std::function<void(EventPoint&, bool)> heard);

  /// Arguments in the order of their declaration.
  void raise(DISPID event, std::vector<Variant> arguments) const;

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

 private:
  ~EventPoint() override;

  IID events_;
  std::function<void(EventPoint&, bool)> heard_;
  std::map<DWORD, Ptr<IDispatch>> sinks_;
  DWORD last_ = 0;
};

}  // namespace strict
