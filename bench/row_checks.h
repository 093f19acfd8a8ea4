#ifndef BENCH_ROW_CHECKS_H
#define BENCH_ROW_CHECKS_H

namespace bench {

// Whether the rows are fit to be measured: every function of core/functions.def that works on arrays has
// one, and what a row compares does the same work, that is writes the same on data without special values.
// Names the others on standard error.
bool rows_are_sound();

}  // namespace bench

#endif
