// Drivers that walk an array to a single result.
#ifndef ZIVKS_CORE_REDUCE_H
#define ZIVKS_CORE_REDUCE_H

#include "core/loops.h"

namespace zivks {

// Runs `step` over an array of at least one register, four running states side by side, and merges these with
// `combine`. Elements at the end may be met twice and each state begins with `start`, so the reduction has to
// be one for which that makes no difference.
template <class T, class State, class Step, class Combine>
[[gnu::flatten]] State reduce_registers(const T* src, size_t len, State start, Step step, Combine combine) {
  constexpr size_t N = kRegisterElements<T>;
  State state = start;
  size_t i = 0;
  if (len >= 4 * N) {
    State second = start, third = start, fourth = start;
    for (; i + 4 * N <= len; i += 4 * N) {
      state = step(state, load(src + i));
      second = step(second, load(src + i + N));
      third = step(third, load(src + i + 2 * N));
      fourth = step(fourth, load(src + i + 3 * N));
    }
    state = combine(combine(state, second), combine(third, fourth));
  }
  const size_t last = len - N;
  for (; i < last; i += N) state = step(state, load(src + i));
  return step(state, load(src + last));
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
