#include "basic/Error.h"

namespace basic {
namespace {

const char* standardText(RuntimeError error) {
  switch (error) {
    case RuntimeError::InvalidProcedureCall:
      return "Invalid procedure call or argument";
    case RuntimeError::Overflow:
      return "Overflow";
    case RuntimeError::SubscriptOutOfRange:
      return "Subscript out of range";
    case RuntimeError::TypeMismatch:
      return "Type mismatch";
    case RuntimeError::FileNotFound:
      return "File not found";
    case RuntimeError::PathNotFound:
      return "Path not found";
    case RuntimeError::ObjectVariableNotSet:
      return "Object variable or With block variable not set";
  }
  return "Application-defined or object-defined error";
}

}  // namespace

void Raise(RuntimeError error) {
  throw Error(static_cast<std::int32_t>(error), DefaultSource, standardText(error));
}

}  // namespace basic
