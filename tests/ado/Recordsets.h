#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ado/Factory.h"
#include "basic/Conversion.h"
#include "support/ErrorOf.h"

namespace ado::test {

using support::errorOf;

using Rows = std::vector<std::vector<const char*>>;  // null for a missing field

inline host::TextTable tableOf(std::vector<std::string> columns, const Rows& rows) {
  std::string text;
  for (const auto& row : rows) {
    for (const char* field : row) {
      if (field != nullptr) text += std::string(field) + "\t";
    }
  }
  host::Bytes bytes{std::make_unique<char[]>(text.size()), text.size()};
  text.copy(bytes.data.get(), text.size());
  host::TextTableBuilder builder(std::move(columns), std::move(bytes));
  std::size_t at = 0;
  for (const auto& row : rows) {
    builder.BeginRow(at);
    for (const char* field : row) {
      if (field == nullptr) continue;
      at += std::string(field).size();
      builder.AddField(at++);
    }
    builder.EndRow();
  }
  return builder.Finish();
}

inline std::shared_ptr<ADODB::Recordset> overTable(const Rows& rows) {
  auto recordset = Factory().CreateRecordset();
  recordset->Open(tableOf({"Name", "Price"}, rows));
  return recordset;
}

/// The same records, added one by one.
inline std::shared_ptr<ADODB::Recordset> inMemory(const Rows& rows) {
  auto recordset = Factory().CreateRecordset();
  recordset->Fields().Append("Name", ADODB::adVarChar, 10);
  recordset->Fields().Append("Price", ADODB::adVarChar, 10);
  recordset->Open();
  for (const auto& row : rows) {
    recordset->AddNew();
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (row[i] != nullptr) {
        recordset->Fields().Item(static_cast<std::int32_t>(i)).Value(std::string(row[i]));
      }
    }
    recordset->Update();
  }
  if (!rows.empty()) recordset->MoveFirst();
  return recordset;
}

inline std::string value(ADODB::Recordset& recordset, std::string_view field) {
  const basic::Variant variant = recordset.Fields().Item(field).Value();
  return basic::IsNull(variant) ? "Null" : std::get<std::string>(variant);
}

inline constexpr const char* NoCurrentRecord =
    "Either BOF or EOF is True, or the current record has been deleted. Requested operation requires a "
    "current record.";

}  // namespace ado::test
