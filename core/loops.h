// The drivers: they walk arrays in registers, so that a family states its operation and nothing else.
//
// A kernel takes the lanes of each source and returns those of the destination; operands.h says what sources and
// destinations there are. The same kernel serves whole registers, the end of an array and arrays shorter than a
// register, so that there is no second statement of the operation that could drift from it.
#ifndef ZIVKS_CORE_LOOPS_H
#define ZIVKS_CORE_LOOPS_H

#include <zivks/types.h>

#include <algorithm>
#include <type_traits>
#include <utility>

#include "core/operands.h"

namespace zivks {

// The kernel of a move.
inline constexpr auto unchanged = [](auto a) { return a; };

// --- Element-wise functions ------------------------------------------------------------

// Elements that one step of a kernel treats: one register of the destination where loads widen, since a narrower
// source then loads only what is wanted, and elsewhere one register of the narrowest type.
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

// An array of at most N elements. The largest power of two `end` below `len` is found; the first `end` and the
// last `end` elements, which together are the whole array, go through the kernel side by side, all of them
// loaded before any is stored.
template <size_t N, size_t end, class Destination, class Kernel, class... Sources>
ZIVKS_INLINE void map_ends(Destination dst, size_t len, const Kernel& kernel, Sources... src) {
  if (end == 1 || len > end) {
    dst.template store_ends<N, end>(len, kernel(src.template load_ends<N, end>(len)...));
  } else if constexpr (end > 1) {
    map_ends<N, end / 2>(dst, len, kernel, src...);
  }
}

// How a long array is walked over.
enum class Walk {
  kInCaches,    // with the hints that the operands bring along
  kReadsAhead,  // with hints far ahead of the loads
  kStreams      // with stores past the caches, and with hints far ahead where they help
};

template <Walk walk, size_t N, class Destination, class Result>
ZIVKS_INLINE void store_step(Destination dst, size_t i, Result result) {
  if constexpr (walk == Walk::kStreams) {
    dst.template stream<N>(i, result);
  } else {
    dst.template store<N>(i, result);
  }
}
template <Walk walk, size_t N, class Destination, class Result, size_t... Step>
ZIVKS_INLINE void store_steps(Destination dst, size_t i, const Result* result, std::index_sequence<Step...>) {
  (store_step<walk, N>(dst, i + Step * N, result[Step]), ...);
}
// Array by array, so that neighbouring stores can be paired.
template <Walk walk, size_t N, class T, class Result, size_t... Step>
ZIVKS_INLINE void store_steps(SplitArrays<T> dst, size_t i, const Result* result,
                              std::index_sequence<Step...>) {
  (store_step<walk, N>(dst.re, i + Step * N, result[Step].re), ...);
  (store_step<walk, N>(dst.im, i + Step * N, result[Step].im), ...);
}

// Consecutive steps from element i on. Where accesses to neighbouring registers pair, results are all
// computed before the first is stored; elsewhere one step follows the other.
template <Walk walk, size_t N, class Destination, class Kernel, size_t... Step, class... Sources>
ZIVKS_INLINE void map_steps(std::index_sequence<Step...> steps, Destination dst, size_t i,
                            const Kernel& kernel, Sources... src) {
  const auto result_at = [&](size_t at) ZIVKS_INLINE_LAMBDA { return kernel(src.template load<N>(at)...); };
  if constexpr (kAccessesPair) {
    const decltype(result_at(i)) result[] = {result_at(i + Step * N)...};
    store_steps<walk, N>(dst, i, result, steps);
  } else {
    (store_step<walk, N>(dst, i + Step * N, result_at(i + Step * N)), ...);
  }
}

// The steps that cover elements i to last - 1, fewer than 2 * Steps. The step that begins at `last` is done
// elsewhere.
template <size_t N, size_t Steps, class Destination, class Kernel, class... Sources>
ZIVKS_INLINE void map_rest(Destination dst, size_t i, size_t last, const Kernel& kernel, Sources... src) {
  if (i + (Steps - 1) * N < last) {
    map_steps<Walk::kInCaches, N>(std::make_index_sequence<Steps>(), dst, i, kernel, src...);
    i += Steps * N;
  }
  if constexpr (Steps > 1) map_rest<N, Steps / 2>(dst, i, last, kernel, src...);
}

// In long arrays loops whose every source has wider elements than the destination gain from reading ahead, others
// do not.
template <class Destination, class... Sources>
inline constexpr bool kReadsAhead = kReadAheadBytes > 0 &&
                                    ((Sources::kElementBytes > Destination::kElementBytes) && ...);

// Whole turns, then single steps, up to the last step, which map_array() stores.
template <Walk walk, class Destination, class Kernel, class... Sources>
ZIVKS_INLINE void map_turns(Destination dst, size_t len, const Kernel& kernel, Sources... src) {
  constexpr size_t N = step_elements<Destination, Sources...>();
  constexpr size_t kSteps = kStepsPerTurn<N, Destination, Sources...>;
  constexpr size_t kTurn = N * kSteps;
  size_t i = 0;
  if (len >= kTurn) {
    const size_t last_turn = len - kTurn;
    do {
      (src.template prefetch<kTurn>(i), ...);
      if constexpr (walk != Walk::kInCaches && kReadsAhead<Destination, Sources...>)
        (src.template read_ahead<kTurn>(i), ...);
      dst.template prefetch<kTurn>(i);
      map_steps<walk, N>(std::make_index_sequence<kSteps>(), dst, i, kernel, src...);
      i += kTurn;
    } while (i <= last_turn);
  }
  if constexpr (walk != Walk::kInCaches) {
    for (; i < len - N; i += N) map_steps<walk, N>(std::index_sequence<0>(), dst, i, kernel, src...);
  } else if constexpr (kSteps > 1) {
    map_rest<N, kSteps / 2>(dst, i, len - N, kernel, src...);
  }
}

// Where the turns over an array begin: at an element that is aligned to a register and the first of its group,
// if there is one that close, else at the start.
template <class... Sources, class Destination>
ZIVKS_INLINE size_t first_turn(Destination dst) {
  constexpr size_t kGroup = std::max({Destination::kGroup, Sources::kGroup...});
  const size_t aligned = dst.elements_unaligned();
  return aligned % kGroup == 0 ? aligned : 0;
}

// An array of more than a turn.
//
// The last step ends where the array ends and may share elements with the one before. Its result is computed
// ahead of all stores, so that `dst` may be a source. So is the result of the first step where the turns begin
// within that step.
template <Walk walk, class Destination, class Kernel, class... Sources>
ZIVKS_INLINE void map_array(Destination dst, size_t len, const Kernel& given_kernel, Sources... src) {
  constexpr size_t N = step_elements<Destination, Sources...>();
  const Kernel kernel = given_kernel;  // of which the compiler knows that no store changes it
  const auto last_result = kernel(src.template load<N>(len - N)...);
  if constexpr (kAligns && Destination::kCanAlign) {
    const auto first_result = kernel(src.template load<N>(0)...);
    const size_t begin = first_turn<Sources...>(dst);
    map_turns<walk>(dst.from(begin), len - begin, kernel, src.from(begin)...);
    dst.template store<N>(0, first_result);
  } else {
    map_turns<walk>(dst, len, kernel, src...);
  }
  dst.template store<N>(len - N, last_result);
}

// Not inlined: it has two callers.
template <class Destination, class Kernel, class... Sources>
[[gnu::flatten, gnu::noinline]] ZIVKStatus map_in_caches(Destination dst, size_t len, const Kernel& kernel,
                                                         Sources... src) {
  map_array<Walk::kInCaches>(dst, len, kernel, src...);
  leave_registers();
  return ZIVK_STS_NO_ERR;
}

// An array for which reading ahead or streaming may pay. Streaming saves reading what is overwritten, but not where
// `dst` is read for its own sake.
template <class Destination, class Kernel, class... Sources>
[[gnu::flatten, gnu::noinline]] ZIVKStatus map_long(Destination dst, size_t len, const Kernel& kernel,
                                                    Sources... src) {
  if constexpr (kHasStreams && Destination::kCanAlign) {
    const bool in_place = ((src.memory() == dst.memory()) || ...);
    if (!in_place && dst.is_aligned(first_turn<Sources...>(dst)) &&
        streams(len * Destination::kElementBytes)) {
      map_array<Walk::kStreams>(dst, len, kernel, src...);
      order_streams();
      leave_registers();
      return ZIVK_STS_NO_ERR;
    }
  }
  if constexpr (kReadsAhead<Destination, Sources...>) {
    map_array<Walk::kReadsAhead>(dst, len, kernel, src...);
    leave_registers();
    return ZIVK_STS_NO_ERR;
  } else {
    return map_in_caches(dst, len, kernel, src...);
  }
}

template <size_t kTurn, class Destination, class Kernel, class... Sources>
[[gnu::flatten]] ZIVKStatus map_short(Destination dst, size_t len, const Kernel& kernel, Sources... src) {
  map_ends<kTurn, kTurn / 2>(dst, len, kernel, src...);
  leave_registers();
  return ZIVK_STS_NO_ERR;
}

template <class Destination, class Kernel, class... Sources>
ZIVKS_INLINE ZIVKStatus map_operands(Destination dst, size_t len, const Kernel& kernel, Sources... src) {
  constexpr size_t N = step_elements<Destination, Sources...>();
  constexpr size_t kTurn = N * kStepsPerTurn<N, Destination, Sources...>;
  if (len <= kTurn) return map_short<kTurn>(dst, len, kernel, src...);
  if (reads_ahead(len * Destination::kElementBytes)) return map_long(dst, len, kernel, src...);
  return map_in_caches(dst, len, kernel, src...);
}

// dst[i] = kernel(src[i]...) for `len` elements. `dst` may be the same array as a source of elements as wide
// as its own. Where kAligns is false, `dst` may also lie below a source in one array: nothing is stored
// before what lies at or above it has been loaded. Other overlaps are not supported.
template <class Destination, class Kernel, class... Sources>
ZIVKS_INLINE ZIVKStatus map(Destination dst, size_t len, const Kernel& kernel, Sources... src) {
  return map_operands(as_operand(dst), len, kernel, as_operand(src)...);
}

// The same with a kernel of registers of T.
template <class T, class Destination, class Kernel, class... Sources>
ZIVKS_INLINE ZIVKStatus map_registers(Destination dst, size_t len, const Kernel& kernel, Sources... src) {
  return map(
      dst, len, [kernel](auto... lanes) ZIVKS_INLINE_LAMBDA { return lift<T>(kernel, lanes...); }, src...);
}

// For functions whose blocks of B elements and whose tail are required to differ: whole blocks go through
// `kernel`, the up to B - 1 elements behind them through `tail`, a function of one element of each source.
template <size_t B, class T, class Kernel, class Tail, class... S>
ZIVKS_INLINE void map_blocks(T* dst, size_t len, const Kernel& kernel, const Tail& tail, const S*... src) {
  const size_t blocks = len & ~(B - 1);
  if (blocks > 0) map(dst, blocks, kernel, src...);
  for (size_t i = blocks; i < len; ++i) dst[i] = tail(src[i]...);
}

}  // namespace zivks

#endif
