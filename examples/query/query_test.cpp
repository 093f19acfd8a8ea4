// Asks the program and sqlite3 the same questions about the same files, and hands the program files that it must refuse.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "examples/program_test.h"

namespace {

using Row = std::vector<std::string>;

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

Row split(const std::string& text, char separator) {
  std::istringstream stream(text);
  Row parts;
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

// The characters of a text in UTF-8.
Row characters(const std::string& text) {
  Row result;
  for (const char c : text) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) result.emplace_back();
    result.back() += c;
  }
  return result;
}

// The cells that the program printed; the line of dashes tells where they are.
std::vector<Row> cells_of(const std::string& output, std::size_t first_line = 2) {
  const Row lines = split(output, '\n');
  std::vector<Row> rows;
  // Behind the rows stand an empty line and the one about the time.
  for (std::size_t i = first_line; i + 2 < lines.size(); ++i) {
    const Row line = characters(lines[i]);
    Row& row = rows.emplace_back();
    std::size_t first = 0;
    for (const std::string& dashes : split(replaced(lines[1], "  ", " "), ' ')) {
      std::string& cell = row.emplace_back();
      for (std::size_t c = first; c < std::min(first + dashes.size(), line.size()); ++c) cell += line[c];
      cell.erase(cell.find_last_not_of(' ') + 1);
      cell.erase(0, cell.find_first_not_of(' '));
      first += dashes.size() + 2;
    }
  }
  return rows;
}

class QueryTest : public ProgramTest {
 protected:
  // What sqlite3 answers about table t of table.db.
  static std::vector<Row> ask_sqlite(const std::string& sql) {
    write_bytes("question.sql", sql + ";\n");
    const Result result = run("sqlite3 -ascii table.db < question.sql");
    EXPECT_EQ(result.exit_status, 0) << result.output;
    std::vector<Row> rows;
    for (const std::string& record : split(result.output, '\x1E')) {
      rows.push_back(split(record + '\x1F', '\x1F'));
      for (std::string& cell : rows.back()) {
        cell = replaced(cell, "\n", "\\n");
        cell.erase(cell.find_last_not_of(' ') + 1);
      }
    }
    return rows;
  }

  // Lets sqlite3 read the same file by itself.
  static void import(const std::string& file, const std::string& columns, const Row& names) {
    std::string sql = "CREATE TABLE t(" + columns + ");\n.import --csv --skip 1 " + file + " t\n";
    for (const std::string& name : names) sql += "UPDATE t SET " + name + " = nullif(" + name + ", '');\n";
    write_bytes("import.sql", sql);
    const Result result = run("rm -f table.db; sqlite3 table.db < import.sql");
    ASSERT_EQ(result.output, "");
  }

  // Amounts are integers to sqlite3, which has no decimals.
  static void expect_same_answer(const std::string& arguments, const std::string& sql) {
    const Result result = run("$program table.csv " + arguments);
    ASSERT_EQ(result.exit_status, 0) << arguments << ": " << result.output;
    auto answer = cells_of(result.output);
    const Row names = cells_of(result.output, 0)[0];
    for (Row& row : answer) {
      for (std::size_t i = 0; i < row.size(); ++i) {
        if (names[i].find("amount") == std::string::npos || row[i].empty()) continue;
        EXPECT_EQ(row[i].find('.'), row[i].size() - 3);
        row[i] = std::to_string(std::stoll(replaced(row[i], ".", "")));
      }
    }
    const auto expected = ask_sqlite(sql);
    ASSERT_EQ(answer.size(), expected.size()) << arguments;
    EXPECT_FALSE(expected.empty()) << sql;
    for (std::size_t row = 0; row < expected.size(); ++row) {
      ASSERT_EQ(answer[row], expected[row]) << arguments << ", row " << row;
    }
  }
};

