// Counts the instructions that the rows execute under the user-mode emulator with counter_plugin.c, exactly
// and repeatably. Prints a table; with --check, prints the rows that miss what is required and fails if there
// are any.
//
//   qemu-aarch64 ... -plugin counter_plugin.so count_instructions [--check] [REGEX]
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <regex>

#include "bench/instruction_counter/count_system_call.h"
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
  double library;
  double plain;
  ShortCall short_call;
  ShortCall plain_short_call;
};

Counts count(InstructionCounter& counter, const Row& row) {
  row.fill(counter.arrays(), 2 * kElements);
  return {instructions_per_element(counter, row.library), instructions_per_element(counter, row.plain),
          worst_short_call(counter, row.library), worst_short_call(counter, row.plain)};
}

// Prints the tables, with a mark at what misses a requirement, or only the rows that have such a mark.
// Returns how many have one.
int print_tables(const std::regex& selection, bool only_misses) {
  InstructionCounter counter;
  int rows = 0;
  int misses = 0;
  std::printf("Compiler: GCC %s.\n", __VERSION__);
  for (const Section& section : sections(selection)) {
    std::printf("\n### %s\n\n", section.title);
    std::puts("| function | library | plain loop | share | required | short call (len) | plain loop (len) |");
    std::puts("|---|--:|--:|--:|--:|--:|--:|");
    for (const Row& row : section.rows) {
      ++rows;
      const Counts counts = count(counter, row);
      const double required = row.requirement.instruction_share_arm64;
      const bool too_many = counts.library > required * counts.plain;
      const bool too_many_if_short = counts.short_call.instructions > kShortCallLimit;
      if (too_many || too_many_if_short) {
        ++misses;
      } else if (only_misses) {
        continue;
      }
      std::printf("| `%s` | %.3f | %.3f | %.2f%s | %.1f | %d (%d)%s | %d (%d) |\n", row.name().c_str(),
                  counts.library, counts.plain, counts.library / counts.plain, too_many ? " !" : "", required,
                  counts.short_call.instructions, counts.short_call.len, too_many_if_short ? " !" : "",
                  counts.plain_short_call.instructions, counts.plain_short_call.len);
    }
  }
  std::printf("\n%d rows, %d of them with a figure that misses what is required (marked !).\n", rows, misses);
  return misses;
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
