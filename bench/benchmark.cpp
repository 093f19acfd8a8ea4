// Times the rows on cache-resident, memory-bound and short arrays and prints a line for each, tab-separated.
//
//   zivks_benchmark [REGEX]           the rows against plain loops whose name REGEX is found in
//   zivks_benchmark --peers [REGEX]   those against other libraries
//   zivks_benchmark --check           times nothing, and fails unless all rows are sound
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <limits>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "bench/peers/peers.h"
#include "bench/processor_name.h"
#include "bench/row.h"
#include "bench/row_checks.h"

namespace bench {
namespace {

struct Candidate {
  std::string name;
  Call call;
  Call prepare;
  std::vector<Arrays> places;  // which the calls take in turn
  int32_t len;
};

struct Effort {
  int repetitions;
  double seconds_each;
};
constexpr Effort kCacheResidentEffort = {25, 0.001};
constexpr Effort kMemoryBoundEffort = {25, 0.0001};
constexpr Effort kShortEffort = {21, 0.0002};

// What takes longer an element is not bound by memory.
constexpr double kMemoryBoundNanoseconds = 2;

// Keeps the nanoseconds a call of the fastest repetition.
class Fastest : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
      const bool by_hand = run.run_name.time_type == "manual_time";
      const double seconds = by_hand ? run.real_accumulated_time : run.cpu_accumulated_time;
      auto [best, is_new] = times_.try_emplace(run.run_name.function_name, kNever);
      best->second = std::min(best->second, seconds * 1e9 / static_cast<double>(run.iterations));
    }
  }

  double operator[](const std::string& name) const { return times_.at(name); }

 private:
  static constexpr double kNever = std::numeric_limits<double>::infinity();
  std::map<std::string, double> times_;
};

void time_calls(benchmark::State& state, const Candidate& candidate) {
  std::size_t turn = 0;
  for (auto _ : state) {
    candidate.call(candidate.places[turn], candidate.len);
    if (++turn == candidate.places.size()) turn = 0;
    benchmark::ClobberMemory();
  }
}

void time_prepared_calls(benchmark::State& state, const Candidate& candidate) {
  using Clock = std::chrono::steady_clock;
  for (auto _ : state) {
    candidate.prepare(candidate.places[0], candidate.len);
    benchmark::ClobberMemory();
    const auto start = Clock::now();
    candidate.call(candidate.places[0], candidate.len);
    benchmark::ClobberMemory();
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
  }
}

// As many as take the given time. They are told from a single call, the fastest of a few: what Google Benchmark
// tries out once for all repetitions is a matter of luck on a busy machine.
int64_t iterations(const Candidate& candidate, double seconds) {
  using Clock = std::chrono::steady_clock;
  double fastest = seconds;
  for (int i = 0; i < 4; ++i) {
    if (candidate.prepare != nullptr) candidate.prepare(candidate.places[0], candidate.len);
    const auto start = Clock::now();
    candidate.call(candidate.places[0], candidate.len);
    fastest = std::min(fastest, std::chrono::duration<double>(Clock::now() - start).count());
  }
  return static_cast<int64_t>(seconds / fastest);
}

// Times the candidates with their repetitions interleaved, so that what disturbs the machine meets all alike.
Fastest run(const std::vector<Candidate>& candidates, Effort effort) {
  for (const Candidate& candidate : candidates) {
    const bool prepared = candidate.prepare != nullptr;
    auto* const timing = benchmark::RegisterBenchmark(candidate.name.c_str(),
                                                      prepared ? time_prepared_calls : time_calls, candidate);
    timing->Repetitions(effort.repetitions)->Iterations(iterations(candidate, effort.seconds_each));
    if (prepared) timing->UseManualTime();
  }
  Fastest fastest;
  benchmark::RunSpecifiedBenchmarks(&fastest, ".");
  benchmark::ClearRegisteredBenchmarks();
  return fastest;
}

// Nanoseconds an element.
struct LongArrayTimes {
  double zivks = 0;
  double other = 0;
  double copy = 0;  // memcpy that moves as many bytes
};

void copy_bytes(const Arrays& arrays, int32_t bytes) {
  std::memcpy(arrays.array(2), arrays.array(0), static_cast<std::size_t>(bytes));
}

LongArrayTimes time_long_arrays(const Arrays& arrays, const Row& row, int32_t len, Effort effort) {
  row.fill(arrays, len);
  const Fastest times = run({{"zivks", row.zivks, row.prepare, {arrays}, len},
                             {"other", row.other, row.prepare, {arrays}, len},
                             {"copy", copy_bytes, nullptr, {arrays}, len / 2 * row.bytes_per_element}},
                            effort);
  return {times["zivks"] / len, times["other"] / len, times["copy"] / len};
}

