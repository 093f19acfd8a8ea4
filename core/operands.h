// The operands of the drivers: an array, an array of packed elements, an array of complex numbers, two arrays
// that hold the parts of complex numbers, a constant.
//
// An operand that is read gives lanes from element i on, or those of both ends of a short array; one that is
// written takes them. Besides, an operand tells
//
//   Element           the type that its registers hold; complex numbers stand as their parts
//   kStepRegisters    registers for each kRegisterElements<Element> elements
//   kElementBytes     bytes in memory of an element, a complex number being one element
//   kGroup            elements that belong together, such as the parts of a complex number: a loop begins with
//                     the first of a group
//   memory()          where it begins
//   from(i)           the operand that begins at element i
//   prefetch<n>(i)    gives hints for the n elements from i on, at the operand's distance, if it has one
//   read_ahead<n>(i)  gives hints far ahead of these elements, where an operand is worth it
//
// and one that is written
//
//   kCanAlign             whether elements can be aligned to registers; if so, it has
//   elements_unaligned()  the number of elements before the first that is aligned to a register
//   is_aligned(i)         whether element i is aligned to a register
//   stream(i, lanes)      store() past the caches, at an aligned element
#ifndef ZIVKS_CORE_OPERANDS_H
#define ZIVKS_CORE_OPERANDS_H

#include <zivks/types.h>

#include <algorithm>
#include <type_traits>
#include <utility>

#include "core/prefetch.h"
#include "core/vector/lanes.h"

namespace zivks {

// An array. With a distance, walking it is accompanied by prefetch hints that many bytes ahead.
template <class Pointed, size_t distance = 0, Prefetch hint = Prefetch::kRead>
struct Array {
  using Element = std::remove_const_t<Pointed>;
  static constexpr size_t kStepRegisters = 1, kElementBytes = sizeof(Element), kGroup = 1;
  static constexpr bool kCanAlign = true;

  Pointed* data;

  template <size_t N>
  ZIVKS_INLINE Lanes<Element, N> load(size_t i) const {
    if constexpr (N < kRegisterElements<Element>) {
      return {{Register<Element>(load_bottom<N * sizeof(Element)>(data + i))}};
    } else {
      return load_registers<N>(data + i, std::make_index_sequence<N / kRegisterElements<Element>>());
    }
  }

  template <size_t N>
  ZIVKS_INLINE void store(size_t i, Lanes<Element, N> value) const {
    static_assert(N >= kRegisterElements<Element>);
    store_registers(data + i, value, std::make_index_sequence<N / kRegisterElements<Element>>());
  }

  template <size_t N>
  ZIVKS_INLINE void stream(size_t i, Lanes<Element, N> value) const {
    stream_registers(data + i, value, std::make_index_sequence<N / kRegisterElements<Element>>());
  }

  // The first `end` and the last `end` elements of an array of `len`, end < len <= 2 * end <= N, side by side
  // in the first lanes. The ends may share elements: with an end of 4, an array of six is in the lanes as
  // elements 0 1 2 3 and 2 3 4 5. An array of one element is both ends, of 1, too.
  template <size_t N, size_t end>
  ZIVKS_INLINE Lanes<Element, N> load_ends(size_t len) const {
    constexpr size_t bytes = end * sizeof(Element);
    if constexpr (bytes < kRegisterBytes) {
      return {{Register<Element>(load_two<bytes>(data, data + len - end))}};
    } else {
      return load_end_registers<N, end>(len, std::make_index_sequence<Lanes<Element, N>::kParts>());
    }
  }

  template <size_t N, size_t end>
  ZIVKS_INLINE void store_ends(size_t len, Lanes<Element, N> value) const {
    constexpr size_t bytes = end * sizeof(Element);
    if constexpr (bytes < kRegisterBytes) {
      store_two<bytes>(data, data + len - end, U64(value.part[0]));
    } else {
      store_end_registers<end>(len, value, std::make_index_sequence<bytes / kRegisterBytes>());
    }
  }

