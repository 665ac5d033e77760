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

std::size_t Records::count() const {
  if (const auto* values = std::get_if<Values>(&kept_)) return values->size();
  if (const auto* table = std::get_if<host::TextTable>(&kept_)) return table->rowCount();
  return std::get<ResultTable>(kept_).rowCount();
}

basic::Variant Records::value(std::size_t record, std::size_t field) const {
  if (const auto* values = std::get_if<Values>(&kept_)) return (*values)[record][field];
  if (const auto* table = std::get_if<host::TextTable>(&kept_)) return fieldOf(*table, record, field);
  return std::get<ResultTable>(kept_).value(record, field);
}

void Records::append(Record record) { values().push_back(std::move(record)); }

void Records::replace(std::size_t index, Record record) { values()[index] = std::move(record); }

void Records::erase(std::size_t index) {
  Values& all = values();
  all.erase(all.begin() + static_cast<std::ptrdiff_t>(index));
}

Records::Values& Records::values() {
  if (auto* values = std::get_if<Values>(&kept_)) return *values;
  const auto* const text = std::get_if<host::TextTable>(&kept_);
  const std::size_t fields =
      text != nullptr ? text->columns().size() : std::get<ResultTable>(kept_).columns().size();
  Values all(count());
  for (std::size_t i = 0; i < all.size(); ++i) {
    all[i].reserve(fields);
    for (std::size_t field = 0; field < fields; ++field) all[i].push_back(value(i, field));
  }
  return kept_.emplace<Values>(std::move(all));
}

}  // namespace ado
