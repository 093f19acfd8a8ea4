// Times the rows on cache-resident, memory-bound and short arrays and prints the tables of
// docs/performance.md. Takes the flags of Google Benchmark; --benchmark_filter selects rows by name.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "bench/row.h"
#include "bench/row_checks.h"

namespace bench {
namespace {

constexpr int32_t kCacheResident = 4 << 10;
constexpr int32_t kMemoryBound = 8 << 20;
constexpr int32_t kShort = 16;

constexpr double kNoiseAllowance = 0.97;      // of the speed required on cache-resident arrays
constexpr double kMemoryAllowance = 1.05;     // of the time of the fastest way to move the same bytes
constexpr double kShortCallAllowance = 10.0;  // nanoseconds above the cheapest call

// Bytes that an array of `kMemoryBound` elements may take, also when it is the copy that moves the same
// bytes.
constexpr std::size_t kArrayBytes = std::size_t{kMemoryBound} * 32;

struct Candidate {
  std::string name;
  Call call;
  int32_t len;
};

struct Effort {
  int repetitions;
  double seconds_each;
};
constexpr Effort kCacheResidentEffort = {25, 0.001};
constexpr Effort kMemoryBoundEffort = {40, 0.0001};
constexpr Effort kShortEffort = {21, 0.0002};

// Keeps the nanoseconds a call of every repetition.
class Collector : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
      times_[run.run_name.function_name].push_back(run.cpu_accumulated_time * 1e9 /
                                                   static_cast<double>(run.iterations));
    }
  }

  double minimum(const std::string& name) const {
    const auto& times = times_.at(name);
    return *std::min_element(times.begin(), times.end());
  }

  double median(const std::string& name) const {
    std::vector<double> times = times_.at(name);
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
  }

 private:
  std::map<std::string, std::vector<double>> times_;
};

// Times the candidates with their repetitions interleaved, so that what disturbs the machine meets all alike.
Collector run(const Arrays& arrays, const std::vector<Candidate>& candidates, Effort effort) {
  for (const Candidate& candidate : candidates) {
    benchmark::RegisterBenchmark(candidate.name.c_str(),
                                 [&arrays, candidate](benchmark::State& state) {
                                   for (auto _ : state) {
                                     candidate.call(arrays, candidate.len);
                                     benchmark::ClobberMemory();
                                   }
                                 })
        ->Repetitions(effort.repetitions)
        ->MinTime(effort.seconds_each);
  }
  Collector collector;
  benchmark::RunSpecifiedBenchmarks(&collector, ".");
  benchmark::ClearRegisteredBenchmarks();
  return collector;
}

// The cheapest call that there is: a pointer and a length are tested, and the length fails.
void cheapest_call(const Arrays& arrays, int32_t) {
  ZIVKS_Zero_8u(static_cast<uint8_t*>(arrays.array(2)), 0);
}

void copy_bytes(const Arrays& arrays, int32_t bytes) {
  std::memcpy(arrays.array(2), arrays.array(0), static_cast<std::size_t>(bytes));
}

// Nanoseconds an element.
struct LongArrayTimes {
  double zivks;
  double plain;
  double standard;    // 0 without a standard routine
  double same_bytes;  // memcpy that moves as many bytes
};

LongArrayTimes time_long_arrays(const Arrays& arrays, const Row& row, int32_t len, Effort effort) {
  row.fill(arrays, len);
  std::vector<Candidate> candidates = {{"zivks", row.zivks, len},
                                       {"plain", row.plain, len},
                                       {"same_bytes", copy_bytes, len / 2 * row.bytes_per_element}};
  if (row.standard != nullptr) candidates.push_back({"standard", row.standard, len});
  const Collector times = run(arrays, candidates, effort);
  return {times.minimum("zivks") / len, times.minimum("plain") / len,
          row.standard != nullptr ? times.minimum("standard") / len : 0, times.minimum("same_bytes") / len};
}

struct ShortCall {
  double nanoseconds_above_cheapest = 0;
  int32_t len = 0;
};

