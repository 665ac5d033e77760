#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <iostream>
#include <memory>
#include <string>

#include "SampleFile.h"
#include "ado/Factory.h"
#include "basic/Strings.h"
#include "connections/TextFileReader.h"
#include "platform/Files.h"

// From a file to a recordset, the stages of it, and beside them what the
// machine can do at all: copying the file in memory and finding its line ends.

namespace {

std::string tabbed() { return sampleFile("tabbed.txt", '\t', ""); }
std::string quoted() { return sampleFile("quoted.csv", ',', "\""); }

const platform::Settings& settings() {
  static const platform::Settings none("/nonexistent");
  return none;
}

host::Bytes read(const std::string& path) {
  return platform::Files(settings()).OpenForInput(path)->ReadAll();
}

std::shared_ptr<ADODB::Recordset> recordsetOf(const std::string& path) {
  auto recordset = ado::Factory().CreateRecordset();
  recordset->Open(LF2000::ReadTextFile(read(path), true, {}));
  return recordset;
}

void countBytes(benchmark::State& state, std::size_t perIteration) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(perIteration));
}

void fileToRecordset(benchmark::State& state, std::string (*file)()) {
  const std::string path = file();
  for (auto _ : state) benchmark::DoNotOptimize(recordsetOf(path)->RecordCount());
  countBytes(state, std::filesystem::file_size(path));
}
BENCHMARK_CAPTURE(fileToRecordset, tabbed, &tabbed)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fileToRecordset, quoted, &quoted)->Unit(benchmark::kMillisecond);

void stageRead(benchmark::State& state) {
  const std::string path = tabbed();
  for (auto _ : state) benchmark::DoNotOptimize(read(path).data.get());
  countBytes(state, std::filesystem::file_size(path));
}
BENCHMARK(stageRead)->Unit(benchmark::kMillisecond);

void stageValidate(benchmark::State& state) {
  const host::Bytes bytes = read(tabbed());
  for (auto _ : state) benchmark::DoNotOptimize(basic::IsValidUtf8({bytes.data.get(), bytes.size}));
  countBytes(state, bytes.size);
}
BENCHMARK(stageValidate)->Unit(benchmark::kMillisecond);

void limitCopy(benchmark::State& state) {
  const host::Bytes bytes = read(tabbed());
  const auto copy = std::make_unique<char[]>(bytes.size);
  for (auto _ : state) {
    std::memcpy(copy.get(), bytes.data.get(), bytes.size);
    benchmark::ClobberMemory();
  }
  countBytes(state, bytes.size);
}
BENCHMARK(limitCopy)->Unit(benchmark::kMillisecond);

void limitFindLineEnds(benchmark::State& state) {
  const host::Bytes bytes = read(tabbed());
  for (auto _ : state) {
    std::size_t lines = 0;
    const char* const end = bytes.data.get() + bytes.size;
    for (const char* at = bytes.data.get(); at != end; ++lines) {
      const auto* found = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
      at = found == nullptr ? end : found + 1;
    }
    benchmark::DoNotOptimize(lines);
  }
  countBytes(state, bytes.size);
}
BENCHMARK(limitFindLineEnds)->Unit(benchmark::kMillisecond);

/// Every value once, row by row, the way the system asks for them.
void readValues(benchmark::State& state, std::string (*file)()) {
  const auto recordset = recordsetOf(file());
  const std::int64_t rows = recordset->RecordCount();
  std::int64_t row = 1;
  for (auto _ : state) {
    if (recordset->AbsolutePosition() != row) {
      recordset->MoveFirst();
      recordset->Move(static_cast<std::int32_t>(row - 1));
    }
    benchmark::DoNotOptimize(recordset->Fields().Item("Column7").Value());
    row = row == rows ? 1 : row + 1;
  }
}
BENCHMARK_CAPTURE(readValues, tabbed, &tabbed);
BENCHMARK_CAPTURE(readValues, quoted, &quoted);

/// The peak of a process that does nothing but read the file.
void printPeak(const char* name, const std::string& path) {
  const pid_t child = fork();
  if (child == 0) {
    const bool read = recordsetOf(path)->RecordCount() == 1'000'000;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const double peak = static_cast<double>(usage.ru_maxrss) * 1024;
    const auto size = static_cast<double>(std::filesystem::file_size(path));
    std::cout << name << ": file " << size / 1e6 << " MB, peak of the process " << peak / 1e6 << " MB, "
              << peak / size << " times the file\n"
              << std::flush;
    _exit(read ? 0 : 1);
  }
  int status = 1;
  waitpid(child, &status, 0);
  if (status != 0) std::cout << name << ": failed\n";
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  for (const auto file : {&tabbed, &quoted}) {
    // The file is made by another process too: memory that was used stays counted.
    if (fork() == 0) {
      (void)file();
      _exit(0);
    }
    int status = 0;
    wait(&status);
  }
  printPeak("tabbed", tabbed());
  printPeak("quoted", quoted());
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
