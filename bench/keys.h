// Keys to be sorted, filled into kSrc. The usual random values repeat so soon that a branch predictor would learn
// them.
#ifndef BENCH_KEYS_H
#define BENCH_KEYS_H

#include <cstdint>
#include <random>

#include "bench/arrays.h"

namespace bench {

template <class T, class KeyAt>
void fill_source(const Arrays& arrays, int32_t len, KeyAt key_at) {
  auto* const keys = static_cast<T*>(arrays.array(0));
  for (int32_t i = 0; i < len; ++i) keys[i] = static_cast<T>(key_at(i));
}

template <class T>
void random_keys(const Arrays& arrays, int32_t len) {
  std::mt19937 generator;
  fill_source<T>(arrays, len, [&](int32_t) { return static_cast<int32_t>(generator()); });
}
template <class T>
void rising_keys(const Arrays& arrays, int32_t len) {
  fill_source<T>(arrays, len, [](int32_t i) { return i; });
}
template <class T>
void few_distinct_keys(const Arrays& arrays, int32_t len) {
  std::mt19937 generator;
  fill_source<T>(arrays, len, [&](int32_t) { return generator() % 8; });
}

}  // namespace bench

#endif
