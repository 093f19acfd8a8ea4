// Counts the instructions that the rows execute under the user-mode emulator with counter_plugin.c, exactly
// and repeatably. Prints a table; with --check, prints the rows that are neither as required nor as
// known_misses.h says, and fails if there are any.
//
//   qemu-aarch64 ... -plugin counter_plugin.so count_instructions [--check] [REGEX]
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <regex>

#include "bench/instruction_counter/count_system_call.h"
#include "bench/instruction_counter/known_misses.h"
#include "bench/row.h"
#include "bench/row_checks.h"

namespace bench {
namespace {

constexpr int32_t kShort = 16;
constexpr int kShortCallLimit = 60;
constexpr int32_t kElements = 4096;

void no_work(const Arrays&, int32_t) {}

class InstructionCounter {
 public:
  InstructionCounter() {
    if (pipe2(descriptors_, O_NONBLOCK) != 0) fail("cannot open a pipe");
    for (int warm_up = 0; warm_up < 2; ++warm_up) cost_of_counting_ = raw_count(no_work, 0);
  }

  // Instructions of the call: passing the arguments, the call itself and the return are counted.
  uint64_t count(Call call, int32_t len) {
    call(arrays_, len);  // The dynamic linker looks a function up at its first call.
    return raw_count(call, len) - cost_of_counting_;
  }

  const Arrays& arrays() const { return arrays_; }

 private:
  // Compiled once and never into its callers, so that the cost of counting is the same everywhere.
  [[gnu::noinline, gnu::noclone]] uint64_t raw_count(Call call, int32_t len) {
    const uint64_t before = executed();
    call(arrays_, len);
    return executed() - before;
  }

  uint64_t executed() {
    syscall(kCountSystemCall, descriptors_[1]);
    uint64_t count;
    if (read(descriptors_[0], &count, sizeof count) != ssize_t{sizeof count}) {
      fail("no instruction count: run this program under the emulator with the counter plugin");
    }
    return count;
  }

  [[noreturn]] static void fail(const char* message) {
    std::fprintf(stderr, "%s\n", message);
    std::exit(2);
  }

  Arrays arrays_{std::size_t{2 * kElements} * sizeof(ZIVK64fc)};
  int descriptors_[2];
  uint64_t cost_of_counting_;
};

// Instructions an element, once the constant part of the call is taken off: what 4096 elements more cost.
double instructions_per_element(InstructionCounter& counter, Call call) {
  const auto more = counter.count(call, 2 * kElements) - counter.count(call, kElements);
  return static_cast<double>(more) / kElements;
}

struct ShortCall {
  int instructions = 0;
  int32_t len = 0;
};

ShortCall worst_short_call(InstructionCounter& counter, Call call) {
  ShortCall worst;
  for (int32_t len = 1; len <= kShort; ++len) {
    const auto instructions = static_cast<int>(counter.count(call, len));
    if (instructions > worst.instructions) worst = {instructions, len};
  }
  return worst;
}

struct Counts {
  double zivks;
  double plain;
  ShortCall short_call;
  ShortCall plain_short_call;
};

Counts count(InstructionCounter& counter, const Row& row) {
  row.fill(counter.arrays(), 2 * kElements);
  return {instructions_per_element(counter, row.zivks), instructions_per_element(counter, row.plain),
          worst_short_call(counter, row.zivks), worst_short_call(counter, row.plain)};
}

const KnownMiss* known_miss(const Row& row) {
  for (const KnownMiss& miss : kKnownMisses) {
    if (row.name() == miss.row) return &miss;
  }
  return nullptr;
}

// Whether the row takes what it is allowed: what is required of it, or exactly of a known miss in both
// respects that it is no worse than known and still a miss.
bool as_expected(const Row& row, bool share_misses, double share, bool short_call_misses, int short_call) {
  const KnownMiss* known = known_miss(row);
  if (known == nullptr) return !share_misses && !short_call_misses;
  const bool share_expected = share_misses ? share <= known->share : known->share == kNoMiss;
  const bool short_call_expected =
      short_call_misses ? short_call <= known->short_call : known->short_call == kNoMiss;
  return share_expected && short_call_expected;
}

void print_reasons() {
  std::puts("\nWhy these miss it:\n");
  const char* reason = "";
  for (const KnownMiss& miss : kKnownMisses) {
    if (miss.reason != reason) std::printf("- %s:", reason = miss.reason);
    std::printf(" `%s`%s", miss.row,
                &miss + 1 < std::end(kKnownMisses) && (&miss + 1)->reason == reason ? "," : "\n");
  }
}

// Prints the tables, with a mark at what misses a requirement, or only the rows that are not as expected.
// Returns how many these are.
int print_tables(const std::regex& selection, bool only_unexpected) {
  InstructionCounter counter;
  int rows = 0;
  int misses = 0;
  int unexpected = 0;
  std::printf("Compiler: GCC %s.\n", __VERSION__);
  for (const Section& section : sections(selection)) {
    std::printf("\n### %s\n\n", section.title);
    std::puts("| function | library | plain loop | share | required | short call (len) | plain loop (len) |");
    std::puts("|---|--:|--:|--:|--:|--:|--:|");
    for (const Row& row : section.rows) {
      ++rows;
      const Counts counts = count(counter, row);
      const double required = row.requirement.instruction_share_arm64;
      const double share = counts.zivks / counts.plain;
      const bool share_misses = share > required;
      const bool short_call_misses = counts.short_call.instructions > kShortCallLimit;
      const bool expected =
          as_expected(row, share_misses, share, short_call_misses, counts.short_call.instructions);
      misses += share_misses || short_call_misses;
      unexpected += !expected;
      if (only_unexpected && expected) continue;
      std::printf("| `%s` | %.3f | %.3f | %.2f%s | %.1f | %d (%d)%s | %d (%d) |\n", row.name().c_str(),
                  counts.zivks, counts.plain, share, share_misses ? " !" : "", required,
                  counts.short_call.instructions, counts.short_call.len, short_call_misses ? " !" : "",
                  counts.plain_short_call.instructions, counts.plain_short_call.len);
    }
  }
  std::printf(
      "\n%d rows, %d of them with a figure that misses what is required (marked !); %d not as expected.\n",
      rows, misses, unexpected);
  if (!only_unexpected) print_reasons();
  return unexpected;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  if (!bench::rows_are_sound()) return 1;
  const bool check = argc > 1 && std::strcmp(argv[1], "--check") == 0;
  const char* selection = argc > 1 + check ? argv[1 + check] : "";
  const int misses = bench::print_tables(std::regex(selection), check);
  return check && misses != 0 ? 1 : 0;
}
