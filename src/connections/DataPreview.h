#pragma once

#include <cstdint>
#include <memory>

#include "host/adodb.h"

namespace LF2000 {

/// What an author lets shapes show in place of the data, to see how slides take it.
enum class DataPreview : std::uint8_t {
  /// The data themselves.
  AsTheyAre,
  NoRows,
  /// In every row the longest text of each column, by the number of its characters.
  LongestTexts
};

/// A recordset in memory with the columns of the data and other rows in them. The data must be open; which of
/// their records is the current one may be another afterwards. AsTheyAre has no stand-in.
[[nodiscard]] std::shared_ptr<ADODB::Recordset> StandInFor(ADODB::Recordset& data, DataPreview preview);

}  // namespace LF2000
