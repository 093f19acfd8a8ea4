// Reversal of the order of elements.
#include <zivks/movement.h>

#include <algorithm>
#include <utility>

#include "core/checks.h"

using namespace zivks;

namespace {

// The first `count` elements of the lanes, each of them of element_bytes, last one first.
template <size_t count, size_t element_bytes, class T, size_t N, size_t... K>
ZIVKS_INLINE Lanes<T, N> reverse_registers(Lanes<T, N> a, std::index_sequence<K...>) {
  constexpr size_t bytes = std::min(kRegisterBytes, count * sizeof(T));
  return {{reverse_bottom<element_bytes, bytes>(a.part[sizeof...(K) - 1 - K])...}};
}
template <size_t count, size_t element_bytes, class T, size_t N>
ZIVKS_INLINE Lanes<T, N> reverse_lanes(Lanes<T, N> a) {
  return reverse_registers<count, element_bytes>(a, std::make_index_sequence<Lanes<T, count>::kParts>());
}

// An array of `len` words read from its end, element by element.
template <class Word, size_t element_bytes>
struct ReversedArray {
  using Element = Word;
  static constexpr size_t kStepRegisters = 1, kElementBytes = sizeof(Word),
                          kGroup = element_bytes / sizeof(Word);

  const Word* data;
  size_t len;

  template <size_t N>
  ZIVKS_INLINE Lanes<Word, N> load(size_t i) const {
    return reverse_lanes<N, element_bytes>(Array<const Word>{data}.template load<N>(len - i - N));
  }
  template <size_t N, size_t end>
  ZIVKS_INLINE Lanes<Word, N> load_ends(size_t) const {
    return reverse_lanes<2 * end, element_bytes>(Array<const Word>{data}.template load_ends<N, end>(len));
  }
  template <size_t>
  ZIVKS_INLINE void prefetch(size_t) const {}

  const void* memory() const { return data; }
  ZIVKS_INLINE ReversedArray from(size_t i) const { return {data, len - i}; }
};

// Elements are bits here: unsigned words of their width, or two 64-bit words for the widest.
template <class T>
using WordOf = UnsignedOf<sizeof(T)>;
template <class T>
size_t count_words(int32_t len) {
  return sizeof(T) / sizeof(WordOf<T>) * static_cast<size_t>(len);
}

template <class T>
ZIVKStatus flip(const T* src, T* dst, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  using Word = WordOf<T>;
  const size_t words = count_words<T>(len);
  return map(reinterpret_cast<Word*>(dst), words, unchanged,
             ReversedArray<Word, sizeof(T)>{reinterpret_cast<const Word*>(src), words});
}

// Exchanges registers from both ends until what is left in the middle fits into registers as a whole. Where
// it pays, the lower end is aligned to registers first: what either end gives to the other is computed ahead
// of the loop and stored after it, since the loop begins within it.
template <size_t element_bytes, class Word>
[[gnu::flatten]] void reverse_in_place(Word* words, size_t len) {
  constexpr size_t kReach = kTurnRegisters / 2 * kRegisterElements<Word>;
  constexpr size_t kElementWords = element_bytes / sizeof(Word);
  const Array<Word> array = {words};
  const auto exchange = [=](size_t first, size_t last) {
    const auto low = array.template load<kReach>(first);
    const auto high = array.template load<kReach>(last);
    array.template store<kReach>(first, reverse_lanes<kReach, element_bytes>(high));
    array.template store<kReach>(last, reverse_lanes<kReach, element_bytes>(low));
  };
  size_t first = 0, last = len;
  if (kAligns && len > 4 * kReach && array.elements_unaligned() % kElementWords == 0) {
    constexpr size_t N = kRegisterElements<Word>;
    const auto low = reverse_lanes<N, element_bytes>(array.template load<N>(0));
    const auto high = reverse_lanes<N, element_bytes>(array.template load<N>(len - N));
    first = array.elements_unaligned();
    last = len - first;
    for (; last - first > 2 * kReach; first += kReach) exchange(first, last -= kReach);
    array.template store<N>(0, high);
    array.template store<N>(len - N, low);
  } else {
    for (; last - first > 2 * kReach; first += kReach) exchange(first, last -= kReach);
  }
  const size_t left = last - first;
  map_ends<2 * kReach, kReach>(Array<Word>{words + first}, left, unchanged,
                               ReversedArray<Word, element_bytes>{words + first, left});
}

template <class T>
ZIVKStatus flip_in_place(T* srcDst, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, srcDst)) return status;
  reverse_in_place<sizeof(T)>(reinterpret_cast<WordOf<T>*>(srcDst), count_words<T>(len));
  return ZIVK_STS_NO_ERR;
}

// The narrow forms are defined by an exchange of blocks of eight bytes from both ends. It does not reverse an
// array whose last two blocks reach beyond each other, for then they exchange anew what lies on either side
// of the middle. That is so when len modulo two blocks is a block and r elements, with r neither 0 nor a
// block less one element: r elements on either side of the middle keep their places.
template <class T>
ZIVKStatus flip_in_place_by_blocks(T* srcDst, int32_t len) {
  if (ZIVKStatus status = flip_in_place(srcDst, len)) return status;
  constexpr size_t kBlock = sizeof(uint64_t) / sizeof(T);
  const auto count = static_cast<size_t>(len);
  const size_t middle = count % (2 * kBlock);
  if (middle <= kBlock || middle == 2 * kBlock - 1) return ZIVK_STS_NO_ERR;
  T* low = srcDst + (count - middle) / 2;
  T* high = low + middle;
  for (T* const end = low + (middle - kBlock); low < end; ++low) std::swap(*low, *--high);
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_Flip_8u(const uint8_t* src, uint8_t* dst, int32_t len) { return flip(src, dst, len); }
ZIVKStatus ZIVKS_Flip_16u(const uint16_t* src, uint16_t* dst, int32_t len) { return flip(src, dst, len); }
ZIVKStatus ZIVKS_Flip_32f(const float* src, float* dst, int32_t len) { return flip(src, dst, len); }
ZIVKStatus ZIVKS_Flip_64f(const double* src, double* dst, int32_t len) { return flip(src, dst, len); }
ZIVKStatus ZIVKS_Flip_32fc(const ZIVK32fc* src, ZIVK32fc* dst, int32_t len) { return flip(src, dst, len); }
ZIVKStatus ZIVKS_Flip_64fc(const ZIVK64fc* src, ZIVK64fc* dst, int32_t len) { return flip(src, dst, len); }

ZIVKStatus ZIVKS_Flip_8u_I(uint8_t* srcDst, int32_t len) { return flip_in_place_by_blocks(srcDst, len); }
ZIVKStatus ZIVKS_Flip_16u_I(uint16_t* srcDst, int32_t len) { return flip_in_place_by_blocks(srcDst, len); }
ZIVKStatus ZIVKS_Flip_32f_I(float* srcDst, int32_t len) { return flip_in_place(srcDst, len); }
ZIVKStatus ZIVKS_Flip_64f_I(double* srcDst, int32_t len) { return flip_in_place(srcDst, len); }
ZIVKStatus ZIVKS_Flip_32fc_I(ZIVK32fc* srcDst, int32_t len) { return flip_in_place(srcDst, len); }
ZIVKStatus ZIVKS_Flip_64fc_I(ZIVK64fc* srcDst, int32_t len) { return flip_in_place(srcDst, len); }
