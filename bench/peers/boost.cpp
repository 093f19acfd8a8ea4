// Boost's hybrid of radix sort and comparison sort.
#include <boost/sort/spreadsort/spreadsort.hpp>

#include "bench/peers/peers.h"
#include "bench/radix_keys.h"

namespace bench {
namespace {

struct Spreadsort {
  template <class T>
  void operator()(T* srcDst, int32_t len, void*) const {
    boost::sort::spreadsort::spreadsort(srcDst, srcDst + len);
  }
};

}  // namespace

std::vector<Row> boost_rows() { return {RADIX_SORT_ROWS(Spreadsort, "boost::spreadsort")}; }

}  // namespace bench