  template <size_t elements>
  ZIVKS_INLINE void prefetch(size_t i) const {
    prefetch_ahead<distance, elements * sizeof(Element), hint>(data + i);
  }
  template <size_t elements>
  ZIVKS_INLINE void read_ahead(size_t i) const {
    zivks::read_ahead<elements * sizeof(Element)>(data + i);
  }

  const void* memory() const { return data; }
  ZIVKS_INLINE Array from(size_t i) const { return {data + i}; }
  ZIVKS_INLINE size_t elements_unaligned() const { return bytes_unaligned(data) / sizeof(Element); }
  bool is_aligned(size_t i) const { return bytes_unaligned(data + i) == 0; }

 private:
  static constexpr size_t kElements = kRegisterElements<Element>;

  template <size_t N, size_t... K>
  ZIVKS_INLINE static Lanes<Element, N> load_registers(const Element* from, std::index_sequence<K...>) {
    return {{zivks::load(from + K * kElements)...}};
  }
  template <size_t N, size_t... K>
  ZIVKS_INLINE static void store_registers(Element* to, Lanes<Element, N> value, std::index_sequence<K...>) {
    (zivks::store(to + K * kElements, value.part[K]), ...);
  }
  template <size_t N, size_t... K>
  ZIVKS_INLINE static void stream_registers(Element* to, Lanes<Element, N> value, std::index_sequence<K...>) {
    (zivks::stream(to + K * kElements, value.part[K]), ...);
  }
  template <size_t N, size_t end, size_t... K>
  ZIVKS_INLINE Lanes<Element, N> load_end_registers(size_t len, std::index_sequence<K...>) const {
    return {{load_end_register<end, K>(len)...}};
  }
  // The K-th register of the two ends, which need not fill all registers of the lanes.
  template <size_t end, size_t K>
  ZIVKS_INLINE Register<Element> load_end_register(size_t len) const {
    if constexpr (K < end / kElements) return zivks::load(data + K * kElements);
    if constexpr (K >= end / kElements && K < 2 * end / kElements)
      return zivks::load(data + len - 2 * end + K * kElements);
    return Register<Element>{};
  }
  template <size_t end, size_t N, size_t... K>
  ZIVKS_INLINE void store_end_registers(size_t len, Lanes<Element, N> value,
                                        std::index_sequence<K...>) const {
    (zivks::store(data + K * kElements, value.part[K]), ...);
    (zivks::store(data + len - end + K * kElements, value.part[K + end / kElements]), ...);
  }
};

// An array of elements two of which belong together.
template <class Pointed, size_t distance = 0, Prefetch hint = Prefetch::kRead>
struct ArrayOfPairs : Array<Pointed, distance, hint> {
  static constexpr size_t kGroup = 2;

  ZIVKS_INLINE ArrayOfPairs from(size_t i) const { return {Array<Pointed, distance, hint>::from(i)}; }
};

// An array of elements of three bytes, lowest first, which kernels see as 32-bit integers. Loading extends them
// with zeros or, to a signed type, with the sign; storing drops the upper byte.
template <class Pointed, class Widened>
struct PackedArray {
  using Element = uint8_t;  // so that a step is a whole number of kTriples
  static constexpr size_t kStepRegisters = 1, kElementBytes = 3, kGroup = 1;
  static constexpr bool kCanAlign = false;

  Pointed* bytes;

  template <size_t N>
  ZIVKS_INLINE Lanes<Widened, N> load(size_t i) const {
    return load_registers<N>(bytes + 3 * i, kRegistersOf<N>);
  }
  template <size_t N>
  ZIVKS_INLINE void store(size_t i, Lanes<Widened, N> value) const {
    store_pieces(bytes + 3 * i, lift<uint32_t>([](auto x) { return U32(x); }, value).part,
                 std::make_index_sequence<N / kTriples>());
  }

