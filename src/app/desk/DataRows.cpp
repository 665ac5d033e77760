#include "app/desk/DataRows.h"

#include <algorithm>
#include <string>
#include <vector>

namespace app {

using json::Json;

Json dataRows(LF2000::clsConnection& connection, std::int64_t from, std::int64_t count) {
  constexpr std::int64_t most = 500;
  constexpr std::int16_t asValue = 1;
  Json rows = Json::array();
  std::vector<std::string> columns;
  std::int64_t total = 0;
  from = std::max<std::int64_t>(from, 1);
  if (connection.RecordsetReady()) {
    columns = connection.Columns();
    columns.erase(columns.begin());
    total = static_cast<std::int64_t>(connection.RecordCount());
    const std::int64_t end = std::min(total, from - 1 + std::clamp<std::int64_t>(count, 0, most));
    for (std::int64_t row = from; row <= end; ++row) {
      Json cells = Json::array();
      for (const std::string& column : columns) {
        bool noValue = false;
        cells.push_back(connection.GetValueDatabase(static_cast<double>(row), column, asValue,
                                                    /*showMarkers=*/false, noValue));
      }
      rows.push_back(std::move(cells));
    }
  }
  return {{"columns", columns}, {"rows", std::move(rows)}, {"first", from}, {"total", total}};
}

}  // namespace app
