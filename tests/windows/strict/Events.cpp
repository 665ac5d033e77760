#include "windows/strict/Events.h"

#include <gtest/gtest.h>

#include <utility>

namespace strict {

EventPoint::EventPoint(REFIID events, std::function<void(EventPoint&, bool)> heard)
    : Counted({IID_IUnknown, IID_IConnectionPoint}), events_(events), heard_(std::move(heard)) {}

EventPoint::~EventPoint() {
  if (sinks_.empty()) return;
  ADD_FAILURE() << "an object goes that is subscribed to";
  heard_(*this, false);
}

HRESULT EventPoint::GetConnectionInterface(IID* iid) {
  *iid = events_;
  return S_OK;
}

HRESULT EventPoint::Advise(IUnknown* sink, DWORD* cookie) {
  Ptr<IDispatch> dispatch = Ptr<IUnknown>::sharing(sink).as<IDispatch>(events_);
  if (!dispatch) return CONNECT_E_CANNOTCONNECT;
  *cookie = ++last_;
  sinks_.emplace(last_, std::move(dispatch));
  heard_(*this, true);
  return S_OK;
}

HRESULT EventPoint::Unadvise(DWORD cookie) {
  if (sinks_.erase(cookie) == 0) return CONNECT_E_NOCONNECTION;
  heard_(*this, !sinks_.empty());
  return S_OK;
}

void EventPoint::raise(DISPID event, std::vector<Variant> arguments) const {
  std::vector<VARIANT> reversed;
  for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
    reversed.push_back(argument->raw());
  }
  const auto sinks = sinks_;  // handlers may end their subscription
  for (const auto& sink : sinks) {
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    Variant result;
    EXPECT_EQ(
        sink.second->Invoke(event, IID_NULL, 0, DISPATCH_METHOD, &parameters, result.out(), nullptr, nullptr),
        S_OK)
        << "event " << event;
  }
}

}  // namespace strict
