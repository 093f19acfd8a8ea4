// Counts the instructions that the rows execute under the user-mode emulator with counter_plugin.c, exactly
// and repeatably.
//
//   qemu-aarch64 ... -plugin counter_plugin.so count_instructions [REGEX]         prints a line for each row
//   qemu-aarch64 ... -plugin counter_plugin.so count_instructions --record FILE   writes all of them to FILE
//   qemu-aarch64 ... -plugin counter_plugin.so count_instructions --check FILE    fails if a count has risen
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <utility>

#include "bench/instruction_counter/count_system_call.h"
#include "bench/row.h"
#include "bench/row_checks.h"

// The clock stands still, so that functions that draw pivots draw the same ones in every run.
extern "C" time_t time(time_t* now) {
  if (now != nullptr) *now = 0;
  return 0;
}

namespace bench {
namespace {

constexpr int32_t kLongestCounted = 64 << 10;
constexpr int kSkipped = 77;

void no_work(const Arrays&, int32_t) {}

class InstructionCounter {
 public:
  InstructionCounter() {
    if (pipe2(descriptors_, O_NONBLOCK) != 0) fail("cannot open a pipe");
    for (int warm_up = 0; warm_up < 2; ++warm_up) cost_of_counting_ = raw_count(no_work, 0);
  }

  // Instructions of the call: passing the arguments, the call itself and the return are counted.
  uint64_t count(const Row& row, Call call, int32_t len) {
    call_prepared(row, call, len);  // The dynamic linker looks a function up at its first call.
    return call_prepared(row, call, len) - cost_of_counting_;
  }

  const Arrays& arrays() const { return arrays_; }

 private:
  uint64_t call_prepared(const Row& row, Call call, int32_t len) {
    if (row.prepare != nullptr) row.prepare(arrays_, len);
    return raw_count(call, len);
  }

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

