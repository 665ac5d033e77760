#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace basic {

/// The one exception type of the program.
///
/// `number` follows the numbering of the automation world: run-time errors of
/// the host language are small positive numbers (see RuntimeError), errors that
/// the system raises itself are modErrors::ErrorBase + n, and adapters use
/// AdapterError. `source` names the raising component; `description` is a
/// sentence that a person can act on.
class Error : public std::exception {
 public:
  Error(std::int32_t theNumber, std::string theSource, std::string theDescription)
      : number(theNumber), source(std::move(theSource)), description(std::move(theDescription)) {}

  [[nodiscard]] const char* what() const noexcept override { return description.c_str(); }

  std::int32_t number;
  std::string source;
  std::string description;
};

/// Numbers and texts of the host language's own run-time errors that the system
/// can meet.
enum class RuntimeError : std::int32_t {
  InvalidProcedureCall = 5,
  Overflow = 6,
  SubscriptOutOfRange = 9,
  TypeMismatch = 13,
  FileNotFound = 53,
  PathNotFound = 76,
  ObjectVariableNotSet = 91,
};

/// The number adapters give to failures that have no number of their own
/// (automation's E_FAIL).
inline constexpr std::int32_t AdapterError = static_cast<std::int32_t>(0x80004005U);

/// The source text of errors raised without an explicit source: the project name.
inline constexpr const char* DefaultSource = "LF2000";

/// Raises a run-time error with its standard text ("Type mismatch", ...).
[[noreturn]] void Raise(RuntimeError error);

}  // namespace basic
