#ifndef BENCH_ROW_CHECKS_H
#define BENCH_ROW_CHECKS_H

#include <string_view>
#include <vector>

#include "bench/row.h"

namespace bench {

// Of core/functions.def.
std::string_view family_of(std::string_view function);

// Whether every function of core/functions.def has a row, but for those of the families Memory and Handle and
// for in-place forms that do no more than call their twin. Names the others on standard error.
bool every_function_has_a_row();

// Whether the two calls of each row do the same work, that is write the same on data without special values.
// A peer may differ where a remark says so. Names the others on standard error.
bool calls_agree(const std::vector<Row>& rows);

}  // namespace bench

#endif
