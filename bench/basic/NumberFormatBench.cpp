#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "basic/numberformat/NumberFormat.h"

namespace {

/// Amounts in cents, as most sheets hold them, and results of calculations.
std::vector<double> values() {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> cents(-2'000'000, 8'000'000);
  std::uniform_real_distribution<double> results(-20'000.0, 80'000.0);
  std::vector<double> all;
  for (int i = 0; i < 4096; ++i) {
    all.push_back(i % 4 == 0 ? results(random) : static_cast<double>(cents(random)) / 100.0);
  }
  return all;
}

void formatNumbers(benchmark::State& state, const char* code) {
  const basic::NumberFormat format(code);
  const basic::Locale locale;
  std::vector<double> cells = values();
  // Dates are positive.
  if (format.isDateTime()) {
    for (double& cell : cells) cell = cell < 0.0 ? -cell : cell;
  }
  std::string text;
  for (auto _ : state) {
    for (const double cell : cells) {
      text.clear();
      basic::AppendFormatted(text, format, cell, locale);
      benchmark::DoNotOptimize(text.data());
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(cells.size()));
}
BENCHMARK_CAPTURE(formatNumbers, General, "General");
BENCHMARK_CAPTURE(formatNumbers, decimals, "0.00");
BENCHMARK_CAPTURE(formatNumbers, sections, "#,##0.00;[Red]-#,##0.00");
BENCHMARK_CAPTURE(formatNumbers, date, "yyyy-mm-dd");
BENCHMARK_CAPTURE(formatNumbers, dateTime, "d mmm yyyy h:mm:ss AM/PM");
BENCHMARK_CAPTURE(formatNumbers, fraction, "# ?\?/??");

void parse(benchmark::State& state) {
  for (auto _ : state) {
    basic::NumberFormat format(R"(_("$"* #,##0.00_);_("$"* \(#,##0.00\);_("$"* "-"??_);_(@_))");
    benchmark::DoNotOptimize(format);
  }
}
BENCHMARK(parse);

}  // namespace
