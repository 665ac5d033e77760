#pragma once

#include <functional>

namespace process {

/// Starts a thread that nobody joins; what it uses it owns. It holds up neither
/// its starter nor the program's end. Signals stay with the other threads, and one
/// of a broken socket reaches nobody. Throws std::system_error when the machine
/// gives no more threads.
void startThread(std::function<void()> work);

}  // namespace process
