// Drivers that walk an array to a single result.
#ifndef ZIVKS_CORE_REDUCE_H
#define ZIVKS_CORE_REDUCE_H

#include <algorithm>

#include "core/loops.h"

namespace zivks {

// `step` over consecutive registers, one state for all of them.
template <class T, class State, class Step, size_t... K>
ZIVKS_INLINE State reduce_steps(std::index_sequence<K...>, const T* src, State state, Step step) {
  ((state = step(state, load(src + K * kRegisterElements<T>))), ...);
  return state;
}

// The steps over an array of N to 2 * Steps * N elements: those from its start and those up to its end.
template <size_t Steps, class T, class State, class Step>
ZIVKS_INLINE State reduce_ends(const T* src, size_t len, State state, Step step) {
  constexpr size_t kReach = Steps * kRegisterElements<T>;
  constexpr auto steps = std::make_index_sequence<Steps>();
  if (Steps == 1 || len > kReach) {
    return reduce_steps(steps, src + len - kReach, reduce_steps(steps, src, state, step), step);
  } else if constexpr (Steps > 1) {
    return reduce_ends<Steps / 2>(src, len, state, step);
  }
}

// Four states that take turns, so that no step has to wait for the one before it.
template <class State>
struct FourStates {
  State first, second, third, fourth;

  template <size_t distance, class T, class Step>
  ZIVKS_INLINE void turn(const T* src, Step step) {
    constexpr size_t kTurn = kTurnRegisters * kRegisterElements<T>;
    constexpr auto quarter = std::make_index_sequence<kTurnRegisters / 4>();
    prefetch_ahead<distance, kTurn * sizeof(T)>(src);
    first = reduce_steps(quarter, src, first, step);
    second = reduce_steps(quarter, src + kTurn / 4, second, step);
    third = reduce_steps(quarter, src + kTurn / 2, third, step);
    fourth = reduce_steps(quarter, src + kTurn / 4 * 3, fourth, step);
  }
  // The turns that begin before src[end].
  template <size_t distance = 0, class T, class Step>
  ZIVKS_INLINE void turns(const T* src, size_t end, Step step) {
    constexpr size_t kTurn = kTurnRegisters * kRegisterElements<T>;
    size_t i = 0;
    if (reads_ahead(end * sizeof(T))) {
      for (; i < end; i += kTurn) {
        read_ahead<kTurn * sizeof(T)>(src + i);
        turn<distance>(src + i, step);
      }
    }
    for (; i < end; i += kTurn) turn<distance>(src + i, step);
  }
  template <class Combine>
  ZIVKS_INLINE State combined(Combine combine) const {
    return combine(combine(first, second), combine(third, fourth));
  }
};

// Runs `step` over an array of at least one register, in long arrays with four states, which `combine`
// merges. Elements may be met twice and each state begins with `start`, so the reduction has to be
// one for which that makes no difference.
template <size_t distance = 0, class T, class State, class Step, class Combine>
ZIVKS_INLINE State reduce_registers(const T* src, size_t len, State start, Step step, Combine combine) {
  constexpr size_t kTurn = kTurnRegisters * kRegisterElements<T>;
  if (len <= kTurn) return reduce_ends<kTurnRegisters / 2>(src, len, start, step);

  const size_t last_turn = len - kTurn;
  FourStates<State> states = {start, start, start, start};
  states.template turns<distance>(src, last_turn, step);
  states.template turn<distance>(src + last_turn, step);
  return states.combined(combine);
}

// The same, beginning where the array is aligned to registers if that pays: for arrays so long that one
// more step does not show.
template <size_t distance = 0, class T, class State, class Step, class Combine>
ZIVKS_INLINE State reduce_array(const T* src, size_t len, State start, Step step, Combine combine) {
  constexpr size_t kTurn = kTurnRegisters * kRegisterElements<T>;
  if (kAligns && len > 4 * kTurn) {
    const size_t skipped = bytes_unaligned(src) / sizeof(T);
    start = step(start, load(src));
    src += skipped;
    len -= skipped;
  }
  return reduce_registers<distance>(src, len, start, step, combine);
}

// All elements of an array of at most 2 * end, and at least one, some of them repeatedly: its two ends, of `end`
// elements or a smaller power of two, in a register that they fill all over. `end` is at most half a register.
template <size_t end, class T>
ZIVKS_INLINE Register<T> load_repeatedly(const T* src, size_t len) {
  if (end == 1 || len > end) {
    return Register<T>(repeat_bottom<2 * end * sizeof(T)>(load_two<end * sizeof(T)>(src, src + len - end)));
  } else if constexpr (end > 1) {
    return load_repeatedly<end / 2>(src, len);
  }
}

}  // namespace zivks

#endif
