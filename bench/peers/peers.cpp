#include "bench/peers/peers.h"

namespace bench {

std::vector<Row> peer_rows(const std::regex& selection) {
  std::vector<Row> selected;
  for (auto* of_library : {
           standard_library_rows,
#ifdef BENCH_HAS_VOLK
           volk_rows,
#endif
#ifdef BENCH_HAS_OPENCV
           opencv_rows,
#endif
#ifdef BENCH_HAS_EIGEN
           eigen_rows,
#endif
#ifdef BENCH_HAS_BOOST
           boost_rows,
#endif
#ifdef BENCH_HAS_HIGHWAY
           highway_rows,
#endif
       }) {
    for (Row row : of_library()) {
      row.short_len = 0;
      if (row.fits(selection)) selected.push_back(row);
    }
  }
  return selected;
}

}  // namespace bench
