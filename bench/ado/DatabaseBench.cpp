#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include "SqliteDatabase.h"
#include "ado/Factory.h"
#include "ado/databases/Servers.h"

namespace {

template <typename Object>
void waitUntilOpen(Object& object) {
  while (object.State() != ADODB::adStateOpen) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

const bench::SqliteDatabase& database(std::int64_t rows) {
  static std::unique_ptr<bench::SqliteDatabase> kept;
  static std::int64_t keptRows = 0;
  if (keptRows != rows) {
    kept = std::make_unique<bench::SqliteDatabase>(rows);
    keptRows = rows;
  }
  return *kept;
}

void bareLoop(benchmark::State& state) {
  const bench::SqliteDatabase& file = database(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(file.bareLoop());
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void openOver(benchmark::State& state, const std::string& connectionString) {
  for (auto _ : state) {
    ado::Factory factory;
    const auto connection = factory.CreateConnection();
    connection->ConnectionString(connectionString);
    connection->Open("", "", ADODB::adOptionUnspecified);
    waitUntilOpen(*connection);
    const auto recordset = factory.CreateRecordset();
    recordset->ActiveConnection(connection);
    recordset->Open(bench::SqliteDatabase::Query, ADODB::adOpenUnspecified, ADODB::adLockUnspecified,
                    ADODB::adAsyncExecute);
    waitUntilOpen(*recordset);
    recordset->ActiveConnection(nullptr);
    connection->Close();
    if (recordset->RecordCount() != state.range(0)) throw std::runtime_error("records are missing");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  state.counters["peakMB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

void openRecordset(benchmark::State& state) {
  openOver(state, "Provider=SQLite;Data Source=" + database(state.range(0)).file());
}

/// The same rows of a server of its own.
void openPostgres(benchmark::State& state) {
  ado::test::TestServer& server = ado::test::postgres();
  server.execute("DROP TABLE IF EXISTS Stock");
  std::string columns;
  for (int i = 0; i < 10; ++i) {
    const std::string number = std::to_string(i);
    columns += (i == 0 ? "" : ", ") + ("('value " + number + " of row ' || x)::varchar(40) AS c" + number);
  }
  server.execute("CREATE TABLE Stock AS SELECT " + columns + " FROM generate_series(1, " +
                 std::to_string(state.range(0)) + ") AS x");
  openOver(state, server.connectionString() + ";Command Timeout=0");
}

constexpr std::int64_t Small = 100'000;
constexpr std::int64_t Large = 1'000'000;
BENCHMARK(bareLoop)->Arg(Small)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(openRecordset)->Arg(Small)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(openPostgres)->Arg(Small)->Arg(Large)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(bareLoop)->Arg(Large)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(openRecordset)->Arg(Large)->MeasureProcessCPUTime()->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