// The cheapest call that there is: a pointer and a length are tested, and the length fails.
void cheapest_call(const Arrays& arrays, int32_t) {
  ZIVKS_Zero_8u(static_cast<uint8_t*>(arrays.array(2)), 0);
}

struct ShortCall {
  double nanoseconds_above_cheapest = 0;
  int32_t len = 0;
};

// Each call writes elsewhere, since a load that meets stores of the call before, still under way, waits.
ShortCall worst_short_call(const Arrays& arrays, const Row& row) {
  std::vector<Arrays> places;
  for (std::size_t distance = 0; distance < Arrays::kFarthestMove; distance += 1024) {
    places.push_back(arrays.moved_by(distance, Arrays::kFirstWritten));
    row.fill(places.back(), row.short_len);
  }
  std::vector<Candidate> candidates = {{"cheapest", cheapest_call, nullptr, places, 0}};
  for (int32_t len = 1; len <= row.short_len; ++len) {
    candidates.push_back({std::to_string(len), row.zivks, row.prepare, places, len});
  }
  const Fastest times = run(candidates, kShortEffort);
  ShortCall worst;
  for (int32_t len = 1; len <= row.short_len; ++len) {
    const double above = times[std::to_string(len)] - times["cheapest"];
    if (above > worst.nanoseconds_above_cheapest) worst = {above, len};
  }
  return worst;
}

void print_row(const Arrays& arrays, const Row& row) {
  const Requirement& required = *row.requirement;
  const LongArrayTimes aligned = time_long_arrays(arrays, row, row.len, kCacheResidentEffort);
  const LongArrayTimes at_16 = time_long_arrays(arrays.moved_by(16), row, row.len, kCacheResidentEffort);
  LongArrayTimes memory;
  const int32_t memory_len = aligned.zivks < kMemoryBoundNanoseconds ? row.memory_len : 0;
  if (memory_len != 0) memory = time_long_arrays(arrays, row, memory_len, kMemoryBoundEffort);
  ShortCall short_call;
  if (row.short_len != 0) short_call = worst_short_call(arrays, row);

  const std::string family(family_of(row.function));
  std::printf("%s\t%s\t%s\t%s\t%g\t%g\t%g\t%d\t%.5f\t%.5f\t%.5f\t%.5f\t%d\t%.4f\t%.4f\t%.4f\t%.1f\t%d\t%s\n",
              row.function, row.variant, family.c_str(), required.name, required.speedup,
              required.memory_share, required.short_ns, row.len, aligned.zivks, aligned.other, at_16.zivks,
              at_16.other, memory_len, memory.zivks, memory.other, memory.copy,
              short_call.nanoseconds_above_cheapest, short_call.len, row.remark);
  std::fflush(stdout);
}

void print_table(const std::vector<Row>& rows) {
  // Three arrays of the longest elements, and the memcpy that moves as many bytes.
  constexpr std::size_t kBytes = std::size_t{kMemoryBound} * 32;
  const Arrays arrays(kBytes);
  std::printf("# %s, GCC %s. Times are in ns an element, short_ns in ns a call; see docs/performance.md.\n",
              processor_name().c_str(), __VERSION__);
  std::puts(
      "function\tvariant\tfamily\tclass\trequired_speedup\trequired_memory\trequired_short_ns\tlen\tlibrary_"
      "ns\tother_ns\t"
      "library_at_16_ns\tother_at_16_ns\tmemory_len\tmemory_library_ns\tmemory_other_ns\tmemory_copy_ns\t"
      "short_ns\tshort_len\tremark");
  for (const Row& row : rows) print_row(arrays, row);
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  const std::string option = argc > 1 && argv[1][0] == '-' ? argv[1] : "";
  const bool takes_rows = option.empty() || option == "--peers";
  if (!takes_rows && option != "--check")
    return std::fprintf(stderr, "unknown option %s\n", option.c_str()), 2;
  const int words = option.empty() ? 1 : 2;
  const std::regex selection(argc > words ? argv[words] : "");
  const std::vector<bench::Row> peers = bench::peer_rows(selection), rows = bench::rows(selection);

  if (!bench::every_function_has_a_row()) return 1;
  if (!bench::calls_agree(peers) || !bench::calls_agree(rows)) return 1;
  if (!takes_rows) return 0;

  char interleaving[] = "--benchmark_enable_random_interleaving=true";
  char* arguments[] = {argv[0], interleaving, nullptr};
  int count = 2;
  benchmark::Initialize(&count, arguments);
  bench::print_table(option.empty() ? rows : peers);
  return 0;
}
