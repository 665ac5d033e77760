#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "basic/Variant.h"
#include "host/text_table.h"

namespace ado {

using Record = std::vector<basic::Variant>;

/// The records behind a recordset: those of a table of text where they lie,
/// until the first change makes records of values of them. Counted from 0.
class Records {
 public:
  Records() = default;
  explicit Records(host::TextTable table) : table_(std::move(table)) {}

  [[nodiscard]] std::size_t count() const { return table_ ? table_->rowCount() : records_.size(); }
  [[nodiscard]] basic::Variant value(std::size_t record, std::size_t field) const;

  void append(Record record);
  void replace(std::size_t index, Record record);
  void erase(std::size_t index);

 private:
  void makeValues();

  std::optional<host::TextTable> table_;
  std::vector<Record> records_;
};

}  // namespace ado
