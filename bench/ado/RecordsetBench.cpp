#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "ado/Factory.h"

namespace {

constexpr std::int32_t Rows = 100'000;
constexpr std::int32_t Columns = 10;

host::TextTable table() {
  std::vector<std::string> names;
  for (std::int32_t i = 0; i < Columns; ++i) names.push_back("Column name " + std::to_string(i));
  const std::size_t fields = std::size_t{Rows} * Columns;
  host::Bytes bytes{std::make_unique<char[]>(fields * 9), fields * 9};
  std::fill_n(bytes.data.get(), bytes.size, 'x');
  host::TextTableBuilder builder(std::move(names), std::move(bytes));
  std::size_t at = 0;
  for (std::int32_t row = 0; row < Rows; ++row) {
    builder.BeginRow(at);
    for (std::int32_t i = 0; i < Columns; ++i, at += 9) builder.AddField(at + 8);
    builder.EndRow();
  }
  return builder.Finish();
}

/// As the system reads a value: go to the row when it is not the current one,
/// find the field by its name.
void readValues(benchmark::State& state) {
  const auto recordset = ado::Factory().CreateRecordset();
  recordset->Open(table());
  const auto step = state.range(0);
  std::int64_t row = 1;
  for (auto _ : state) {
    if (recordset->AbsolutePosition() != row) {
      recordset->MoveFirst();
      recordset->Move(static_cast<std::int32_t>(row - 1));
    }
    benchmark::DoNotOptimize(recordset->Fields().Item("Column name 7").Value());
    row = (row + step - 1) % Rows + 1;
  }
}
BENCHMARK(readValues)->ArgName("rowStep")->Arg(0)->Arg(1)->Arg(7919);

void addRecords(benchmark::State& state) {
  for (auto _ : state) {
    const auto recordset = ado::Factory().CreateRecordset();
    for (std::int32_t i = 0; i < Columns; ++i) {
      recordset->Fields().Append("Column name " + std::to_string(i), ADODB::adVarChar, 4000);
    }
    recordset->Open();
    for (int row = 0; row < 1000; ++row) {
      recordset->AddNew();
      for (std::int32_t i = 0; i < Columns; ++i) recordset->Fields().Item(i).Value(std::string("xxxxxxxx"));
      recordset->Update();
    }
  }
  state.SetItemsProcessed(state.iterations() * 1000 * Columns);
}
BENCHMARK(addRecords);

}  // namespace