// Words are quoted, hold whatever may be quoted, and are alike in their first bytes, so that prefixes decide little.
// Some numbers differ in their sign alone, which makes hashes of decimals collide, and null collides with 0.
void write_awkward_table(const std::string& file, int rows) {
  const Row stems = {"",        "lib",         "libx11",     "libx11-protocol-",
                     "comma, ", "\"quoted\" ", "line\nend ", "\xC3\xA4\xE2\x82\xAC",
                     "z"};
  const Row ends = {"", "a", "b", "a,b", "\"", "\n\n-", "\xC3\xBC", "0", "1", "00"};
  std::mt19937 random(532);
  const auto below = [&random](int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
  };
  std::ofstream stream(file, std::ios::binary);
  stream << "word,\"few\",code,amount,missing,late\n";
  for (int i = 0; i < rows; ++i) {
    const std::string word = stems[random() % stems.size()] + ends[random() % ends.size()] +
                             (below(2) == 0 ? "" : std::to_string(below(20000)));
    stream << '"' << replaced(word, "\"", "\"\"") << "\",";
    if (below(5) != 0) stream << "group " << below(7);
    stream << ',';
    if (below(10) != 0) {
      const int64_t extremes[] = {INT64_MIN, INT64_MAX, 0, -1};
      stream << (below(50) == 0 ? extremes[below(4)] : int64_t{below(4000) - 2000});
    }
    stream << ',';
    if (below(20) != 0) {
      char amount[40];
      const long long digits = below(3) == 0 ? below(1 << 30) * 1LL << 25 : below(60);
      std::snprintf(amount, sizeof amount, "%s%lld.%02d", below(2) == 0 ? "" : "-", digits, below(4) * 25);
      stream << amount;
    }
    // Integers, until the first batches are over.
    stream << ",," << (i < rows - 100 ? "" : "x") << below(5000) << '\n';
  }
}

TEST_F(QueryTest, AnswersAsSqliteDoes) {
  write_awkward_table("table.csv", 150000);
  import("table.csv", "word TEXT, few TEXT, code INTEGER, amount TEXT, missing INTEGER, late TEXT",
         {"word", "few", "code", "amount", "missing"});
  ask_sqlite(
      "UPDATE t SET amount = replace(amount, '.', ''); ALTER TABLE t RENAME amount TO hundredths;"
      "ALTER TABLE t ADD amount INTEGER; UPDATE t SET amount = CAST(hundredths AS INTEGER)");
  const struct {
    const char *arguments, *sql;
  } questions[] = {
      {"--count --max code --min code --max word --min word --max amount --min amount --max missing --min "
       "late",
       "SELECT count(*), max(code), min(code), max(word), min(word), max(amount), min(amount), NULL, "
       "min(late) FROM t"},
      {"--group-by few --min amount --max amount --count --max code --min code --min word --max word --min "
       "missing",
       "SELECT few, min(amount), max(amount), count(*), max(code), min(code), min(word), max(word), NULL "
       "FROM t "
       "GROUP BY few ORDER BY min(rowid)"},
      {"--group-by word --max code --min amount --max few --count",
       "SELECT word, max(code), min(amount), max(few), count(*) FROM t GROUP BY word ORDER BY min(rowid)"},
      {"--group-by amount --count", "SELECT amount, count(*) FROM t GROUP BY amount ORDER BY min(rowid)"},
      {"--group-by code --max late --min word",
       "SELECT code, max(late), min(word) FROM t GROUP BY code ORDER BY min(rowid)"},
      {"--group-by few --group-by amount --group-by missing --max code",
       "SELECT few, amount, NULL, max(code) FROM t GROUP BY few, amount ORDER BY min(rowid)"},
      {"--group-by few --max code --min code --top 5 'min(code)' --order-by few --descending",
       "SELECT * FROM (SELECT few, max(code), min(code) m FROM t GROUP BY few ORDER BY m DESC, min(rowid) "
       "LIMIT 5) "
       "ORDER BY few DESC"},
      {"--group-by word --top 300 amount",
       "SELECT word, max(amount) m FROM t GROUP BY word ORDER BY m DESC, min(rowid) LIMIT 300"},
      {"--group-by word --order-by word --descending", "SELECT DISTINCT word FROM t ORDER BY word DESC"},
      {"--group-by amount --order-by amount", "SELECT DISTINCT amount FROM t ORDER BY amount"},
      {"--group-by late --min code --order-by 'min(code)' --order-by late --descending",
       "SELECT late, min(code) m FROM t GROUP BY late ORDER BY m, late DESC"},
      {"--top 40 code",
       "SELECT word, few, code, amount, missing, late FROM t ORDER BY code DESC, rowid LIMIT 40"},
      {"--top 70000 missing --order-by word --order-by amount --descending",
       "SELECT word, few, code, amount, missing, late FROM (SELECT *, rowid r FROM t ORDER BY missing DESC, "
       "r "
       "LIMIT 70000) "
       "ORDER BY word, amount DESC, r"},
      {"--top 1 word",
       "SELECT word, few, code, amount, missing, late FROM t ORDER BY word DESC, rowid LIMIT 1"},
      {"--top 148000 amount",
       "SELECT word, few, code, amount, missing, late FROM t ORDER BY amount DESC, rowid LIMIT 148000"},
      {"--order-by code --descending",
       "SELECT word, few, code, amount, missing, late FROM t ORDER BY code DESC, rowid"},
  };
  for (const auto& [arguments, sql] : questions) expect_same_answer(arguments, sql);
}