  template <size_t N, size_t end>
  ZIVKS_INLINE Lanes<Widened, N> load_ends(size_t len) const {
    const uint8_t* const last = bytes + 3 * (len - end);
    Lanes<Widened, N> value = {};
    if constexpr (fills_register(end)) {
      const auto words = join_triples<end>(load_few_triples<end>(bytes), load_few_triples<end>(last));
      value.part[0] = widen_triple_words<Widened>(words);
    } else if constexpr (end % kTriples == 0) {
      set_registers<0>(value, load_registers<end>(bytes, kRegistersOf<end>), kRegistersOf<end>);
      set_registers<kParts<end>>(value, load_registers<end>(last, kRegistersOf<end>), kRegistersOf<end>);
    } else {  // on Arm only: put together in memory
      uint8_t both[3 * N] = {};
      std::memcpy(both, bytes, 3 * end);
      std::memcpy(both + 3 * end, last, 3 * end);
      value = load_registers<N>(both, kRegistersOf<N>);
    }
    return value;
  }
  template <size_t N, size_t end>
  ZIVKS_INLINE void store_ends(size_t len, Lanes<Widened, N> value) const {
    uint8_t* const last = bytes + 3 * (len - end);
    const auto elements = lift<uint32_t>([](auto x) { return U32(x); }, value);
    if constexpr (fills_register(end)) {
      const TripleWords words = narrow_triples_to_words(elements.part[0]);
      store_few_triples<end>(bytes, words);
      store_few_triples<end>(last, upper_triples<end>(words));
    } else if constexpr (end % kTriples == 0) {
      constexpr auto kPieces = std::make_index_sequence<end / kTriples>();
      store_pieces(bytes, elements.part, kPieces);
      store_pieces(last, elements.part + kParts<end>, kPieces);
    } else {
      uint8_t both[3 * N];
      store_pieces(both, elements.part, std::make_index_sequence<N / kTriples>());
      std::memcpy(bytes, both, 3 * end);
      std::memcpy(last, both + 3 * end, 3 * end);
    }
  }

  template <size_t>
  ZIVKS_INLINE void prefetch(size_t) const {}
  template <size_t>
  ZIVKS_INLINE void read_ahead(size_t) const {}

  const void* memory() const { return bytes; }
  ZIVKS_INLINE PackedArray from(size_t i) const { return {bytes + 3 * i}; }

 private:
  template <size_t N>
  static constexpr size_t kParts = Lanes<Widened, N>::kParts;
  template <size_t N>
  static constexpr auto kRegistersOf = std::make_index_sequence<kParts<N>>();

  // Whether both ends have room in one register, and in words on the way there.
  static constexpr bool fills_register(size_t end) { return 2 * end <= kRegisterElements<Widened>; }

  template <size_t N, size_t... K>
  ZIVKS_INLINE static Lanes<Widened, N> load_registers(const uint8_t* from, std::index_sequence<K...>) {
    static_assert(N % kTriples == 0);
    return {{load_widened_triples<Widened, K>(from)...}};
  }
  template <size_t first, size_t N, size_t part, size_t... K>
  ZIVKS_INLINE static void set_registers(Lanes<Widened, N>& value, Lanes<Widened, part> from,
                                         std::index_sequence<K...>) {
    ((value.part[first + K] = from.part[K]), ...);
  }
  // kTriples elements at a time.
  template <size_t... I>
  ZIVKS_INLINE static void store_pieces(uint8_t* to, const U32* elements, std::index_sequence<I...>) {
    constexpr size_t kRegisters = kTriples / kRegisterElements<uint32_t>;
    (store_narrowed_triples(to + I * 3 * kTriples, elements + I * kRegisters), ...);
  }
};

template <class Widened, class Pointed>
ZIVKS_INLINE PackedArray<Pointed, Widened> packed(Pointed* bytes) {
  return {bytes};
}

// An array of floats to be written, of which a kernel gives float64 values; they are rounded in the current
// mode.
struct NarrowedArray {
  using Element = float;
  static constexpr size_t kStepRegisters = 1, kElementBytes = sizeof(float), kGroup = 1;
  static constexpr bool kCanAlign = true;

  Array<float> floats;

