#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "connections/TextFileReader.h"

// Reads any bytes as a text file and looks at every value: there is no filler
// left in one, it is well-formed and not too long.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const bool firstRowFieldNames = (data[0] & 1U) != 0;
  host::Bytes bytes{std::make_unique_for_overwrite<char[]>(size - 1), size - 1};
  std::copy(data + 1, data + size, bytes.data.get());
  try {
    const host::TextTable table =
        LF2000::ReadTextFile(std::move(bytes), firstRowFieldNames, [](std::string_view) {});
    if (table.columns().empty()) std::abort();
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
      if (!table.field(row, 0)) std::abort();
      for (std::size_t column = 0; column < table.columns().size(); ++column) {
        const auto value = table.field(row, column);
        if (value && (!basic::IsValidUtf8(*value) || basic::Len(*value) > 4000)) std::abort();
      }
    }
  } catch (const basic::Error&) {
    return 0;
  }
  return 0;
}