TEST_F(QueryTest, AnswersAboutThePackageListAsSqliteDoes) {
  const Result index = run("apt-get indextargets --format '$(FILENAME)' 'Created-By: Packages'");
  if (index.exit_status != 0 || index.output.empty()) GTEST_SKIP() << "this machine has no package index";
  ASSERT_EQ(run("'" PACKAGE_LIST_SCRIPT "' > table.csv").output, "");
  import("table.csv",
         "name TEXT, version TEXT, section TEXT, priority TEXT, maintainer TEXT, installed_size INTEGER, "
         "download_size INTEGER",
         {"version", "section", "priority", "maintainer", "installed_size", "download_size"});
  expect_same_answer("--group-by section --max installed_size --min download_size --top 20 installed_size",
                     "SELECT section, max(installed_size) m, min(download_size) FROM t GROUP BY section "
                     "ORDER BY m DESC, min(rowid) LIMIT 20");
  expect_same_answer("--group-by maintainer --count --max version --order-by count --descending",
                     "SELECT maintainer, count(*) c, max(version) FROM t GROUP BY maintainer "
                     "ORDER BY c DESC, min(rowid)");
  expect_same_answer(
      "--top 500 installed_size --order-by name",
      "SELECT * FROM (SELECT * FROM t ORDER BY installed_size DESC, rowid LIMIT 500) ORDER BY name");
}

TEST_F(QueryTest, KnowsTheNarrowestTypeAndTheOneThatIsForced) {
  // In order as integers, as decimals and as texts.
  const struct {
    const char *values, *type, *ordered;
  } rows[] = {
      {"10 9 -9223372036854775808 +9223372036854775807 007", "",
       "-9223372036854775808 7 9 10 9223372036854775807"},
      {"10 9 -10 007", "--type a=text", "-10 007 10 9"},
      {"10 9 -1", "--type a=decimal", "-1 9 10"},
      {"9223372036854775808 1", "", "1 9223372036854775808"},
      {".5 -0.25 -.250 1. -0.0", "", "-0.250 -0.250 0.000 0.500 1.000"},
      {"99999999999999999999.999999999999999999 -99999999999999999999.999999999999999999 "
       "18446744073709551616 "
       "0.000000000000000001 -0.000000000000000001",
       "",
       "-99999999999999999999.999999999999999999 -0.000000000000000001 0.000000000000000001 "
       "18446744073709551616.000000000000000000 99999999999999999999.999999999999999999"},
      {"10 9 1e1 --1 1.2.3 . - 0x10", "", "- --1 . 0x10 1.2.3 10 1e1 9"},
      {"123456789012345678901234567890 x", "", "123456789012345678901234567890 x"},
  };
  for (const auto& [values, type, ordered] : rows) {
    write_bytes("values.csv", "a\n" + replaced(values, " ", "\n"));
    std::vector<Row> expected;
    for (const std::string& value : split(ordered, ' ')) expected.push_back({value});
    const Result result = run(std::string("$program values.csv --order-by a ") + type);
    EXPECT_EQ(cells_of(result.output), expected) << result.output;
  }
}

