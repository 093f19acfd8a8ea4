#include <algorithm>
#include <cstring>
#include <numeric>
#include <vector>

#include "bench/keys.h"
#include "bench/peers/peers.h"
#include "bench/radix_keys.h"

namespace bench {
namespace {

struct Memcpy {
  template <class T>
  void operator()(const T* src, T* dst, int32_t len) const {
    std::memcpy(dst, src, static_cast<std::size_t>(len) * sizeof(T));
  }
};

struct Memmove {
  template <class T>
  void operator()(const T* src, T* dst, int32_t len) const {
    std::memmove(dst, src, static_cast<std::size_t>(len) * sizeof(T));
  }
};

struct Memset {
  void operator()(uint8_t val, uint8_t* dst, int32_t len) const {
    std::memset(dst, val, static_cast<std::size_t>(len));
  }
  template <class T>
  void operator()(T* dst, int32_t len) const {
    std::memset(dst, 0, static_cast<std::size_t>(len) * sizeof(T));
  }
};

struct ReverseCopy {
  template <class T>
  void operator()(const T* src, T* dst, int32_t len) const {
    std::reverse_copy(src, src + len, dst);
  }
};

struct ReverseInPlace {
  template <class T>
  void operator()(T* srcDst, int32_t len) const {
    std::reverse(srcDst, srcDst + len);
  }
};

struct MaxElement {
  template <class T>
  void operator()(const T* src, int32_t len, T* maximum) const {
    *maximum = *std::max_element(src, src + len);
  }
  template <class T>
  void operator()(const T* src, int32_t len, T* maximum, int32_t* index) const {
    const T* const found = std::max_element(src, src + len);
    *maximum = *found;
    *index = static_cast<int32_t>(found - src);
  }
};

struct MinmaxElement {
  template <class T>
  void operator()(const T* src, int32_t len, T* minimum, T* maximum) const {
    const auto [low, high] = std::minmax_element(src, src + len);
    *minimum = *low;
    *maximum = *high;
  }
};

struct LowerBoundEach {
  void operator()(const uint16_t* src, uint16_t* dst, int32_t* indices, int32_t len, const uint16_t* table,
                  int32_t table_len) const {
    for (int32_t i = 0; i < len; ++i) {
      const uint16_t* const above = std::lower_bound(table, table + table_len, src[i]);
      indices[i] = nearer_neighbour(table, table_len, static_cast<int32_t>(above - table), src[i]);
      dst[i] = table[indices[i]];
    }
  }
};

struct StdSort {
  template <class T>
  void operator()(T* srcDst, int32_t len, void* = nullptr) const {
    std::sort(srcDst, srcDst + len);
  }
};

// An array of positions is sorted, and the keys are brought into that order.
struct StdStableSort {
  template <class T>
  void operator()(T* srcDst, int32_t* positions, int32_t len) const {
    std::iota(positions, positions + len, 0);
    std::stable_sort(positions, positions + len, [=](int32_t a, int32_t b) { return srcDst[a] < srcDst[b]; });
    const std::vector<T> keys(srcDst, srcDst + len);
    for (int32_t i = 0; i < len; ++i) srcDst[i] = keys[static_cast<std::size_t>(positions[i])];
  }
};

struct StdStableSortOfPositions {
  template <class T>
  void operator()(const T* src, int32_t, int32_t* positions, int32_t len, void*) const {
    std::iota(positions, positions + len, 0);
    std::stable_sort(positions, positions + len, [=](int32_t a, int32_t b) { return src[a] < src[b]; });
  }
};

struct StdPartialSort {
  template <class T>
  void operator()(const T* src, int32_t offset, int32_t, int32_t len, T* values, int32_t* indices, int32_t k,
                  int32_t, void* work) const {
    auto* const positions = static_cast<int32_t*>(work);
    std::iota(positions, positions + len, 0);
    std::partial_sort(positions, positions + k, positions + len,
                      [=](int32_t a, int32_t b) { return src[a] > src[b] || (src[a] == src[b] && a < b); });
    for (int32_t i = 0; i < k; ++i) {
      values[i] = src[positions[i]];
      indices[i] = positions[i] + offset;
    }
  }
};

constexpr char kNoNanRule[] = "depends on where a NaN stands";

}  // namespace

#define SORT_INDEX(T, function) \
  ROW(function, kPeer, StdStableSortOfPositions, kSrc, kNumber<sizeof(T)>, kDstIndx, kLen, radix::kPolicy)
#define KEYS(T) .filled_by(random_keys<T>).prepared_by(copy_source<T>).at(64 << 10)

std::vector<Row> standard_library_rows() {
  return {
      ROW(ZIVKS_Copy_8u, kPeer, Memcpy, kSrc, kDst, kLen).with("memcpy"),
      ROW(ZIVKS_Copy_32f, kPeer, Memcpy, kSrc, kDst, kLen).with("memcpy"),
      ROW(ZIVKS_Copy_64fc, kPeer, Memcpy, kSrc, kDst, kLen).with("memcpy"),
      ROW(ZIVKS_Move_8u, kPeer, Memmove, kSrc, kDst, kLen).with("memmove"),
      ROW(ZIVKS_Move_64f, kPeer, Memmove, kSrc, kDst, kLen).with("memmove"),
      ROW(ZIVKS_Set_8u, kPeer, Memset, kVal, kDst, kLen).with("memset"),
      ROW(ZIVKS_Zero_8u, kPeer, Memset, kDst, kLen).with("memset"),
      ROW(ZIVKS_Zero_64fc, kPeer, Memset, kDst, kLen).with("memset"),
      ROW(ZIVKS_Flip_8u, kPeer, ReverseCopy, kSrc, kDst, kLen).with("std::reverse_copy"),
      ROW(ZIVKS_Flip_32f, kPeer, ReverseCopy, kSrc, kDst, kLen).with("std::reverse_copy"),
      ROW(ZIVKS_Flip_64f, kPeer, ReverseCopy, kSrc, kDst, kLen).with("std::reverse_copy"),
      ROW(ZIVKS_Flip_16u_I, kPeer, ReverseInPlace, kSrcDst, kLen).with("std::reverse"),
      ROW(ZIVKS_Flip_32f_I, kPeer, ReverseInPlace, kSrcDst, kLen).with("std::reverse"),
      ROW(ZIVKS_Max_16s, kPeer, MaxElement, kSrc, kLen, kResult).with("std::max_element"),
      ROW(ZIVKS_Max_32f, kPeer, MaxElement, kSrc, kLen, kResult).with("std::max_element").but(kNoNanRule),
      ROW(ZIVKS_MaxIndx_32s, kPeer, MaxElement, kSrc, kLen, kResult, kIndx).with("std::max_element"),
      ROW(ZIVKS_MinMax_16s, kPeer, MinmaxElement, kSrc, kLen, kMin, kMax).with("std::minmax_element"),
      ROW(ZIVKS_FindNearest_16u, kPeer, LowerBoundEach, kSrc, kDst, kDstIndx, kLen, kTable<1024>,
          kNumber<1024>)
          .with("std::lower_bound"),
      ROW(ZIVKS_SortAscend_8u_I, kPeer, StdSort, kSrcDst, kLen) KEYS(uint8_t).with("std::sort"),
      ROW(ZIVKS_SortAscend_16u_I, kPeer, StdSort, kSrcDst, kLen) KEYS(uint16_t).with("std::sort"),
      ROW(ZIVKS_SortAscend_32s_I, kPeer, StdSort, kSrcDst, kLen) KEYS(int32_t).with("std::sort"),
      ROW(ZIVKS_SortIndexAscend_32s_I, kPeer, StdStableSort, kSrcDst, kDstIndx, kLen) KEYS(int32_t)
          .with("std::stable_sort")
          .but("keeps the order of equal keys"),
      ROW(ZIVKS_TopK_32s, kPeer, StdPartialSort, kSrc, kNumber<0>, kNumber<4>, kLen, kDst, kDstIndx,
          kNumber<1000>, kNumber<2>, kWork)
          .with("std::partial_sort")
          .filled_by(random_keys<int32_t>)
          .at(1 << 20),
      RADIX_SORT_ROWS(StdSort, "std::sort"),
      RANDOM_KEYS_ROWS(uint16_t, RADIX_SORT(uint16_t, ZIVKS_SortRadixAscend_16u_I, StdSort), "std::sort"),
      RANDOM_KEYS_ROWS(uint32_t, SORT_INDEX(uint32_t, ZIVKS_SortRadixIndexAscend_32u), "std::stable_sort"),
      OTHER_KEYS_ROWS(uint32_t, SORT_INDEX(uint32_t, ZIVKS_SortRadixIndexAscend_32u), "std::stable_sort"),
      RANDOM_KEYS_ROWS(double, SORT_INDEX(double, ZIVKS_SortRadixIndexAscend_64f), "std::stable_sort"),
  };
}

}  // namespace bench
