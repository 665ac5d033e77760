#include "ado/Records.h"

#include <string>
#include <utility>

namespace ado {
namespace {

basic::Variant fieldOf(const host::TextTable& table, std::size_t record, std::size_t field) {
  const auto text = table.field(record, field);
  if (!text) return basic::Null{};
  return basic::Variant(std::in_place_type<std::string>, *text);
}

}  // namespace

basic::Variant Records::value(std::size_t record, std::size_t field) const {
  return table_ ? fieldOf(*table_, record, field) : records_[record][field];
}

void Records::append(Record record) {
  makeValues();
  records_.push_back(std::move(record));
}

void Records::replace(std::size_t index, Record record) {
  makeValues();
  records_[index] = std::move(record);
}

void Records::erase(std::size_t index) {
  makeValues();
  records_.erase(records_.begin() + static_cast<std::ptrdiff_t>(index));
}

void Records::makeValues() {
  if (!table_) return;
  const std::size_t fields = table_->columns().size();
  records_.resize(table_->rowCount());
  for (std::size_t i = 0; i < records_.size(); ++i) {
    records_[i].reserve(fields);
    for (std::size_t field = 0; field < fields; ++field) records_[i].push_back(fieldOf(*table_, i, field));
  }
  table_.reset();
}

}  // namespace ado
