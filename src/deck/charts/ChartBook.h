#pragma once

#include <memory>
#include <string>
#include <vector>

#include "deck/charts/ChartSpace.h"
#include "opc/Package.h"

namespace deck {

/// The workbook that is embedded with a chart (.xlsx, ECMA-376 part 1, 18): its
/// sheet and that sheet's table take the chart's data, everything else stays as
/// it is, byte for byte but for the order in which cells are calculated.
class ChartBook {
 public:
  /// `name` is what messages call it. Throws basic::Error with the reason when
  /// it cannot be read or has no place for the data.
  ChartBook(std::string bytes, std::string name, ChartBlock block);

  /// The name of the sheet that holds the data.
  [[nodiscard]] const std::string& sheet() const { return sheetName_; }
  /// The workbook with these data instead of the author's. To be called once.
  [[nodiscard]] std::string filled(const ChartData& data);

 private:
  /// A table on the sheet (18.5.1.2).
  struct Table {
    opc::Part* part;
    basic::Area area;
    bool holdsData;
  };

  void findSheet();
  void readTables();
  [[noreturn]] void refuse(const std::string& why) const;
  void fillTable(Table& table, const std::vector<std::string>& header, const basic::Area& area);
  void forgetCalculationOrder();

  std::string name_;
  ChartBlock block_;
  std::unique_ptr<opc::Package> package_;
  opc::Part* workbook_ = nullptr;
  std::string sheetName_;
  opc::Part* sheet_ = nullptr;
  std::vector<Table> tables_;
};

}  // namespace deck
