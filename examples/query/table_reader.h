// Batches of typed columns from a CSV file.
#ifndef ZIVKS_EXAMPLES_QUERY_TABLE_READER_H
#define ZIVKS_EXAMPLES_QUERY_TABLE_READER_H

#include <optional>
#include <string>
#include <vector>

#include "column.h"
#include "csv_file.h"
#include "number.h"

struct SelectedColumn {
  std::size_t place;         // among the columns of the file
  std::optional<Type> type;  // that it has to have; or the narrowest that all values fit
};

// A text that cannot be read as a number.
struct Misfit {
  std::size_t row;
  Reading reading;
};

// The type of a column is found in the first batch: what are integers from there to the end of a file, nobody knows
// without reading it. If a value further on does not fit, the types are widened and the table begins anew.
class TableReader {
 public:
  TableReader(CsvFile& file, std::vector<SelectedColumn> selection);

  enum class Next {
    kBatch,
    kEnd,
    kBeginning,  // the table is read again with other types: the batches so far do not count
  };
  // Replaces the batch by the next one. Throws std::runtime_error with the line of a value that has no place in its
  // column, or that would take a second pass over a file that allows only one.
  Next read(Batch& batch);

  // Valid after the first batch, or the end, has been read.
  const std::vector<Type>& types() const { return types_; }

 private:
  Column typed(std::size_t column);
  void widen(std::size_t column, Type wider, const Misfit& misfit);

  CsvFile& file_;
  std::vector<SelectedColumn> selection_;
  std::vector<Type> types_;
  CsvFile::Records records_;
  bool is_first_ = true;
};

#endif
