#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The debug log, written only while DebugOn is set.
namespace LF2000::modDebug {

/// The kind of a debug line, which other texts call its level.
enum class DebugKind : std::int32_t { Event = 0, Variable = 1, Information = 2, Error = 3 };

inline bool DebugOn = false;
inline bool DebugLogStarted = false;
/// Bytes that this process has written to it since it was begun anew.
inline std::size_t DebugLogSize = 0;

/// Puts the module's state back to what it is when the add-in is loaded.
void Reset();

/// Appends one line: the kind's label, a blank, the text. `module` names the
/// caller; it is not written.
void WriteDebugLog(DebugKind kind, std::string_view module, std::string_view text);

/// The debug log's path.
[[nodiscard]] std::string DebugLogFile();

}  // namespace LF2000::modDebug
