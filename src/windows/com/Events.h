#pragma once

#include <cstdint>
#include <functional>

#include "windows/com/Ptr.h"

namespace windows::com {

/// What an event brings: its number and its arguments.
class Event {
 public:
  Event(DISPID id, const DISPPARAMS& parameters) : id_(id), parameters_(&parameters) {}
  [[nodiscard]] DISPID id() const { return id_; }
  /// An argument by its place, from 0, in the order of its declaration; null for Nothing. Raises TypeMismatch
  /// where it is no object, and SubscriptOutOfRange where there is none.
  [[nodiscard]] Ptr<IDispatch> object(UINT place) const;
  [[nodiscard]] std::int32_t number(UINT place) const;

 private:
  [[nodiscard]] const VARIANT& argument(UINT place) const;

  DISPID id_;
  const DISPPARAMS* parameters_;
};

/// A subscription to an object's events (IConnectionPoint), which ends with it. What an event throws ends
/// with the event. Events that come while the handler is at work are handed to it as well.
class Subscription {
 public:
  using Handler = std::function<void(const Event&)>;

  Subscription() = default;
  /// Raises where the object has no such events.
  Subscription(const Ptr<IDispatch>& source, REFIID events, Handler handler);
  Subscription(const Subscription&) = delete;
  Subscription(Subscription&& other) noexcept { *this = std::move(other); }
  Subscription& operator=(const Subscription&) = delete;
  Subscription& operator=(Subscription&& other) noexcept;
  ~Subscription() { end(); }

  void end();

 private:
  class Sink;

  Ptr<IConnectionPoint> point_;
  Ptr<IDispatch> sink_;
  DWORD cookie_ = 0;
};

}  // namespace windows::com
