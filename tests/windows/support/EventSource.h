#pragma once

#include <utility>
#include <vector>

#include "windows/com/Ptr.h"
#include "windows/com/Variant.h"

namespace support {

/// What a source of events is besides: the connection points of one kind of events, which live as long as the
/// object that they belong to.
class EventSource final : public IConnectionPointContainer, public IConnectionPoint {
 public:
  EventSource(IUnknown& owner, REFIID events) : owner_(owner), events_(events) {}

  /// Raises an event on every sink, its arguments in the order of their declaration.
  void raise(DISPID id, std::vector<windows::com::Variant> arguments) {
    std::vector<VARIANT> reversed;
    for (auto each = arguments.rbegin(); each != arguments.rend(); ++each) reversed.push_back(each->raw());
    const auto sinks = sinks_;  // one may end its subscription
    for (const auto& [cookie, sink] : sinks) {
      DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
      results.push_back(
          sink->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr));
    }
  }
  [[nodiscard]] std::size_t sinks() const { return sinks_.size(); }
  /// What sinks answered.
  std::vector<HRESULT> results;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return owner_.QueryInterface(iid, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
    if (iid != events_) return CONNECT_E_NOCONNECTION;
    *point = this;
    AddRef();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override {
    *iid = events_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
    const auto shared = windows::com::Ptr<IUnknown>::sharing(sink);
    auto events = shared.as<IDispatch>(events_);
    if (!events || !shared.as<IDispatch>(IID_IDispatch)) return CONNECT_E_CANNOTCONNECT;
    sinks_.emplace_back(*cookie = ++lastCookie_, std::move(events));
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
    const auto ended = std::erase_if(sinks_, [cookie](const auto& each) { return each.first == cookie; });
    return ended == 1 ? S_OK : CONNECT_E_NOCONNECTION;
  }
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

 private:
  IUnknown& owner_;
  IID events_;
  DWORD lastCookie_ = 0;
  std::vector<std::pair<DWORD, windows::com::Ptr<IDispatch>>> sinks_;
};

}  // namespace support
