// Counting the elements between two bounds.
#include <zivks/statistics.h>

#include <functional>
#include <limits>

#include "core/checks.h"
#include "core/reduce.h"

using namespace zivks;

namespace {

// The values above one bound and below another, both excluded. Moved down by an offset, modulo 2^32, they are
// the least of all integers, so that one comparison finds them.
class OpenRange {
 public:
  OpenRange(int32_t lower, int32_t upper)
      : offset_(broadcast(static_cast<uint32_t>(lower) + 1 + kSign)),
        end_(broadcast(
            static_cast<int32_t>(static_cast<uint32_t>(upper) - static_cast<uint32_t>(lower) - 1 - kSign))) {}

  // All ones, that is minus one, in the lanes that lie in the range.
  ZIVKS_INLINE I32 contains(I32 x) const { return I32(U32(x) - offset_) < end_; }

 private:
  static constexpr uint32_t kSign = 0x80000000;

  U32 offset_;
  I32 end_;
};

// A lane has room for the count of the longest array.
[[gnu::flatten]] int32_t count(const int32_t* src, size_t len, OpenRange range) {
  constexpr size_t N = kRegisterElements<int32_t>, kTurn = kTurnRegisters * N;
  const auto add_found = [=](I32 state, I32 x) { return state + range.contains(x); };
  I32 found = {};
  size_t i = 0;
  if (len < N) {  // one by one in the first lane; what counts in the other lanes is not read
    for (; i < len; ++i) found = add_found(found, I32(load_bottom<sizeof(int32_t)>(src + i)));
    return -found[0];
  }
  if (kAligns && len > kTurn) {
    i = bytes_unaligned(src) / sizeof(int32_t);
    found = range.contains(load(src)) & ~lanes_from<int32_t>(i);
  }
  const size_t end = i + ((len - i) & ~(kTurn - 1));
  FourStates<I32> counters = {found, {}, {}, {}};
  counters.turns(src + i, end - i, add_found);
  found = counters.combined(std::plus());
  for (i = end; i + N <= len; i += N) found = add_found(found, load(src + i));
  // The last register, without what has been counted.
  if (i < len) found += range.contains(load(src + len - N)) & lanes_from<int32_t>(N - (len - i));
  return -reduce_add(found);
}

}  // namespace

ZIVKStatus ZIVKS_CountInRange_32s(const int32_t* src, int32_t len, int32_t* pCount, int32_t lowerBound,
                                  int32_t upperBound) {
  if (ZIVKStatus status = check_arrays(len, src, pCount)) return status;
  const bool is_empty = lowerBound == std::numeric_limits<int32_t>::max() || lowerBound + 1 >= upperBound;
  *pCount = is_empty ? 0 : count(src, static_cast<size_t>(len), OpenRange(lowerBound, upperBound));
  return ZIVK_STS_NO_ERR;
}
