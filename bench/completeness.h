#ifndef BENCH_COMPLETENESS_H
#define BENCH_COMPLETENESS_H

namespace bench {

// Whether every function of tests/functions.def that works on arrays has a row. Names those without one on
// standard error.
bool rows_are_complete();

}  // namespace bench

#endif
