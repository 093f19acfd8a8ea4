// Highway's vectorised quicksort, which chooses at run time, up to registers of 512 bits.
#include <hwy/contrib/sort/vqsort.h>

#include "bench/peers/peers.h"
#include "bench/radix_keys.h"

namespace bench {
namespace {

struct VectorisedQuicksort {
  template <class T>
  void operator()(T* srcDst, int32_t len, void*) const {
    hwy::Sorter()(srcDst, static_cast<std::size_t>(len), hwy::SortAscending());
  }
};

}  // namespace

std::vector<Row> highway_rows() { return {RADIX_SORT_ROWS(VectorisedQuicksort, "hwy::Sorter")}; }

}  // namespace bench
