#include "ado/Errors.h"

#include <cstdint>

#include "basic/Error.h"

namespace ado {
namespace {

enum Number : std::int32_t {
  adErrNoCurrentRecord = 3021,
  adErrIllegalOperation = 3219,
  adErrFeatureNotAvailable = 3251,
  adErrItemNotFound = 3265,
  adErrObjectInCollection = 3367,
  adErrObjectClosed = 3704,
  adErrObjectOpen = 3705,
  adErrInvalidConnection = 3709,
  adErrStillExecuting = 3711,
};

/// A value that its field cannot take: DB_E_ERRORSOCCURRED.
constexpr auto ErrorsOccurred = static_cast<std::int32_t>(0x80040E21U);

[[noreturn]] void fail(std::int32_t number, std::string description) {
  throw basic::Error(number, "ADODB.Recordset", std::move(description));
}

std::string quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

}  // namespace

void failItemNotFound(std::string_view which) {
  fail(adErrItemNotFound, std::string(ItemNotFound) + ": " + quoted(which) + ".");
}

void failNoCurrentRecord() {
  fail(adErrNoCurrentRecord,
       "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a "
       "current record.");
}

void failClosed() { fail(adErrObjectClosed, "Operation is not allowed when the object is closed."); }

void failOpen() { fail(adErrObjectOpen, "Operation is not allowed when the object is open."); }

void failNoConnection() {
  fail(adErrInvalidConnection,
       "The connection cannot be used to perform this operation. It is either closed or invalid in this "
       "context.");
}

void failStillExecuting() {
  fail(adErrStillExecuting, "Operation cannot be performed while executing asynchronously.");
}

void failContext() { fail(adErrIllegalOperation, "Operation is not allowed in this context."); }

void failNotSupported(std::string_view what) {
  fail(adErrFeatureNotAvailable,
       "Object or provider is not capable of performing requested operation: " + std::string(what) + ".");
}

void failDuplicateField(std::string_view name) {
  fail(adErrObjectInCollection, "Object is already in collection. Cannot append: " + quoted(name) + ".");
}

void failTooLong(std::string_view field, std::size_t length, std::size_t limit) {
  fail(ErrorsOccurred, "Multiple-step operation generated errors. Check each status value: field " +
                           quoted(field) + " holds at most " + std::to_string(limit) +
                           " characters, the value has " + std::to_string(length) + ".");
}

}  // namespace ado
