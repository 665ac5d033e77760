#pragma once

#include <string>

namespace platform {

/// Starts a program found by PATH with one argument, in a session of its own,
/// without this program's files and input; nobody waits for it. False when it
/// could not be started.
bool startDetached(const std::string& program, const std::string& argument);

}  // namespace platform