  Arrays arrays_{std::size_t{kLongestCounted} * sizeof(ZIVK64fc)};
  int descriptors_[2];
  uint64_t cost_of_counting_;
};

struct ShortCall {
  uint64_t instructions = 0;
  int32_t len = 0;
};

struct Counts {
  uint64_t zivks = 0;  // of `row.len` elements
  uint64_t other = 0;
  ShortCall short_call;
};

// What `row.len` elements take. Rows of the usual length leave out the constant part of the call: of them it is
// what so many elements more take.
uint64_t count_elements(InstructionCounter& counter, const Row& row, Call call) {
  if (row.len != kCacheResident) return counter.count(row, call, row.len);
  return counter.count(row, call, 2 * row.len) - counter.count(row, call, row.len);
}

Counts count(InstructionCounter& counter, const Row& row) {
  row.fill(counter.arrays(), row.len == kCacheResident ? 2 * row.len : row.len);
  Counts counts = {count_elements(counter, row, row.zivks), count_elements(counter, row, row.other), {}};
  for (int32_t len = 1; len <= row.short_len; ++len) {
    const uint64_t instructions = counter.count(row, row.zivks, len);
    if (instructions > counts.short_call.instructions) counts.short_call = {instructions, len};
  }
  return counts;
}

constexpr char kColumns[] =
    "function\tvariant\tfamily\tclass\trequired_share\trequired_short\tlen\tlibrary\tother\tshort\tshort_len";

void print_table(std::FILE* file, const std::vector<Row>& rows) {
  InstructionCounter counter;
  std::fprintf(file,
               "# GCC %s\n# Instructions: of len elements, and of the worst short call; see "
               "docs/performance.md.\n%s\n",
               __VERSION__, kColumns);
  for (const Row& row : rows) {
    const Counts counts = count(counter, row);
    const Requirement& required = *row.requirement;
    const std::string family(family_of(row.function));
    std::fprintf(file, "%s\t%s\t%s\t%s\t%g\t%d\t%d\t%ju\t%ju\t%ju\t%d\n", row.function, row.variant,
                 family.c_str(), required.name, required.element_share, required.short_instructions, row.len,
                 uintmax_t{counts.zivks}, uintmax_t{counts.other}, uintmax_t{counts.short_call.instructions},
                 counts.short_call.len);
  }
}

// What print_table() wrote, by the name of the row.
struct Record {
  std::string compiler;
  std::map<std::string, Counts> counts;
};

Record read_record(const char* file) {
  Record record;
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) {
    if (line.rfind("# GCC ", 0) == 0) record.compiler = line.substr(6);
    std::istringstream fields(line);
    std::vector<std::string> columns;
    for (std::string field; std::getline(fields, field, '\t');) columns.push_back(field);
    if (columns.size() != 11 || columns[0] == "function") continue;
    const std::string name = columns[0] + (columns[1].empty() ? "" : " " + columns[1]);
    record.counts[name] = {
        std::stoull(columns[7]), std::stoull(columns[8]), {std::stoull(columns[9]), std::stoi(columns[10])}};
  }
  return record;
}

// Prints the count if it has risen. Returns by how many instructions. Functions of the C library take a few
// instructions more or less from run to run, by where their arrays lie: of long calls a rise by one in 2000 is none, and
// of calls that allocate one in 8.
int64_t rise(const Row& row, const char* what, uint64_t now, uint64_t recorded) {
  const auto more = static_cast<int64_t>(now - recorded),
             least = static_cast<int64_t>(recorded / (row.allocates ? 8 : 2000));
  if (more > 0 && more <= least) return 0;
  if (more > 0) {
    std::printf("%s: %s takes %ju instructions, %ju were recorded (%+.1f %%)\n", row.name().c_str(), what,
                uintmax_t{now}, uintmax_t{recorded},
                100 * static_cast<double>(more) / static_cast<double>(recorded));
  }
  return more;
}

// The exit status of the test.
int compare(const char* file, const std::vector<Row>& rows) {
  const Record record = read_record(file);
  if (record.counts.empty()) return std::printf("%s holds no counts\n", file), 1;
  if (record.compiler != __VERSION__) {
    std::printf("%s was recorded with GCC %s, and this is GCC %s: not compared\n", file,
                record.compiler.c_str(), __VERSION__);
    return kSkipped;
  }
  InstructionCounter counter;
  int missing = 0;
  int worse = 0;
  int better = 0;
  for (const Row& row : rows) {
    const auto recorded = record.counts.find(row.name());
    if (recorded == record.counts.end()) {
      std::printf("%s is not recorded\n", row.name().c_str());
      ++missing;
      continue;
    }
    const Counts now = count(counter, row);
    const auto [zivks, other, short_call] = recorded->second;
    const std::string elements = std::to_string(row.len) + " elements";
    const int64_t rises[] = {
        rise(row, ("a call of " + elements).c_str(), now.zivks, zivks),
        rise(row, "the worst short call", now.short_call.instructions, short_call.instructions)};
    for (const int64_t more : rises) {
      worse += more > 0;
      better += more < 0;
    }
  }
  std::printf("%zu rows: %d are not recorded, %d counts have risen, %d have fallen\n", rows.size(), missing,
              worse, better);
  if (missing + worse + better != 0) {
    std::puts("The target record_instruction_counts of the arm64 build records the present counts.");
  }
  return missing + worse != 0;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  const std::string option = argc == 3 ? argv[1] : "";
  const std::regex selection(argc == 2 ? argv[1] : "");
  std::vector<bench::Row> rows = bench::rows(selection);
  const auto is_long = [](const bench::Row& row) { return row.len > bench::kLongestCounted; };
  rows.erase(std::remove_if(rows.begin(), rows.end(), is_long), rows.end());
  if (!bench::every_function_has_a_row() || !bench::calls_agree(rows)) return 1;

  if (option == "--check") return bench::compare(argv[2], rows);
  std::FILE* const output = option == "--record" ? std::fopen(argv[2], "w") : stdout;
  if (output == nullptr) return std::perror(argv[2]), 1;
  bench::print_table(output, rows);
  return std::fclose(output) == 0 ? 0 : 1;
}
