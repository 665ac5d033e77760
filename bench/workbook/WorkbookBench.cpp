// What reading ranges costs from opening the file to a table of texts, and the
// least it could cost: inflating the sheet and looking at every byte once.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "SampleBook.h"
#include "support/ZipFile.h"
#include "workbook/book/Parts.h"
#include "workbook/sheet/Factory.h"

namespace {

constexpr int Names = 5000;

class IdleLoop final : public host::Loop {
 public:
  std::unique_ptr<host::Timer> CreateTimer(std::function<void()>) override { return nullptr; }
  void DoEvents() override {}
};

class Sample {
 public:
  Sample(const std::string& name, int rows, int names)
      : path_(bench::writeSample(name, bench::sampleBook(bench::sampleSheet(rows, names), names))) {}
  ~Sample() { std::remove(path_.c_str()); }
  Sample(const Sample&) = delete;
  Sample& operator=(const Sample&) = delete;
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

/// The texts of a range, as a recordset is built from them.
std::vector<std::vector<std::string>> rowsOf(const std::string& path, std::string_view range) {
  IdleLoop loop;
  workbook::Factory factory(loop, [](std::string_view p) { return std::string(p); });
  const auto book = factory.CreateApplication()->Workbooks()->Open(path, 3, true);
  std::vector<std::vector<std::string>> rows;
  std::int32_t row = 0;
  book->Sheets()->Item("data")->Range(range)->ForEach([&](const Excel::Cell& cell) {
    if (cell.Row() != row) {
      row = cell.Row();
      rows.emplace_back().reserve(10);
    }
    rows.back().push_back(cell.Text());
    return true;
  });
  return rows;
}

void run(benchmark::State& state, const std::string& path, std::string_view range, std::size_t rows) {
  for (auto _ : state) {
    if (rowsOf(path, range).size() != rows) state.SkipWithError("rows are missing");
  }
}

void readRange20000x10(benchmark::State& state) {
  const Sample sample("lumenfold-bench-20000.xlsx", 20000, Names);
  run(state, sample.path(), "A1:J20000", 20000);
}
BENCHMARK(readRange20000x10)->Unit(benchmark::kMillisecond);

void readTopOfAMillionCells(benchmark::State& state) {
  const Sample sample("lumenfold-bench-million.xlsx", 100000, 50000);
  run(state, sample.path(), "A1:I10", 10);
}
BENCHMARK(readTopOfAMillionCells)->Unit(benchmark::kMillisecond);

void readAMillionCells(benchmark::State& state) {
  const Sample sample("lumenfold-bench-million.xlsx", 100000, 50000);
  run(state, sample.path(), "A:J", 100000);
}
BENCHMARK(readAMillionCells)->Unit(benchmark::kMillisecond);

void inflateAndPass20000x10(benchmark::State& state) {
  const std::string bytes = bench::sampleBook(bench::sampleSheet(20000, Names), Names);
  for (auto _ : state) {
    const workbook::Parts parts(bytes, "sample");
    workbook::PartStream stream = parts.open("xl/worksheets/sheet1.xml");
    std::vector<char> block(64U << 10U);
    std::ptrdiff_t tags = 0;
    while (const std::size_t got = stream.read(block.data(), block.size())) {
      tags += std::count(block.data(), block.data() + got, '<');
    }
    benchmark::DoNotOptimize(tags);
  }
}
BENCHMARK(inflateAndPass20000x10)->Unit(benchmark::kMillisecond);

}  // namespace
