#pragma once

#include <cstddef>
#include <variant>
#include <vector>

#include "ado/ResultTable.h"
#include "basic/Variant.h"
#include "host/text_table.h"

namespace ado {

using Record = std::vector<basic::Variant>;

/// The records behind a recordset: those of a table of text or of a query's
/// result where they lie, until the first change makes records of values of
/// them. Counted from 0.
class Records {
 public:
  Records() = default;
  explicit Records(host::TextTable table) : kept_(std::move(table)) {}
  explicit Records(ResultTable table) : kept_(std::move(table)) {}

  [[nodiscard]] std::size_t count() const;
  [[nodiscard]] basic::Variant value(std::size_t record, std::size_t field) const;

  void append(Record record);
  void replace(std::size_t index, Record record);
  void erase(std::size_t index);

 private:
  using Values = std::vector<Record>;
  /// As values, which can be changed.
  [[nodiscard]] Values& values();

  std::variant<Values, host::TextTable, ResultTable> kept_;
};

}  // namespace ado
