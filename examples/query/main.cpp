// Answers questions about a table in a CSV file: groups and their extremes, the top rows, rows in an order.
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <memory>
#include <utility>

#include "csv_file.h"
#include "examples/program.h"
#include "examples/progress.h"
#include "options.h"
#include "query.h"
#include "table.h"
#include "table_reader.h"

namespace {

using Clock = std::chrono::steady_clock;

// A part of the work, which goes on whenever a Watch is there.
struct Work {
  double seconds = 0;
};

class Watch {
 public:
  explicit Watch(Work& work) : work_(work), start_(Clock::now()) {}
  ~Watch() { work_.seconds += std::chrono::duration<double>(Clock::now() - start_).count(); }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

 private:
  Work& work_;
  Clock::time_point start_;
};

std::vector<SelectedColumn> select_columns(const Question& question, const std::vector<std::string>& names) {
  std::vector<SelectedColumn> selection;
  for (const std::size_t place : columns_of_interest(question, names)) {
    const auto forced = question.types.find(names[place]);
    selection.push_back(
        {place, forced == question.types.end() ? std::nullopt : std::optional(forced->second)});
  }
  return selection;
}

void print_rate(const char* work, uint64_t rows, double seconds) {
  std::printf("%s in %.3f s, %.2f million a second", work, seconds,
              static_cast<double>(rows) / seconds / 1e6);
}

void run(const Options& options) {
  Work reading, answering;
  CsvFile file(options.file, options.delimiter);
  const std::vector<SelectedColumn> selection = select_columns(options.question, file.column_names());
  std::vector<std::string> names;
  for (const SelectedColumn& column : selection) names.push_back(file.column_names()[column.place]);

  TableReader reader(file, selection);
  std::unique_ptr<Query> query;
  uint64_t rows = 0;
  {
    Progress progress(file.size(), "rows");
    for (Batch batch;;) {
      const auto next = [&] {
        const Watch watch(reading);
        return reader.read(batch);
      }();
      if (next == TableReader::Next::kBeginning) {
        query = nullptr;
        rows = 0;
        continue;
      }
      const Watch watch(answering);
      if (!query) query = make_query(options.question, names, reader.types());
      if (next == TableReader::Next::kEnd) break;
      query->add(batch);
      rows += batch.rows;
      progress.show(file.bytes_read(), rows);
    }
  }
  const Answer answer = [&] {
    const Watch watch(answering);
    return query->finish();
  }();
  print_table(answer);
  std::printf("\n%" PRIu64 " row%s: ", rows, rows == 1 ? "" : "s");
  print_rate("read", rows, reading.seconds);
  std::printf("; ");
  print_rate("answered", rows, answering.seconds);
  std::printf("\n");
}

}  // namespace

int main(int argc, char** argv) {
  return run_program("query", "answer", [&] {
    const Options options = parse_options(argc, argv);
    if (options.help) {
      std::printf("%s", kUsage);
    } else {
      run(options);
    }
  });
}