  template <size_t N>
  ZIVKS_INLINE void store(size_t i, Lanes<double, N> value) const {
    store_pairs(floats.data + i, value, std::make_index_sequence<N / kRegisterElements<float>>());
  }
  template <size_t N>
  ZIVKS_INLINE void stream(size_t i, Lanes<double, N> value) const {
    floats.template stream<N>(i, convert<float>(value));
  }
  template <size_t N, size_t end>
  ZIVKS_INLINE void store_ends(size_t len, Lanes<double, N> value) const {
    floats.template store_ends<N, end>(len, convert<float>(value));
  }
  template <size_t>
  ZIVKS_INLINE void prefetch(size_t) const {}

  const void* memory() const { return floats.memory(); }
  ZIVKS_INLINE NarrowedArray from(size_t i) const { return {floats.from(i)}; }
  ZIVKS_INLINE size_t elements_unaligned() const { return floats.elements_unaligned(); }
  bool is_aligned(size_t i) const { return floats.is_aligned(i); }

 private:
  template <size_t N, size_t... K>
  ZIVKS_INLINE static void store_pairs(float* to, Lanes<double, N> value, std::index_sequence<K...>) {
    (store_narrowed(to + K * kRegisterElements<float>, value.part[2 * K], value.part[2 * K + 1]), ...);
  }
};

// An array of complex numbers, given as their parts in turn: re, im, re, im ...
template <class Pointed, size_t distance = 0, Prefetch hint = Prefetch::kRead>
struct ComplexArray {
  using Element = std::remove_const_t<Pointed>;
  static constexpr size_t kStepRegisters = 2, kElementBytes = 2 * sizeof(Element), kGroup = 1;
  static constexpr bool kCanAlign = true;

  Pointed* parts;

  template <size_t N>
  ZIVKS_INLINE ComplexLanes<Element, N> load(size_t i) const {
    return split_registers<N>(std::make_index_sequence<N / kElements>(),
                              [&](size_t k) { return load_deinterleaved(parts + 2 * (i + k * kElements)); });
  }

  template <size_t N>
  ZIVKS_INLINE void store(size_t i, ComplexLanes<Element, N> value) const {
    Array<Pointed>{parts}.template store<2 * N>(2 * i, merge_registers(value, kMerged<N>));
  }
  template <size_t N>
  ZIVKS_INLINE void stream(size_t i, ComplexLanes<Element, N> value) const {
    Array<Pointed>{parts}.template stream<2 * N>(2 * i, merge_registers(value, kMerged<N>));
  }

  template <size_t N, size_t end>
  ZIVKS_INLINE ComplexLanes<Element, N> load_ends(size_t len) const {
    const auto both = Array<Pointed>{parts}.template load_ends<2 * N, 2 * end>(2 * len);
    return split_registers<N>(std::make_index_sequence<N / kElements>(),
                              [&](size_t k) { return deinterleave(both.part[2 * k], both.part[2 * k + 1]); });
  }

  template <size_t N, size_t end>
  ZIVKS_INLINE void store_ends(size_t len, ComplexLanes<Element, N> value) const {
    const auto both = merge_registers(value, kMerged<N>);
    Array<Pointed>{parts}.template store_ends<2 * N, 2 * end>(2 * len, both);
  }

  template <size_t elements>
  ZIVKS_INLINE void prefetch(size_t i) const {
    prefetch_ahead<distance, 2 * elements * sizeof(Element), hint>(parts + 2 * i);
  }
  template <size_t elements>
  ZIVKS_INLINE void read_ahead(size_t i) const {
    zivks::read_ahead<2 * elements * sizeof(Element)>(parts + 2 * i);
  }

  const void* memory() const { return parts; }
  ZIVKS_INLINE ComplexArray from(size_t i) const { return {parts + 2 * i}; }
  ZIVKS_INLINE size_t elements_unaligned() const { return bytes_unaligned(parts) / kElementBytes; }
  bool is_aligned(size_t i) const { return bytes_unaligned(parts + 2 * i) == 0; }

 private:
  static constexpr size_t kElements = kRegisterElements<Element>;

  template <size_t N>
  static constexpr auto kMerged = std::make_index_sequence<2 * N / kElements>();