TEST_F(QueryTest, ReadsEveryLineEndDelimiterAndPipe) {
  const std::string lines = "name,size\nb,1\n\n\"a\",\n\"b\",20\n";
  const std::string expected = "name  max(size)\n----  ---------\nb            20\na\n\n3 rows: ";
  const struct {
    std::string bytes, command;
  } rows[] = {
      {lines, "$program file.csv"},
      {lines, "cat file.csv | $program -"},
      {lines.substr(0, lines.size() - 1), "$program - < file.csv"},
      {"\xEF\xBB\xBF" + lines, "$program file.csv"},
      {replaced(lines, "\n", "\r\n"), "$program file.csv"},
      {replaced(lines, "\n", "\r"), "$program file.csv"},
      {"taken by another program\n" + lines, "exec < file.csv; read line; $program -"},
      {replaced(lines, ",", ";"), "$program --delimiter ';' file.csv"},
      {replaced(lines, ",", "\t"), "$program file.csv --delimiter \"$(printf '\\t')\""},
  };
  for (const auto& [bytes, command] : rows) {
    write_bytes("file.csv", bytes);
    const Result result = run(command + " --group-by name --max size");
    EXPECT_EQ(result.output.substr(0, expected.size()), expected) << command;
    EXPECT_EQ(result.exit_status, 0);
  }
  write_bytes("file.csv", "name,size\n");
  EXPECT_EQ(cells_of(run("$program file.csv --group-by name --max size").output), std::vector<Row>());
  EXPECT_EQ(cells_of(run("$program file.csv --max size --count").output), (std::vector<Row>{{"", "0"}}));
}

TEST_F(QueryTest, RefusesWhatIsNoTableWithTheLineAndNoOutput) {
  const std::string long_column = [] {
    std::string text = "a\n";
    for (int i = 0; i < 70000; ++i) text += "12\n";
    return text;
  }();
  const struct {
    std::string bytes, command, message;
  } rows[] = {
      {"", "", "file.csv: the file is empty"},
      {"\n\r\n", "", "file.csv: the file is empty"},
      {"a,b\n1,2\n\n\"x\ny\",3\n1,2,3\n", "", "file.csv: line 6: 3 fields, but the header names 2 columns"},
      {"a,b\r\n1,2\r\n\r\n\"x\r\ny\"\r\n", "", "file.csv: line 4: 1 field, but the header names 2 columns"},
      {"a\r1\r2,3\r", "", "file.csv: line 3: 2 fields, but the header names 1 column"},
      {"a\n1\n\"2\n3\n", "", "file.csv: line 3: a quote that is opened in this record is never closed"},
      {"a\n1\nx\"y\n", "", "file.csv: line 3: a quote stands within a field"},
      {"a\n1\n\"x\" \n", "", "file.csv: line 3: a quote stands within a field"},
      {std::string("a\n1\n2\0", 7), "", "file.csv: line 3: a byte 0x00: this is no text"},
      {"\x89PNG\r\n\x1A\n", "", "file.csv: line 2: a byte 0x1A: this is no text"},
      {"a\n1\n\n9223372036854775808\n", "--type a=integer",
       "file.csv: line 4: column 'a': '9223372036854775808' is out of range of integer"},
      {"a\n1\n100000000000000000000\n", "",
       "file.csv: line 3: column 'a': '100000000000000000000' is a number out of range; --type a=text takes"},
      {"a\n1\n0.0000000000000000001\n", "",
       "line 3: column 'a': '0.0000000000000000001' is a number out of range"},
      {"a\n1\n1.5\n", "--type a=integer", "file.csv: line 3: column 'a': '1.5' is no integer"},
      {"a\n1\nx\n", "--type a=decimal", "file.csv: line 3: column 'a': 'x' is no decimal"},
      {"a,a\n1,2\n", "", "several columns are named 'a'"},
      {"a,b\n1,2\n", "--group-by c", "there is no column 'c'; the columns are: a, b"},
      {"a,b\n1,2\n", "--order-by b", "the answer has no column 'b' to be ordered by"},
      {"a,b\n1,2\n", "--type c=text", "there is no column 'c'"},
      {long_column + "1.5\n", "-", "standard input: line 70002: column 'a': '1.5' is no integer, but"},
      {long_column + "x\n", "--type a=decimal", "file.csv: line 70002: column 'a': 'x' is no decimal"},
      {long_column + "1,2\n", "", "file.csv: line 70002: 2 fields"},
      {"a\n\"" + std::string((1 << 24) + 9, 'x'), "", "file.csv: line 2: a field longer than 16 MiB"},
  };
  for (const auto& [bytes, arguments, message] : rows) {
    write_bytes("file.csv", bytes);
    const bool is_piped = arguments == "-";
    const std::string command =
        "cat file.csv | $program --max a " + arguments + (is_piped ? "" : " file.csv");
    const Result result = run(command);
    EXPECT_EQ(result.exit_status, 1) << command << ": " << message;
    EXPECT_EQ(result.output.rfind("query: ", 0), 0u) << result.output.substr(0, 200);
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 1)
        << result.output.substr(0, 200);
    EXPECT_NE(result.output.find(message), std::string::npos) << message << "\n"
                                                              << result.output.substr(0, 200);
  }
}

