#pragma once

#include <functional>
#include <new>
#include <utility>
#include <vector>

#include "windows/com/WindowsApi.h"

namespace windows::com {

/// Lets no exception out. Success is all that the caller hears.
template <typename Body>
HRESULT contained(Body&& body) noexcept {
  try {
    body();
  } catch (...) {  // NOLINT(bugprone-empty-catch): whoever can say something of a failure has done so
  }
  return S_OK;
}

/// The answer of a body that has one of its own; lets no exception out either.
template <typename Body>
HRESULT answered(Body&& body) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

/// A call from outside that is under way in this module: an entry point, an event, a timer. They may lie on
/// one another, as handlers wait by letting others run.
class Entrance {
 public:
  Entrance() { ++depth_; }
  Entrance(const Entrance&) = delete;
  Entrance& operator=(const Entrance&) = delete;
  ~Entrance() {
    if (--depth_ > 0) return;
    for (const auto& action : std::exchange(afterwards_, {})) contained(action);
  }

  /// How many lie on one another now.
  [[nodiscard]] static int depth() { return depth_; }
  /// Has something done when the outermost call ends, in the order in which it was asked for. It must not
  /// throw.
  static void afterwards(std::function<void()> action) { afterwards_.push_back(std::move(action)); }

 private:
  static inline int depth_ = 0;
  static inline std::vector<std::function<void()>> afterwards_;
};

/// Does what a call from outside asks for.
template <typename Body>
HRESULT guarded(Body&& body) noexcept {
  const Entrance entrance;
  return contained(std::forward<Body>(body));
}

}  // namespace windows::com
