// Times questions of the example `query` beside sqlite3 and prints a line for each, tab-separated.
//
//   query_benchmark FILE   asks about the list of packages in FILE, and about a table a hundred times as long
//
// The table is in memory on both sides, and each has one thread. The library's answer is a table; sqlite3 executes a
// prepared statement and steps through all rows. Both answers have to be the same.
#include <malloc.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bench/processor_name.h"
#include "examples/query/csv_file.h"
#include "examples/query/options.h"
#include "examples/query/query.h"
#include "examples/query/table_reader.h"

namespace bench {
namespace {

constexpr double kRequiredSpeedup = 10;

struct QueryRow {
  const char* name;
  std::vector<const char*> arguments;
  const char* sql;
};

const QueryRow kRows[] = {
    {"extremes of the table",
     {"--count", "--max", "installed_size", "--min", "installed_size", "--max", "download_size"},
     "SELECT count(*), max(installed_size), min(installed_size), max(download_size) FROM t"},
    {"groups by section, in order",
     {"--group-by", "section", "--count", "--max", "installed_size", "--min", "download_size", "--order-by",
      "section"},
     "SELECT section, count(*), max(installed_size), min(download_size) FROM t GROUP BY section ORDER BY "
     "section"},
    {"groups by section and priority",
     {"--group-by", "section", "--group-by", "priority", "--max", "installed_size"},
     "SELECT section, priority, max(installed_size) FROM t GROUP BY section, priority"},
    {"groups by section, largest text",
     {"--group-by", "section", "--max", "version"},
     "SELECT section, max(version) FROM t GROUP BY section"},
    {"top 10 groups by maintainer",
     {"--group-by", "maintainer", "--count", "--top", "10", "installed_size"},
     "SELECT maintainer, count(*), max(installed_size) m FROM t GROUP BY maintainer ORDER BY m DESC LIMIT "
     "10"},
    {"groups by installed_size",
     {"--group-by", "installed_size", "--count"},
     "SELECT installed_size, count(*) FROM t GROUP BY installed_size"},
    {"groups by name, one for each row",
     {"--group-by", "name", "--max", "installed_size"},
     "SELECT name, max(installed_size) FROM t GROUP BY name"},
    {"top 20 rows",
     {"--top", "20", "download_size"},
     "SELECT * FROM t ORDER BY download_size DESC, rowid LIMIT 20"},
    {"all rows in order of name", {"--order-by", "name"}, "SELECT * FROM t ORDER BY name"},
};

struct LoadedTable {
  std::vector<std::string> names;
  std::vector<Type> types;
  std::vector<Batch> batches;

  std::size_t rows() const {
    std::size_t sum = 0;
    for (const Batch& batch : batches) sum += batch.rows;
    return sum;
  }
};

LoadedTable load(const char* path) {
  CsvFile file(path, ',');
  LoadedTable table = {file.column_names(), {}, {}};
  std::vector<SelectedColumn> selection;
  for (std::size_t place = 0; place < table.names.size(); ++place) selection.push_back({place, std::nullopt});
  TableReader reader(file, selection);
  for (Batch batch;;) {
    const auto next = reader.read(batch);
    if (next == TableReader::Next::kEnd) break;
    if (next == TableReader::Next::kBeginning) {
      table.batches.clear();
    } else {
      table.batches.push_back(std::move(batch));
    }
  }
  table.types = reader.types();
  return table;
}

// The column in another copy of the table: numbers move by one, texts get a new end, nulls stay.
Column changed(const Column& column, int copy) {
  if (copy == 0) return column;
  if (column.type() == Type::kInteger) {
    Integers integers = std::get<Integers>(column.values);
    for (std::size_t row = 0; row < integers.size(); ++row)
      integers[row] += column.nulls[row] == 0 ? copy : 0;
    return Column(std::move(integers), column.nulls);
  }
  const Texts& texts = std::get<Texts>(column.values);
  const std::string end = "/" + std::to_string(copy);
  Texts longer;
  for (std::size_t row = 0; row < texts.size(); ++row) {
    longer.push_back(column.nulls[row] == 0 ? std::string(texts[row]) + end : "");
  }
  return Column(std::move(longer), column.nulls);
}

LoadedTable repeated(const LoadedTable& table, int copies) {
  LoadedTable result = {table.names, table.types, {}};
  for (int copy = 0; copy < copies; ++copy) {
    for (const Batch& batch : table.batches) {
      Batch& other = result.batches.emplace_back();
      other.rows = batch.rows;
      for (const Column& column : batch.columns) other.columns.push_back(changed(column, copy));
    }
  }
  return result;
}

// Does not depend on the order of the rows.
class Digest {
 public:
  void add_cell(std::string_view text) { row_ = row_ * 31 + std::hash<std::string_view>()(text); }
  void end_row() {
    sum_ += row_ * row_ + row_;
    row_ = 1;
    ++rows_;
  }
  std::size_t rows() const { return rows_; }
  bool operator==(const Digest& other) const { return sum_ == other.sum_ && rows_ == other.rows_; }

