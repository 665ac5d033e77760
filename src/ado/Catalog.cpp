#include "ado/Catalog.h"

#include <variant>

#include "ado/Database.h"

namespace ado {

std::vector<TableInfo> listTables(std::string_view connectionString, const PathTranslator& translatePath) {
  Database database(targetOf(connectionString, translatePath));
  const ResultTable result = database.tables();
  const auto text = [&result](std::size_t row, std::size_t column) {
    const basic::Variant value = result.value(row, column);
    const auto* const found = std::get_if<std::string>(&value);
    return found == nullptr ? std::string() : *found;
  };
  std::vector<TableInfo> tables;
  for (std::size_t row = 0; row < result.rowCount(); ++row) {
    constexpr std::size_t Schema = 1;
    constexpr std::size_t Name = 2;
    constexpr std::size_t Type = 3;
    tables.push_back({text(row, Schema), text(row, Name), text(row, Type)});
  }
  return tables;
}

}  // namespace ado
