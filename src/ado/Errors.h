#pragma once

#include <string>
#include <string_view>

// Failures in the words of ADO, with the numbers its reference gives them.

namespace ado {

/// How the description of failItemNotFound() begins.
inline constexpr std::string_view ItemNotFound =
    "Item cannot be found in the collection corresponding to the requested name or ordinal";

/// A field that is not there; `which` is its name or number.
[[noreturn]] void failItemNotFound(std::string_view which);
[[noreturn]] void failNoCurrentRecord();
[[noreturn]] void failClosed();
[[noreturn]] void failOpen();
[[noreturn]] void failNoConnection();
/// What takes its time in the background is not done yet.
[[noreturn]] void failStillExecuting();
/// Not in the state that the recordset is in.
[[noreturn]] void failContext();
/// Nothing that this recordset can do; `what` says why.
[[noreturn]] void failNotSupported(std::string_view what);
[[noreturn]] void failDuplicateField(std::string_view name);
[[noreturn]] void failTooLong(std::string_view field, std::size_t length, std::size_t limit);

}  // namespace ado