TEST_F(QueryTest, TellsWhatElseWentWrong) {
  write_bytes("file.csv", "a\n1\n");
  expect_failure("$program --max a missing.csv", "missing.csv: No such file");
  expect_failure("$program --max a .", "Is a directory");
  expect_failure("$program --max a file.csv > /dev/full", "cannot write to standard output");
  expect_failure("$program --help > /dev/full", "cannot write to standard output");
  expect_failure("$program file.csv", "nothing is asked");
  expect_failure("$program file.csv file.csv --count", "two files are named");
  expect_failure("$program file.csv --mean a", "there is no option --mean");
  expect_failure("$program file.csv --max", "something is missing behind --max");
  expect_failure("$program file.csv --descending", "--descending has no --order-by before it");
  for (const std::string count : {"0", "-1", "2147483648", "x", "1x", "''"}) {
    expect_failure("$program file.csv --top " + count + " a", "is no number of rows from 1 to 2147483647");
  }
  for (const std::string type : {"a=float", "a", "=", "''"}) {
    expect_failure("$program file.csv --max a --type " + type, "is not COLUMN=integer");
  }
  for (const std::string delimiter : {"''", "ab", "'\"'"}) {
    expect_failure("$program file.csv --max a --delimiter " + delimiter, "cannot separate fields");
  }
}

#ifndef __SANITIZE_ADDRESS__  // which takes far more memory than it leaves to others
TEST_F(QueryTest, HoldsNoMoreThanTheGroups) {
  // Some 120 megabytes through a pipe, in less memory.
  const std::string table =
      "awk 'BEGIN { print \"key,value\"; for (i = 0; i < 4000000; ++i) print i % 1000 \",a text of some "
      "bytes \" i }' | ";
  const Result result =
      run(table + "{ ulimit -v 80000; $program - --group-by key --count --top 3 count --max value; }");
  EXPECT_EQ(result.exit_status, 0) << result.output;
  const std::vector<Row> expected = {{"0", "4000", "a text of some bytes 999000"},
                                     {"1", "4000", "a text of some bytes 999001"},
                                     {"2", "4000", "a text of some bytes 999002"}};
  EXPECT_EQ(cells_of(result.output), expected) << result.output;
  expect_failure(table + "{ ulimit -v 80000; $program - --order-by value; }", "not enough memory");
}
#endif

TEST_F(QueryTest, ShowsProgressOnATerminalOnly) {
  write_bytes("ask", "(echo a; for i in 1 2 3 4; do seq 70000; sleep 0.4; done) | \"$1\" - --count\n");
  const Result in_terminal =
      run("script --quiet --return --command \"sh ask '$program'\" /dev/null < /dev/null");
  EXPECT_EQ(in_terminal.exit_status, 0);
  const std::size_t bar = in_terminal.output.find("\r196608 rows");
  const std::size_t erased = in_terminal.output.find("\r\x1B[K");
  EXPECT_LT(bar, erased) << in_terminal.output;
  EXPECT_LT(erased, in_terminal.output.find("count")) << in_terminal.output;
  const Result elsewhere = run("sh ask \"$program\"");
  EXPECT_EQ(elsewhere.output.rfind(" count\n", 0), 0u) << elsewhere.output;
}

}  // namespace
