// The drivers: they walk arrays in registers, so that a family states its operation and nothing else.
//
// What a kernel reads and writes is told by operands: an array, an array of complex numbers, two arrays that
// hold the parts of complex numbers. A kernel takes the lanes of each source and returns those of the
// destination. The same kernel serves whole registers, the end of an array and arrays shorter than a
// register, so that there is no second statement of the operation that could drift from it.
#ifndef ZIVKS_CORE_LOOPS_H
#define ZIVKS_CORE_LOOPS_H

#include <zivks/types.h>

#include <algorithm>
#include <type_traits>
#include <utility>

#include "core/prefetch.h"
#include "core/vector/lanes.h"

namespace zivks {

// --- Operands --------------------------------------------------------------------------

// An array. With a distance, walking it is accompanied by prefetch hints that many bytes ahead.
template <class Pointed, size_t distance = 0, Prefetch hint = Prefetch::kRead>
struct Array {
  using Element = std::remove_const_t<Pointed>;
  static constexpr size_t kStepRegisters = 1;  // registers for each kRegisterElements<Element> elements

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

  // The first C and the last C elements of an array of `len`, C < len <= 2 * C <= N (or len = C = 1), side by
  // side in the first lanes. The two may share elements.
  template <size_t N, size_t C>
  ZIVKS_INLINE Lanes<Element, N> load_ends(size_t len) const {
    constexpr size_t bytes = C * sizeof(Element);
    if constexpr (bytes < kRegisterBytes) {
      return {{Register<Element>(load_two<bytes>(data, data + len - C))}};
    } else {
      return load_end_registers<N, C>(len, std::make_index_sequence<Lanes<Element, N>::kParts>());
    }
  }

