// Events of automation objects: the sink that they are raised on, and its subscription.

#include "windows/com/Events.h"

#include <memory>
#include <utility>

#include "basic/Error.h"
#include "windows/com/Counted.h"
#include "windows/com/Failure.h"
#include "windows/com/Guard.h"
#include "windows/com/Variant.h"

namespace windows::com {

const VARIANT& Event::argument(UINT place) const {
  if (place >= parameters_->cArgs) basic::Raise(basic::RuntimeError::SubscriptOutOfRange);
  return parameters_->rgvarg[parameters_->cArgs - 1 - place];  // they come reversed
}

Ptr<IDispatch> Event::object(UINT place) const { return Variant::copyOf(argument(place)).object(); }

std::int32_t Event::number(UINT place) const { return Variant::copyOf(argument(place)).number(); }

/// Events come by number alone, so it knows no names and has no type information.
class Subscription::Sink final : public Counted<IDispatch> {
 public:
  Sink(REFIID events, Handler handler)
      : Counted({IID_IUnknown, IID_IDispatch, events}),
        handler_(std::make_shared<Handler>(std::move(handler))) {}

  /// The source may keep the sink for a while.
  void silence() { handler_.reset(); }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    if (parameters == nullptr) return E_POINTER;
    const std::shared_ptr<Handler> handler = handler_;  // it may end its own subscription
    if (!handler) return S_OK;
    return guarded([&] { (*handler)(Event(id, *parameters)); });
  }

 private:
  std::shared_ptr<Handler> handler_;
};

Subscription::Subscription(const Ptr<IDispatch>& source, REFIID events, Handler handler) {
  const auto container = source.as<IConnectionPointContainer>(IID_IConnectionPointContainer);
  if (!container) raise(E_NOINTERFACE, "events");
  Ptr<IConnectionPoint> point;
  check(container->FindConnectionPoint(events, point.out()), "events");
  sink_ = Ptr<IDispatch>::taking(new Sink(events, std::move(handler)));
  check(point->Advise(sink_.get(), &cookie_), "events");
  point_ = std::move(point);
}

Subscription& Subscription::operator=(Subscription&& other) noexcept {
  end();
  point_ = std::move(other.point_);
  sink_ = std::move(other.sink_);
  cookie_ = std::exchange(other.cookie_, 0);
  return *this;
}

void Subscription::end() {
  if (sink_) static_cast<Sink*>(sink_.get())->silence();
  if (point_) point_->Unadvise(cookie_);
  point_ = {};
  sink_ = {};
}

}  // namespace windows::com
