#pragma once

#include <utility>

#include "windows/com/WindowsApi.h"

namespace windows::com {

/// Set when the process ends: objects are gone then, whoever holds them.
inline bool isProcessEnding = false;

/// A reference to a COM object, given back when it goes.
template <typename T>
class Ptr {
 public:
  Ptr() = default;
  Ptr(const Ptr& other) : object_(other.object_) {
    if (object_ != nullptr) object_->AddRef();
  }
  Ptr(Ptr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ptr& operator=(Ptr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ptr() {
    if (object_ != nullptr && !isProcessEnding) object_->Release();
  }

  /// Takes over a reference that the caller has.
  [[nodiscard]] static Ptr taking(T* object) {
    Ptr ptr;
    ptr.object_ = object;
    return ptr;
  }
  /// Adds a reference to an object that somebody else keeps.
  [[nodiscard]] static Ptr sharing(T* object) {
    if (object != nullptr) object->AddRef();
    return taking(object);
  }

  [[nodiscard]] T* get() const { return object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  friend bool operator==(const Ptr&, const Ptr&) = default;

  /// Where a function puts the reference that it hands out; what was held goes.
  [[nodiscard]] T** out() {
    *this = {};
    return &object_;
  }
  /// Hands the reference on.
  [[nodiscard]] T* release() { return std::exchange(object_, nullptr); }

  /// The object's other interface; null where it has none.
  template <typename U>
  [[nodiscard]] Ptr<U> as(REFIID iid) const {
    Ptr<U> other;
    if (object_ != nullptr) {
      object_->QueryInterface(iid, reinterpret_cast<void**>(other.out()));
    }
    return other;
  }

 private:
  T* object_ = nullptr;
};

/// What tells one object from another, whichever of its interfaces is at hand; null where it cannot be told.
template <typename T>
[[nodiscard]] Ptr<IUnknown> identity(const Ptr<T>& object) {
  return object.template as<IUnknown>(IID_IUnknown);
}

}  // namespace windows::com
