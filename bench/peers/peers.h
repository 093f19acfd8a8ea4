// Rows that set the library against routines of other libraries, one file a library. Those of the C and C++
// standard libraries are always there, the others where their library is installed.
//
// The variant of such a row is the routine's name. Where the routine does not keep the library's rules, say for
// NaN or saturation, a remark tells which; without a remark its results have to be the same.
#ifndef BENCH_PEERS_PEERS_H
#define BENCH_PEERS_PEERS_H

#include <regex>
#include <vector>

#include "bench/row.h"

namespace bench {

std::vector<Row> standard_library_rows();
std::vector<Row> volk_rows();
std::vector<Row> opencv_rows();
std::vector<Row> eigen_rows();
std::vector<Row> boost_rows();
std::vector<Row> highway_rows();

// All, or those that the selection is found in.
std::vector<Row> peer_rows(const std::regex& selection);

}  // namespace bench

#endif
