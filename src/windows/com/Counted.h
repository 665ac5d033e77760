#pragma once

#include <algorithm>
#include <atomic>
#include <utility>
#include <vector>

#include "windows/com/WindowsApi.h"

namespace windows::com {

/// Objects of this module that somebody may still hold, and locks on it: while there are any, it stays
/// loaded.
inline std::atomic<long> liveObjects = 0;

/// An object of our own with one interface (and those that it is derived from): it lives as long as somebody
/// refers to it. Born with one reference, its maker's.
template <typename Interface>
class Counted : public Interface {
 public:
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (std::find(interfaces_.begin(), interfaces_.end(), iid) == interfaces_.end()) return E_NOINTERFACE;
    *object = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  /// With all interfaces that it answers to, IUnknown among them.
  explicit Counted(std::vector<IID> interfaces) : interfaces_(std::move(interfaces)) { ++liveObjects; }
  virtual ~Counted() { --liveObjects; }

 private:
  std::vector<IID> interfaces_;
  std::atomic<ULONG> references_ = 1;
};

}  // namespace windows::com