ShortCall worst_short_call(const Arrays& arrays, const Row& row) {
  std::vector<Candidate> candidates = {{"cheapest", cheapest_call, 0}};
  for (int32_t len = 1; len <= kShort; ++len) candidates.push_back({std::to_string(len), row.zivks, len});
  const Collector times = run(arrays, candidates, kShortEffort);
  ShortCall worst;
  for (int32_t len = 1; len <= kShort; ++len) {
    const double above = times.median(std::to_string(len)) - times.median("cheapest");
    if (above > worst.nanoseconds_above_cheapest) worst = {above, len};
  }
  return worst;
}

std::string number(double value, int decimals) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

std::string marked(std::string figure, bool misses) { return misses ? figure + " !" : figure; }

std::string optional(double nanoseconds) { return nanoseconds == 0 ? "" : number(nanoseconds, 4); }

// Prints the row's line of the table, with a mark at what misses a requirement. Returns whether something
// does.
bool print_row(const Arrays& arrays, const Row& row) {
  const LongArrayTimes cache = time_long_arrays(arrays, row, kCacheResident, kCacheResidentEffort);
  const LongArrayTimes memory = time_long_arrays(arrays, row, kMemoryBound, kMemoryBoundEffort);
  const ShortCall short_call = worst_short_call(arrays, row);

  const double speedup = cache.plain / cache.zivks;
  const double required = row.requirement.speedup_x86_64;
  const double memory_share = memory.zivks / std::min(memory.plain, memory.same_bytes);
  const bool slow_in_cache = speedup < kNoiseAllowance * required;
  const bool slow_in_memory = memory_share > kMemoryAllowance;
  const bool slow_if_short = short_call.nanoseconds_above_cheapest > kShortCallAllowance;

  const std::string columns[] = {
      "`" + row.name() + "`",
      number(cache.zivks, 4),
      number(cache.plain, 4),
      marked(number(speedup, 2), slow_in_cache),
      number(required, 1),
      optional(cache.standard),
      number(memory.zivks, 3),
      number(memory.plain, 3),
      number(memory.same_bytes, 3),
      marked(number(memory_share, 2), slow_in_memory),
      optional(memory.standard),
      marked(number(short_call.nanoseconds_above_cheapest, 1) + " (" + std::to_string(short_call.len) + ")",
             slow_if_short)};
  for (const std::string& column : columns) std::printf("| %s ", column.c_str());
  std::puts("|");
  std::fflush(stdout);
  return slow_in_cache || slow_in_memory || slow_if_short;
}

std::string processor_name() {
  std::ifstream description("/proc/cpuinfo");
  for (std::string line; std::getline(description, line);) {
    if (line.rfind("model name", 0) == 0) return line.substr(line.find(':') + 2);
  }
  return "an unnamed processor";
}

void print_tables(const std::regex& selection) {
  const std::vector<Section> selected = sections(selection);
  if (selected.empty()) return;
  const Arrays arrays(kArrayBytes);
  int rows = 0;
  int misses = 0;
  std::printf("Processor: %s. Compiler: GCC %s.\n", processor_name().c_str(), __VERSION__);
  for (const Section& section : selected) {
    std::printf("\n### %s\n\n", section.title);
    std::puts(
        "| function | 4 Ki: library | plain loop | speed-up | required | standard routine "
        "| 8 Mi: library | plain loop | memcpy, same bytes | share | standard routine | short call (len) |");
    std::puts("|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|");
    for (const Row& row : section.rows) {
      ++rows;
      misses += print_row(arrays, row);
    }
  }
  std::printf("\n%d rows, %d of them with a figure that misses what is required (marked !).\n", rows, misses);
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  std::vector<char*> arguments(argv, argv + argc);
  char interleaving[] = "--benchmark_enable_random_interleaving=true";
  arguments.insert(arguments.begin() + 1, interleaving);
  arguments.push_back(nullptr);
  int count = argc + 1;
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  if (!bench::rows_are_sound()) return 1;
  bench::print_tables(std::regex(benchmark::GetBenchmarkFilter()));
  return 0;
}
