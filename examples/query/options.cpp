#include "options.h"

#include <charconv>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "examples/arguments.h"

const char kUsage[] =
    "usage: query [OPTION]... [FILE]\n"
    "Answers a question about a table, the CSV file FILE; - reads standard input, and the default is\n"
    "" QUERY_DEFAULT_FILE
    ".\n"
    "Its first record names the columns; an empty field is null.\n"
    "\n"
    "One row for each group:\n"
    "  --group-by COLUMN  equal values make a group; several such options, equal values of all\n"
    "  --max COLUMN       largest value of a group, or of the table if it is not grouped\n"
    "  --min COLUMN       smallest value\n"
    "  --count            number of rows\n"
    "  --top K COLUMN     only the K groups with the largest values of a column of the answer,\n"
    "                     the largest first; the maximum of COLUMN, if the answer has none of it\n"
    "\n"
    "Rows of the table, if nothing above but --top is given:\n"
    "  --top K COLUMN     only the K rows with the largest values, the largest first\n"
    "\n"
    "  --order-by COLUMN  sorts the answer, smallest value first, null before all values;\n"
    "                     of several such options, the first counts most\n"
    "  --descending       turns round the order of the --order-by before it\n"
    "\n"
    "Columns of the answer are called as they are headed, such as 'max(size)', or just 'size'.\n"
    "What ties is in the order of the file. Texts are compared by their bytes.\n"
    "\n"
    "  --type COLUMN=TYPE  integer (of 64 bits), decimal (20 digits before the point and 18 behind)\n"
    "                      or text; otherwise the first of these that all values of the column fit\n"
    "  --delimiter C       what separates fields, in place of a comma\n"
    "\n"
    "The file is read once, in batches, and may be longer than memory: held are the groups or the\n"
    "top rows, only for --order-by without any the table. Types are found in the first batch; if a\n"
    "value further on does not fit, the file is read again, and standard input is refused.\n";

namespace {

std::size_t parse_count(const std::string& text) {
  int32_t count = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, count);
  if (error != std::errc() || rest != end || count < 1) {
    throw std::runtime_error("--top: '" + text + "' is no number of rows from 1 to 2147483647");
  }
  return static_cast<std::size_t>(count);
}

void parse_type(const std::string& text, Question& question) {
  const std::size_t split = text.rfind('=');
  const std::string type = split == std::string::npos ? "" : text.substr(split + 1);
  for (const Type known : {Type::kInteger, Type::kDecimal, Type::kText}) {
    if (type == name_of(known)) {
      question.types[text.substr(0, split)] = known;
      return;
    }
  }
  throw std::runtime_error("--type: '" + text + "' is not COLUMN=integer, COLUMN=decimal or COLUMN=text");
}

}  // namespace

Options parse_options(int argc, char** argv) {
  using Function = Question::Function;
  Options options;
  Question& question = options.question;
  for (Arguments arguments(argc, argv); !arguments.is_empty();) {
    const std::string option = arguments.take();
    const auto value = [&] { return arguments.take_value(option); };
    if (option == "--help") {
      options.help = true;
    } else if (option == "--group-by") {
      question.group_by.push_back(value());
    } else if (option == "--max") {
      question.computed.push_back({Function::kMax, value()});
    } else if (option == "--min") {
      question.computed.push_back({Function::kMin, value()});
    } else if (option == "--count") {
      question.computed.push_back({Function::kCount, ""});
    } else if (option == "--top") {
      if (question.top) throw std::runtime_error("--top is given twice");
      const std::size_t count = parse_count(value());
      question.top = {count, value()};
    } else if (option == "--order-by") {
      question.order_by.push_back({value(), Direction::kAscending});
    } else if (option == "--descending") {
      if (question.order_by.empty()) throw std::runtime_error("--descending has no --order-by before it");
      question.order_by.back().direction = Direction::kDescending;
    } else if (option == "--type") {
      parse_type(value(), question);
    } else if (option == "--delimiter") {
      const std::string delimiter = value();
      if (delimiter.size() != 1 || std::string_view("\"\r\n").find(delimiter) != std::string_view::npos) {
        throw std::runtime_error("--delimiter: '" + delimiter + "' cannot separate fields");
      }
      options.delimiter = delimiter[0];
    } else if (option.size() > 1 && option[0] == '-') {
      throw std::runtime_error("there is no option " + option + "; see --help");
    } else if (!options.file.empty()) {
      throw std::runtime_error("two files are named: '" + options.file.string() + "' and '" + option + "'");
    } else {
      options.file = option;
    }
  }
  if (!options.help && question.is_empty()) throw std::runtime_error("nothing is asked; see --help");
  if (options.file.empty()) options.file = QUERY_DEFAULT_FILE;
  return options;
}
