#pragma once

#include "ado/ResultTable.h"

namespace ado {

struct Dialect;
class StatementSlot;

/// Reads the first result with columns of a statement that was executed. Errors
/// carry the driver's words alone. Stops early, with any error, when the slot
/// says so.
[[nodiscard]] ResultTable readResult(void* statement, const Dialect& dialect, const StatementSlot& slot);

}  // namespace ado
