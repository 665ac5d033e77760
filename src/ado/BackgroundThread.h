#pragma once

#include <functional>

namespace ado {

/// Starts a thread that nobody joins; what it uses it owns. Signals stay with
/// the other threads, and one of a broken socket reaches nobody. When the
/// machine gives no more threads, an error.
void startThread(std::function<void()> work);

}  // namespace ado
