// A CSV file, taken apart into the texts of its fields.
#ifndef ZIVKS_EXAMPLES_QUERY_CSV_FILE_H
#define ZIVKS_EXAMPLES_QUERY_CSV_FILE_H

#include <csv.h>
#include <sys/types.h>

#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "column.h"

// Fields are separated by a delimiter and may be quoted: what is between quotes may hold delimiters, line ends and, as
// two, quotes. The first record names the columns, and all records have as many fields. Empty lines are passed over.
class CsvFile {
 public:
  // Texts of some columns of successive records.
  struct Records {
    std::vector<Texts> columns;
    std::vector<uint64_t> lines;  // where records begin, counted from 1
  };

  // "-" is standard input. Throws std::runtime_error, with a message for the user, if there is no header.
  CsvFile(const std::filesystem::path& path, char delimiter);
  CsvFile(const CsvFile&) = delete;
  CsvFile& operator=(const CsvFile&) = delete;

  const std::vector<std::string>& column_names() const { return column_names_; }
  uint64_t bytes_read() const { return bytes_read_; }
  uint64_t size() const { return size_; }  // of the file; 0 if it is not known
  bool can_rewind() const { return size_ > 0; }

  // Tells which columns are read: positions in column_names().
  void select(const std::vector<std::size_t>& columns);

  // Replaces the records by the next ones, none at the end of the file: by so many that columns of them have a good
  // length for the library. Throws std::runtime_error with the number of the line that is at fault.
  void read(Records& records);

  // Goes back to the first record behind the header.
  void rewind();

  // A message about a place in this file.
  std::runtime_error failure(uint64_t line, const std::string& what) const;

 private:
  static constexpr std::size_t kNotSelected = SIZE_MAX;

  static void take_field(void* field, std::size_t length, void* self) noexcept;
  static void take_end_of_record(int, void* self) noexcept;
  void add_field(std::string_view text);
  void end_record();

  void read_header();
  bool read_block();
  void parse_line();
  void parse_end();
  void check_text(std::string_view bytes) const;
  void throw_failure();

  std::string name_;
  char delimiter_;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
  uint64_t size_ = 0;
  off_t start_ = 0;  // of the table; standard input may be read from elsewhere than its beginning
  uint64_t bytes_read_ = 0;

  std::vector<char> block_;
  std::string_view rest_;  // of the block: what has not been parsed yet
  bool is_at_end_ = false;

  struct Parser : csv_parser {
    Parser() : csv_parser{} {}
    ~Parser() { csv_free(this); }
  };
  Parser parser_;
  std::exception_ptr callback_failure_;  // which must not pass through the parser

  std::vector<std::string> column_names_;
  std::vector<std::size_t> places_;  // of columns of the file in the records; or kNotSelected
  Records* records_ = nullptr;       // null while the header is read
  std::size_t fields_ = 0;           // that the current record has so far
  bool is_in_record_ = false;
  bool ended_by_return_ = false;  // the last line; a line feed that follows belongs to it
  std::size_t bytes_in_records_ = 0;
  uint64_t line_ = 1;
  uint64_t record_line_ = 1;  // where the current record begins
};

#endif
