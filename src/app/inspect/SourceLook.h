#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "connections/clsConnection.h"

namespace app {

/// What was found when a connection's source was opened.
struct SourceLook {
  /// In their order.
  std::vector<std::string> columns;
  /// Those that there is something to link to; see offeredColumns().
  std::vector<std::string> offered;
  std::int64_t rowCount = 0;
  /// What an author should know of it; see remarksOn().
  std::vector<std::string> remarks;
  /// Why it cannot be read, on one line; empty when it can.
  std::string failure;
  /// How long opening and reading took.
  double milliseconds = 0;

  [[nodiscard]] bool isReadable() const { return failure.empty(); }
};

/// Opens the connection, which holds its data afterwards. The loop may run meanwhile.
SourceLook lookInto(LF2000::clsConnection& connection);

/// "2 rows, 3 columns: Time, Train, To"
std::string sizeOf(const SourceLook& look);

}  // namespace app