  template <size_t N, class Split, size_t... K>
  ZIVKS_INLINE static ComplexLanes<Element, N> split_registers(std::index_sequence<K...>, Split split) {
    const RegisterPair<Register<Element>> pair[] = {split(K)...};
    return {{{pair[K].first...}}, {{pair[K].second...}}};
  }
  template <size_t N, size_t... K>
  ZIVKS_INLINE static Lanes<Element, 2 * N> merge_registers(ComplexLanes<Element, N> value,
                                                            std::index_sequence<K...>) {
    const auto half = [&](size_t k) {
      const auto [low, high] = interleave(value.re.part[k / 2], value.im.part[k / 2]);
      return k % 2 == 0 ? low : high;
    };
    return {{half(K)...}};
  }
};

// Two arrays that take the real and the imaginary parts of complex numbers.
template <class T>
struct SplitArrays {
  using Element = T;
  static constexpr size_t kStepRegisters = 2, kElementBytes = 2 * sizeof(T), kGroup = 1;
  static constexpr bool kCanAlign = true;

  Array<T> re, im;

  template <size_t N>
  ZIVKS_INLINE void store(size_t i, ComplexLanes<T, N> value) const {
    re.template store<N>(i, value.re);
    im.template store<N>(i, value.im);
  }
  template <size_t N>
  ZIVKS_INLINE void stream(size_t i, ComplexLanes<T, N> value) const {
    re.template stream<N>(i, value.re);
    im.template stream<N>(i, value.im);
  }
  template <size_t N, size_t end>
  ZIVKS_INLINE void store_ends(size_t len, ComplexLanes<T, N> value) const {
    re.template store_ends<N, end>(len, value.re);
    im.template store_ends<N, end>(len, value.im);
  }
  template <size_t>
  ZIVKS_INLINE void prefetch(size_t) const {}

  const void* memory() const { return re.memory(); }
  ZIVKS_INLINE SplitArrays from(size_t i) const { return {re.from(i), im.from(i)}; }
  // By the first array; the second may be aligned differently.
  ZIVKS_INLINE size_t elements_unaligned() const { return re.elements_unaligned(); }
  bool is_aligned(size_t i) const { return re.is_aligned(i) && im.is_aligned(i); }
};

// Not an array but a constant, which repeats for ever: one element, or a pattern of as many as `group`. The arrays
// that a pattern is used with are a whole number of patterns long.
template <class T, size_t group = 1>
struct Repeated {
  using Element = T;
  static constexpr size_t kStepRegisters = 1, kElementBytes = 0, kGroup = group;

  Register<T> pattern;

  template <size_t N>
  ZIVKS_INLINE Lanes<T, N> load(size_t) const {
    return fill<N>(std::make_index_sequence<Lanes<T, N>::kParts>());
  }
  template <size_t N, size_t end>
  ZIVKS_INLINE Lanes<T, N> load_ends(size_t) const {
    return load<N>(0);
  }
  template <size_t>
  ZIVKS_INLINE void prefetch(size_t) const {}
  template <size_t>
  ZIVKS_INLINE void read_ahead(size_t) const {}

  const void* memory() const { return nullptr; }
  ZIVKS_INLINE Repeated from(size_t) const { return *this; }

 private:
  template <size_t N, size_t... K>
  ZIVKS_INLINE Lanes<T, N> fill(std::index_sequence<K...>) const {
    return {{(static_cast<void>(K), pattern)...}};
  }
};

// Plain pointers stand for arrays.
template <class T>
ZIVKS_INLINE Array<T> as_operand(T* data) {
  return {data};
}
template <class Operand>
ZIVKS_INLINE Operand as_operand(Operand operand) {
  return operand;
}

// Where there are no hints, one instance of a loop serves all distances.
template <size_t distance>
inline constexpr size_t kHintDistance = kPrefetches ? distance : 0;

// An array to be read with prefetch hints `distance` bytes ahead.
template <size_t distance, Prefetch hint = Prefetch::kRead, class T>
ZIVKS_INLINE Array<const T, kHintDistance<distance>, hint> prefetched(const T* data) {
  return {data};
}

}  // namespace zivks

#endif