 private:
  std::size_t row_ = 1, sum_ = 0, rows_ = 0;
};

std::string_view text_of(const Column& column, std::size_t row, std::string& number) {
  if (column.nulls[row] != 0) return "";
  if (column.type() == Type::kText) return std::get<Texts>(column.values)[row];
  return number = std::to_string(std::get<Integers>(column.values)[row]);
}

Digest digest(const Answer& answer) {
  Digest result;
  std::string number;
  for (const int32_t row : answer.positions) {
    for (const Column& column : answer.table.columns) {
      result.add_cell(text_of(column, static_cast<std::size_t>(row), number));
    }
    result.end_row();
  }
  return result;
}

class Database {
 public:
  explicit Database(const LoadedTable& table) {
    check(sqlite3_open(":memory:", &database_));
    // No sort has to go to a file.
    execute("PRAGMA temp_store = MEMORY");
    execute("PRAGMA cache_size = -8000000");
    std::string columns, places;
    for (std::size_t i = 0; i < table.names.size(); ++i) {
      columns +=
          (i == 0 ? "" : ", ") + table.names[i] + (table.types[i] == Type::kText ? " TEXT" : " INTEGER");
      places += i == 0 ? "?" : ", ?";
    }
    execute("CREATE TABLE t(" + columns + ")");
    execute("BEGIN");
    const Statement insertion = prepare("INSERT INTO t VALUES(" + places + ")");
    for (const Batch& batch : table.batches) insert(insertion.get(), batch);
    execute("COMMIT");
  }
  ~Database() { sqlite3_close(database_); }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

  Statement prepare(const std::string& sql) const {
    sqlite3_stmt* statement;
    check(sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr));
    return Statement(statement, sqlite3_finalize);
  }

  // Steps through all rows; `visit` gets the statement at each.
  template <class Visit>
  void answer(sqlite3_stmt* statement, Visit visit) const {
    int status;
    while ((status = sqlite3_step(statement)) == SQLITE_ROW) visit(statement);
    if (status != SQLITE_DONE) check(status);
    check(sqlite3_reset(statement));
  }

 private:
  void check(int status) const {
    if (status != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database_));
  }

  void execute(const std::string& sql) const {
    check(sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr));
  }

  void insert(sqlite3_stmt* insertion, const Batch& batch) const {
    for (std::size_t row = 0; row < batch.rows; ++row) {
      for (std::size_t i = 0; i < batch.columns.size(); ++i) {
        const Column& column = batch.columns[i];
        const int parameter = static_cast<int>(i) + 1;
        if (column.nulls[row] != 0) {
          check(sqlite3_bind_null(insertion, parameter));
        } else if (column.type() == Type::kText) {
          const std::string_view text = std::get<Texts>(column.values)[row];
          check(sqlite3_bind_text(insertion, parameter, text.data(), static_cast<int>(text.size()),
                                  SQLITE_STATIC));
        } else {
          check(sqlite3_bind_int64(insertion, parameter, std::get<Integers>(column.values)[row]));
        }
      }
      answer(insertion, [](sqlite3_stmt*) {});
    }
  }

  sqlite3* database_ = nullptr;
};

Digest digest(const Database& database, sqlite3_stmt* statement) {
  Digest result;
  database.answer(statement, [&](sqlite3_stmt* at_row) {
    for (int i = 0; i < sqlite3_column_count(at_row); ++i) {
      const void* const text = sqlite3_column_text(at_row, i);
      const auto length = static_cast<std::size_t>(sqlite3_column_bytes(at_row, i));
      result.add_cell({static_cast<const char*>(text), text == nullptr ? 0 : length});
    }
    result.end_row();
  });
  return result;
}

Question question_of(const QueryRow& row) {
  std::vector<std::string> arguments = {"query"};
  arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  return parse_options(static_cast<int>(pointers.size()), pointers.data()).question;
}

Answer answer(const LoadedTable& table, const Question& question) {
  const auto query = make_query(question, table.names, table.types);
  for (const Batch& batch : table.batches) query->add(batch);
  return query->finish();
}

template <class Work>
double seconds(Work work) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  work();
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// Both sides take turns, and the fastest of each counts.
void print_rows(const LoadedTable& table, int turns) {
  const Database database(table);
  const double nanoseconds_a_row = 1e9 / static_cast<double>(table.rows());
  for (const QueryRow& row : kRows) {
    const Question question = question_of(row);
    const auto statement = database.prepare(row.sql);
    const Digest expected = digest(database, statement.get());
    if (!(digest(answer(table, question)) == expected)) {
      throw std::runtime_error(std::string(row.name) + ": the answers differ");
    }
    double library = std::numeric_limits<double>::infinity(), sqlite = library;
    for (int turn = 0; turn < turns; ++turn) {
      library = std::min(library, seconds([&] { answer(table, question); }));
      sqlite = std::min(sqlite, seconds([&] { database.answer(statement.get(), [](sqlite3_stmt*) {}); }));
    }
    std::printf("%s\t%zu\t%zu\t%.2f\t%.2f\t%g\n", row.name, table.rows(), expected.rows(),
                library * nanoseconds_a_row, sqlite * nanoseconds_a_row, kRequiredSpeedup);
    std::fflush(stdout);
  }
}

// Memory that either side frees stays in the process, as in one that answers a question after another: otherwise most of
// the time for large answers is the system's, which hands out new pages.
void keep_memory() {
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

void run(const char* path) {
  keep_memory();
  constexpr int kTurns = 15, kTurnsOfLongTable = 3;
  constexpr int kCopies = 100;
  const LoadedTable table = load(path);
  std::printf("# %s, GCC %s, sqlite3 %s. Times are in ns a row of the table; see docs/performance.md.\n",
              processor_name().c_str(), __VERSION__, sqlite3_libversion());
  std::puts("question\trows\tanswer_rows\tlibrary_ns\tsqlite_ns\trequired_speedup");
  print_rows(table, kTurns);
  print_rows(repeated(table, kCopies), kTurnsOfLongTable);
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) try {
  if (argc != 2) return std::fprintf(stderr, "usage: query_benchmark FILE\n"), EXIT_FAILURE;
  bench::run(argv[1]);
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::fprintf(stderr, "query_benchmark: %s\n", error.what());
  return EXIT_FAILURE;
}
