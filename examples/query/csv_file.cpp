#include "csv_file.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t kBlockBytes = std::size_t{1} << 18;
constexpr std::size_t kRecordsAtOnce = std::size_t{1} << 16;
constexpr std::size_t kBytesAtOnce = std::size_t{1} << 24;
constexpr std::size_t kFieldGrowth = std::size_t{1} << 16;  // a long field is moved each time
constexpr std::size_t kLongestField = std::size_t{1} << 24;

// Spaces belong to the field that they stand in.
int is_no_space(unsigned char) { return 0; }

// Control characters that texts have.
bool is_layout(unsigned char c) { return '\t' <= c && c <= '\r'; }
bool is_no_text(unsigned char c) { return c < ' ' && !is_layout(c); }

}  // namespace

CsvFile::CsvFile(const std::filesystem::path& path, char delimiter)
    : name_(path == "-" ? "standard input" : path.string()),
      delimiter_(delimiter),
      file_(path == "-" ? stdin : std::fopen(path.c_str(), "rb"), std::fclose),
      block_(kBlockBytes) {
  if (!file_) throw std::runtime_error(name_ + ": " + std::strerror(errno));
  struct stat status;
  if (fstat(fileno(file_.get()), &status) == 0 && S_ISREG(status.st_mode)) {
    start_ = std::max(ftello(file_.get()), off_t{0});
    size_ = static_cast<uint64_t>(std::max(status.st_size - start_, off_t{0}));
  }
  read_header();
  select({});
}

void CsvFile::read_header() {
  csv_free(&parser_);
  if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI) != 0) throw std::bad_alloc();
  csv_set_delim(&parser_, static_cast<unsigned char>(delimiter_));
  csv_set_space_func(&parser_, is_no_space);
  csv_set_blk_size(&parser_, kFieldGrowth);
  records_ = nullptr;
  column_names_.clear();
  while (column_names_.empty() || is_in_record_) {
    if (is_at_end_) throw std::runtime_error(name_ + ": the file is empty");
    parse_line();
  }
}

void CsvFile::select(const std::vector<std::size_t>& columns) {
  places_.assign(column_names_.size(), kNotSelected);
  for (std::size_t i = 0; i < columns.size(); ++i) places_[columns[i]] = i;
}

void CsvFile::rewind() {
  if (fseeko(file_.get(), start_, SEEK_SET) != 0)
    throw std::runtime_error(name_ + ": " + std::strerror(errno));
  rest_ = {};
  is_at_end_ = is_in_record_ = ended_by_return_ = false;
  bytes_read_ = 0;
  fields_ = 0;
  line_ = 1;
  read_header();
}

void CsvFile::read(Records& records) {
  records.columns.resize(places_.size() -
                         static_cast<std::size_t>(std::count(places_.begin(), places_.end(), kNotSelected)));
  for (Texts& texts : records.columns) texts.clear();
  records.lines.clear();
  records_ = &records;
  bytes_in_records_ = 0;
  while (!is_at_end_ && records.lines.size() < kRecordsAtOnce && bytes_in_records_ < kBytesAtOnce)
    parse_line();
}

// What is parsed at once is a line, that its number be known and that no more than one record end in it. Lines end with
// a line feed, a carriage return or both.
void CsvFile::parse_line() {
  if (rest_.empty() && !read_block()) {
    parse_end();
    return;
  }
  auto line = rest_.substr(0, std::min(rest_.find('\n'), rest_.size() - 1) + 1);
  line = line.substr(0, std::min(line.find('\r'), line.size() - 1) + 1);
  rest_.remove_prefix(line.size());
  const bool ends_previous = ended_by_return_ && line == "\n";
  ended_by_return_ = line.back() == '\r';
  if (!is_in_record_) record_line_ = line_;
  is_in_record_ = is_in_record_ || line.find_first_not_of("\r\n") != std::string_view::npos;
  const std::size_t parsed =
      csv_parse(&parser_, line.data(), line.size(), take_field, take_end_of_record, this);
  if (callback_failure_) throw_failure();
  if (parsed != line.size()) {
    if (csv_error(&parser_) == CSV_ENOMEM) throw std::bad_alloc();
    throw failure(line_, "a quote stands within a field, where it has to be doubled and the field quoted");
  }
  if (csv_get_buffer_size(&parser_) > kLongestField) {
    throw failure(record_line_,
                  "a field longer than 16 MiB begins in this record; is a closing quote missing?");
  }
  if (ended_by_return_ || (line.back() == '\n' && !ends_previous)) ++line_;
}

void CsvFile::parse_end() {
  is_at_end_ = true;
  const int status = csv_fini(&parser_, take_field, take_end_of_record, this);
  if (callback_failure_) throw_failure();
  if (status != 0) throw failure(record_line_, "a quote that is opened in this record is never closed");
}

bool CsvFile::read_block() {
  const std::size_t count = std::fread(block_.data(), 1, block_.size(), file_.get());
  if (std::ferror(file_.get())) throw std::runtime_error(name_ + ": " + std::strerror(errno));
  rest_ = {block_.data(), count};
  check_text(rest_);
  if (bytes_read_ == 0 && rest_.substr(0, 3) == "\xEF\xBB\xBF") rest_.remove_prefix(3);  // byte order mark
  bytes_read_ += count;
  return count > 0;
}

void CsvFile::check_text(std::string_view bytes) const {
  bool is_text = true;
  for (const char c : bytes) is_text &= !is_no_text(static_cast<unsigned char>(c));
  if (is_text) return;
  const auto place = std::find_if(bytes.begin(), bytes.end(), is_no_text);
  const auto line = line_ + static_cast<uint64_t>(std::count(bytes.begin(), place, '\n'));
  char byte[8];
  std::snprintf(byte, sizeof byte, "0x%02X", static_cast<unsigned>(static_cast<unsigned char>(*place)));
  throw failure(line, std::string("a byte ") + byte + ": this is no text");
}

std::runtime_error CsvFile::failure(uint64_t line, const std::string& what) const {
  return std::runtime_error(name_ + ": line " + std::to_string(line) + ": " + what);
}

void CsvFile::throw_failure() { std::rethrow_exception(std::exchange(callback_failure_, nullptr)); }

void CsvFile::take_field(void* field, std::size_t length, void* self) noexcept {
  auto* const file = static_cast<CsvFile*>(self);
  if (file->callback_failure_) return;
  try {
    file->add_field({static_cast<const char*>(field), length});
  } catch (...) {
    file->callback_failure_ = std::current_exception();
  }
}

void CsvFile::take_end_of_record(int, void* self) noexcept {
  auto* const file = static_cast<CsvFile*>(self);
  if (file->callback_failure_) return;
  try {
    file->end_record();
  } catch (...) {
    file->callback_failure_ = std::current_exception();
  }
}

void CsvFile::add_field(std::string_view text) {
  const std::size_t field = fields_++;
  if (records_ == nullptr) {
    column_names_.emplace_back(text);
  } else if (field < places_.size() && places_[field] != kNotSelected) {
    records_->columns[places_[field]].push_back(text);
    bytes_in_records_ += text.size();
  }
}

void CsvFile::end_record() {
  if (records_ != nullptr) {
    if (fields_ != column_names_.size()) {
      throw failure(record_line_, std::to_string(fields_) + (fields_ == 1 ? " field" : " fields") +
                                      ", but the header names " + std::to_string(column_names_.size()) +
                                      (column_names_.size() == 1 ? " column" : " columns"));
    }
    records_->lines.push_back(record_line_);
  }
  fields_ = 0;
  is_in_record_ = false;
}
