// Drivers that walk an array to a single result.
#ifndef ZIVKS_CORE_REDUCE_H
#define ZIVKS_CORE_REDUCE_H

#include "core/loops.h"

namespace zivks {

// `step` over consecutive registers, one state for all of them.
template <class T, class State, class Step, size_t... K>
ZIVKS_INLINE State reduce_steps(std::index_sequence<K...>, const T* src, State state, Step step) {
  ((state = step(state, load(src + K * kRegisterElements<T>))), ...);
  return state;
}

// The steps that cover elements i to last - 1, fewer than 2 * Steps.
template <size_t Steps, class T, class State, class Step>
ZIVKS_INLINE State reduce_rest(const T* src, size_t i, size_t last, State state, Step step) {
  constexpr size_t N = kRegisterElements<T>;
  if (i + (Steps - 1) * N < last) {
    state = reduce_steps(std::make_index_sequence<Steps>(), src + i, state, step);
    i += Steps * N;
  }
  if constexpr (Steps > 1) state = reduce_rest<Steps / 2>(src, i, last, state, step);
  return state;
}

// Runs `step` over an array of at least one register, four running states side by side, and merges these with
// `combine`. Elements at the end may be met twice and each state begins with `start`, so the reduction has to
// be one for which that makes no difference.
template <class T, class State, class Step, class Combine>
[[gnu::flatten]] State reduce_registers(const T* src, size_t len, State start, Step step, Combine combine) {
  constexpr size_t N = kRegisterElements<T>;
  constexpr size_t kSteps = kTurnRegisters / 4;  // of each state in a turn
  constexpr auto steps = std::make_index_sequence<kSteps>();
  State state = start;
  size_t i = 0;
  if (len >= 4 * kSteps * N) {
    State second = start, third = start, fourth = start;
    for (; i + 4 * kSteps * N <= len; i += 4 * kSteps * N) {
      state = reduce_steps(steps, src + i, state, step);
      second = reduce_steps(steps, src + i + kSteps * N, second, step);
      third = reduce_steps(steps, src + i + 2 * kSteps * N, third, step);
      fourth = reduce_steps(steps, src + i + 3 * kSteps * N, fourth, step);
    }
    state = combine(combine(state, second), combine(third, fourth));
  }
  const size_t last = len - N;
  return step(reduce_rest<2 * kSteps>(src, i, last, state, step), load(src + last));
}

// All elements of an array of less than 2 * C, and at least one, some of them repeatedly: 2 * C or a smaller
// power of two in a register that they fill all over. C elements are at most half a register.
template <size_t C, class T>
ZIVKS_INLINE Register<T> load_repeatedly(const T* src, size_t len) {
  if (C == 1 || len >= C) {
    return Register<T>(repeat_bottom<2 * C * sizeof(T)>(load_two<C * sizeof(T)>(src, src + len - C)));
  } else if constexpr (C > 1) {
    return load_repeatedly<C / 2>(src, len);
  }
}

}  // namespace zivks

#endif