  template <size_t N, size_t C>
  ZIVKS_INLINE void store_ends(size_t len, Lanes<Element, N> value) const {
    constexpr size_t bytes = C * sizeof(Element);
    if constexpr (bytes < kRegisterBytes) {
      store_two<bytes>(data, data + len - C, U64(value.part[0]));
    } else {
      store_end_registers<C>(len, value, std::make_index_sequence<bytes / kRegisterBytes>());
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
  template <size_t N, size_t C, size_t... K>
  ZIVKS_INLINE Lanes<Element, N> load_end_registers(size_t len, std::index_sequence<K...>) const {
    return {{load_end_register<C, K>(len)...}};
  }
  // The K-th register of the two ends, which need not fill all registers of the lanes.
  template <size_t C, size_t K>
  ZIVKS_INLINE Register<Element> load_end_register(size_t len) const {
    if constexpr (K < C / kElements) return zivks::load(data + K * kElements);
    if constexpr (K >= C / kElements && K < 2 * C / kElements)
      return zivks::load(data + len - 2 * C + K * kElements);
    return Register<Element>{};
  }
  template <size_t C, size_t N, size_t... K>
  ZIVKS_INLINE void store_end_registers(size_t len, Lanes<Element, N> value,
                                        std::index_sequence<K...>) const {
    (zivks::store(data + K * kElements, value.part[K]), ...);
    (zivks::store(data + len - C + K * kElements, value.part[K + C / kElements]), ...);
  }
};

// An array of elements of three bytes, lowest byte first, of which a kernel sees 32-bit integers: in those
// that it takes the upper byte is zero or, in signed ones, a copy of the sign; of those that it gives it is
// dropped.
template <class Pointed, class Widened>
struct PackedArray {
  using Element = uint8_t;  // so that a step is a whole number of kTriples
  static constexpr size_t kStepRegisters = 1;

  Pointed* bytes;

  template <size_t N>
  ZIVKS_INLINE Lanes<Widened, N> load(size_t i) const {
    return load_registers<N>(bytes + 3 * i, std::make_index_sequence<Lanes<Widened, N>::kParts>());
  }
  template <size_t N>
  ZIVKS_INLINE void store(size_t i, Lanes<Widened, N> value) const {
    store_registers(bytes + 3 * i, lift<uint32_t>([](auto x) { return U32(x); }, value),
                    std::make_index_sequence<N / kTriples>());
  }

  // Pieces of odd sizes are put together in memory.
  template <size_t N, size_t C>
  ZIVKS_INLINE Lanes<Widened, N> load_ends(size_t len) const {
    uint8_t both[3 * N] = {};
    std::memcpy(both, bytes, 3 * C);
    std::memcpy(both + 3 * C, bytes + 3 * (len - C), 3 * C);
    return PackedArray<const uint8_t, Widened>{both}.template load<N>(0);
  }
  template <size_t N, size_t C>
  ZIVKS_INLINE void store_ends(size_t len, Lanes<Widened, N> value) const {
    uint8_t both[3 * N];
    PackedArray<uint8_t, Widened>{both}.template store<N>(0, value);
    std::memcpy(bytes, both, 3 * C);
    std::memcpy(bytes + 3 * (len - C), both + 3 * C, 3 * C);
  }

  template <size_t>
  ZIVKS_INLINE void prefetch(size_t) const {}

 private:
  template <size_t N, size_t... K>
  ZIVKS_INLINE static Lanes<Widened, N> load_registers(const uint8_t* from, std::index_sequence<K...>) {
    static_assert(N % kTriples == 0);
    return {{load_widened_triples<Widened, K>(from)...}};
  }
  template <size_t N, size_t... I>
  ZIVKS_INLINE static void store_registers(uint8_t* to, Lanes<uint32_t, N> value, std::index_sequence<I...>) {
    constexpr size_t kRegisters = kTriples / kRegisterElements<uint32_t>;
    (store_narrowed_triples(to + I * 3 * kTriples, value.part + I * kRegisters), ...);
  }
};

template <class Operand>
inline constexpr size_t kElementBytes = sizeof(typename Operand::Element);
template <class Pointed, class Widened>
inline constexpr size_t kElementBytes<PackedArray<Pointed, Widened>> = 3;

template <class Widened, class Pointed>
ZIVKS_INLINE PackedArray<Pointed, Widened> packed(Pointed* bytes) {
  return {bytes};
}

// An array of complex numbers, given as their parts in turn: re, im, re, im ...
template <class Pointed, size_t distance = 0, Prefetch hint = Prefetch::kRead>
struct ComplexArray {
  using Element = std::remove_const_t<Pointed>;
  static constexpr size_t kStepRegisters = 2;

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

  template <size_t N, size_t C>
  ZIVKS_INLINE ComplexLanes<Element, N> load_ends(size_t len) const {
    const auto both = Array<Pointed>{parts}.template load_ends<2 * N, 2 * C>(2 * len);
    return split_registers<N>(std::make_index_sequence<N / kElements>(),
                              [&](size_t k) { return deinterleave(both.part[2 * k], both.part[2 * k + 1]); });
  }

  template <size_t N, size_t C>
  ZIVKS_INLINE void store_ends(size_t len, ComplexLanes<Element, N> value) const {
    const auto both = merge_registers(value, kMerged<N>);
    Array<Pointed>{parts}.template store_ends<2 * N, 2 * C>(2 * len, both);
  }

  template <size_t elements>
  ZIVKS_INLINE void prefetch(size_t i) const {
    prefetch_ahead<distance, 2 * elements * sizeof(Element), hint>(parts + 2 * i);
  }

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
  static constexpr size_t kStepRegisters = 2;

  Array<T> re, im;

  template <size_t N>
  ZIVKS_INLINE void store(size_t i, ComplexLanes<T, N> value) const {
    re.template store<N>(i, value.re);
    im.template store<N>(i, value.im);
  }
  template <size_t N, size_t C>
  ZIVKS_INLINE void store_ends(size_t len, ComplexLanes<T, N> value) const {
    re.template store_ends<N, C>(len, value.re);
    im.template store_ends<N, C>(len, value.im);
  }
  template <size_t>
  ZIVKS_INLINE void prefetch(size_t) const {}
};

// Not an array but a constant, which repeats for ever: one element, or a pattern of several. The arrays that
// it is used with are a whole number of patterns long.
template <class T>
struct Repeated {
  using Element = T;
  static constexpr size_t kStepRegisters = 1;

  Register<T> pattern;

  template <size_t N>
  ZIVKS_INLINE Lanes<T, N> load(size_t) const {
    return fill<N>(std::make_index_sequence<Lanes<T, N>::kParts>());
  }
  template <size_t N, size_t C>
  ZIVKS_INLINE Lanes<T, N> load_ends(size_t) const {
    return load<N>(0);
  }
  template <size_t>
  ZIVKS_INLINE void prefetch(size_t) const {}

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

// Without hints all distances are the same to the compiler.
template <size_t distance>
inline constexpr size_t kHintDistance = kPrefetches ? distance : 0;

// An array to be read with prefetch hints `distance` bytes ahead.
template <size_t distance, Prefetch hint = Prefetch::kRead, class T>
ZIVKS_INLINE Array<const T, kHintDistance<distance>, hint> prefetched(const T* data) {
  return {data};
}

// The kernel of a move.
inline constexpr auto unchanged = [](auto a) { return a; };

// --- Element-wise functions ------------------------------------------------------------

// Elements that one step of a kernel treats: they fill a register of the narrowest type. Where loads widen,
// they fill one of the destination, since then sources that are narrower are loaded in just the pieces that
// are wanted.
template <class Destination, class... Sources>
constexpr size_t step_elements() {
  constexpr size_t kDestination = sizeof(typename Destination::Element);
  return kRegisterBytes /
         (kWidensFromMemory ? kDestination : std::min({kDestination, sizeof(typename Sources::Element)...}));
}

template <class Operand, size_t N>
inline constexpr size_t kRegistersPerStep = (Operand::kStepRegisters *
                                             Lanes<typename Operand::Element, N>::kParts);

// Steps in a turn of the main loop: as many as fill kTurnRegisters of the operand that takes most of them.
template <size_t N, class Destination, class... Sources>
inline constexpr size_t kStepsPerTurn = std::max(size_t{1}, kTurnRegisters /
                                                                std::max({kRegistersPerStep<Destination, N>,
                                                                          kRegistersPerStep<Sources, N>...}));

// Loops that read more than they write gain from reading ahead in long arrays, others do not.
template <class Destination, class... Sources>
inline constexpr bool kReadsAhead = kReadAheadBytes > 0 &&
                                    ((kElementBytes<Sources> > kElementBytes<Destination>)&&...);

// An array of at most N elements. The largest power of two C below `len` is found; the first C and the last C
// elements, which together are the whole array, go through the kernel side by side, all of them loaded before
// any is stored.
template <size_t N, size_t C, class Destination, class Kernel, class... Sources>
ZIVKS_INLINE void map_ends(Destination dst, size_t len, Kernel kernel, Sources... src) {
  if (C == 1 || len > C) {
    dst.template store_ends<N, C>(len, kernel(src.template load_ends<N, C>(len)...));
  } else if constexpr (C > 1) {
    map_ends<N, C / 2>(dst, len, kernel, src...);
  }
}

template <size_t N, class Destination, class Result, size_t... Step>
ZIVKS_INLINE void store_steps(Destination dst, size_t i, const Result* result, std::index_sequence<Step...>) {
  (dst.template store<N>(i + Step * N, result[Step]), ...);
}
// Array by array, so that neighbouring stores can be paired.
template <size_t N, class T, class Result, size_t... Step>
ZIVKS_INLINE void store_steps(SplitArrays<T> dst, size_t i, const Result* result,
                              std::index_sequence<Step...>) {
  (dst.re.template store<N>(i + Step * N, result[Step].re), ...);
  (dst.im.template store<N>(i + Step * N, result[Step].im), ...);
}

// Consecutive steps from element i on. Where accesses to neighbouring registers pair, results are all
// computed before the first is stored; elsewhere one step follows the other.
template <size_t N, class Destination, class Kernel, size_t... Step, class... Sources>
ZIVKS_INLINE void map_steps(std::index_sequence<Step...> steps, Destination dst, size_t i, Kernel kernel,
                            Sources... src) {
  const auto result_at = [&](size_t at) { return kernel(src.template load<N>(at)...); };
  if constexpr (kAccessesPair) {
    const decltype(result_at(i)) result[] = {result_at(i + Step * N)...};
    store_steps<N>(dst, i, result, steps);
  } else {
    (dst.template store<N>(i + Step * N, result_at(i + Step * N)), ...);
  }
}

// The steps that cover elements i to last - 1, fewer than 2 * Steps; `last` needs a step of its own.
template <size_t N, size_t Steps, class Destination, class Kernel, class... Sources>
ZIVKS_INLINE void map_rest(Destination dst, size_t i, size_t last, Kernel kernel, Sources... src) {
  if (i + (Steps - 1) * N < last) {
    map_steps<N>(std::make_index_sequence<Steps>(), dst, i, kernel, src...);
    i += Steps * N;
  }
  if constexpr (Steps > 1) map_rest<N, Steps / 2>(dst, i, last, kernel, src...);
}

template <bool reads_ahead, class Destination, class Kernel, class... Sources>
[[gnu::flatten]] ZIVKStatus map_operands(Destination dst, size_t len, Kernel kernel, Sources... src) {
  constexpr size_t N = step_elements<Destination, Sources...>();
  constexpr size_t kSteps = kStepsPerTurn<N, Destination, Sources...>;
  constexpr size_t kTurn = N * kSteps;
  if (len <= kTurn) {
    map_ends<kTurn, kTurn / 2>(dst, len, kernel, src...);
    return ZIVK_STS_NO_ERR;
  }

  // The last step ends where the array ends and may share elements with the one before. Its result is
  // computed ahead of all stores, so that `dst` may be a source.
  const size_t last = len - N;
  const auto last_result = kernel(src.template load<N>(last)...);
  const size_t last_turn = len - kTurn;
  size_t i = 0;
  do {
    (src.template prefetch<kTurn>(i), ...);
    if constexpr (reads_ahead) (src.template read_ahead<kTurn>(i), ...);
    dst.template prefetch<kTurn>(i);
    map_steps<N>(std::make_index_sequence<kSteps>(), dst, i, kernel, src...);
    i += kTurn;
  } while (i <= last_turn);
  if constexpr (kSteps > 1) map_rest<N, kSteps / 2>(dst, i, last, kernel, src...);
  dst.template store<N>(last, last_result);
  return ZIVK_STS_NO_ERR;
}

// dst[i] = kernel(src[i]...) for `len` elements. `dst` may be the same array as a source of elements as wide
// as its own; other overlaps are not supported.
template <class Destination, class Kernel, class... Sources>
ZIVKS_INLINE ZIVKStatus map(Destination dst, size_t len, Kernel kernel, Sources... src) {
  using To = decltype(as_operand(dst));
  if constexpr (kReadsAhead<To, decltype(as_operand(src))...>) {
    if (reads_ahead(len * kElementBytes<To>))
      return map_operands<true>(as_operand(dst), len, kernel, as_operand(src)...);
  }
  return map_operands<false>(as_operand(dst), len, kernel, as_operand(src)...);
}

// For functions whose blocks of B elements and whose tail are required to differ: whole blocks go through
// `kernel`, the up to B - 1 elements behind them through `tail`, a function of one element of each source.
template <size_t B, class T, class Kernel, class Tail, class... S>
ZIVKS_INLINE void map_blocks(T* dst, size_t len, Kernel kernel, Tail tail, const S*... src) {
  const size_t blocks = len & ~(B - 1);
  if (blocks > 0) map(dst, blocks, kernel, src...);
  for (size_t i = blocks; i < len; ++i) dst[i] = tail(src[i]...);
}

}  // namespace zivks

#endif
