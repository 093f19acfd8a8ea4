// The walks for long arrays, on short ones: every part of a walk has to give the result of the plain one, wherever
// the arrays lie.
#include <gtest/gtest.h>

#include <vector>

#include "core/loops.h"

namespace zivks {
namespace {

constexpr size_t kLongest = 200, kOffsets = 9, kRoom = kLongest + kOffsets;

// Arrays of one type: two that are read, two that are written.
template <class T>
struct Arrays {
  std::vector<T> source[2], destination[2];

  Arrays() {
    for (size_t k = 0; k < 2; ++k) {
      destination[k].assign(2 * kRoom, T{});
      for (size_t i = 0; i < 2 * kRoom; ++i) source[k].push_back(static_cast<T>(7 * i + 3 * k + 1));
    }
  }
};

// Runs `walk(arrays, offset, len)` for every walk, and compares with the walk in the caches.
template <class T, class Run>
void expect_same_results(Run run) {
  for (size_t offset = 0; offset < kOffsets; ++offset) {
    for (size_t len = 65; len <= kLongest; ++len) {
      Arrays<T> expected, ahead, streamed;
      run(expected, offset, len, std::integral_constant<Walk, Walk::kInCaches>());
      run(ahead, offset, len, std::integral_constant<Walk, Walk::kReadsAhead>());
      run(streamed, offset, len, std::integral_constant<Walk, Walk::kStreams>());
      for (size_t k = 0; k < 2; ++k) {
        ASSERT_EQ(ahead.destination[k], expected.destination[k]) << "offset " << offset << ", length " << len;
        ASSERT_EQ(streamed.destination[k], expected.destination[k])
            << "offset " << offset << ", length " << len;
      }
    }
  }
}

// Streams only where map_long() would.
template <Walk walk, class Destination, class Kernel, class... Sources>
void walk_over(Destination dst, size_t len, Kernel kernel, Sources... src) {
  if (walk != Walk::kStreams || dst.is_aligned(first_turn<Sources...>(dst))) {
    map_array<walk>(dst, len, kernel, src...);
  } else {
    map_array<Walk::kInCaches>(dst, len, kernel, src...);
  }
}

TEST(Loops, WalksOverArraysAgree) {
  expect_same_results<int16_t>([](auto& arrays, size_t offset, size_t len, auto walk) {
    const Array<int16_t> dst = {arrays.destination[0].data() + offset};
    walk_over<decltype(walk)::value>(
        dst, len, [](auto a, auto b) { return add_saturating(a, b); },
        Array<const int16_t>{arrays.source[0].data()}, Array<const int16_t>{arrays.source[1].data() + 1});
    for (size_t i = 0; i < len; ++i) ASSERT_EQ(dst.data[i], arrays.source[0][i] + arrays.source[1][i + 1]);
  });
  expect_same_results<int32_t>([](auto& arrays, size_t offset, size_t len, auto walk) {
    const Array<int32_t> dst = {arrays.destination[0].data() + 2 * offset};
    walk_over<decltype(walk)::value>(
        dst, 2 * len, [](auto a, auto b) { return a + b; }, Array<const int32_t>{arrays.source[0].data()},
        Repeated<int32_t, 2>{interleave(broadcast(int32_t{100}), broadcast(int32_t{-1})).first});
    for (size_t i = 0; i < 2 * len; ++i)
      ASSERT_EQ(dst.data[i], arrays.source[0][i] + (i % 2 == 0 ? 100 : -1));
  });
}

TEST(Loops, WalksOverComplexNumbersAgree) {
  expect_same_results<float>([](auto& arrays, size_t offset, size_t len, auto walk) {
    const SplitArrays<float> dst = {{arrays.destination[0].data() + offset},
                                    {arrays.destination[1].data() + offset}};
    walk_over<decltype(walk)::value>(dst, len, unchanged, ComplexArray<const float>{arrays.source[0].data()});
    for (size_t i = 0; i < len; ++i) ASSERT_EQ(dst.im.data[i], arrays.source[0][2 * i + 1]);
  });
  expect_same_results<float>([](auto& arrays, size_t offset, size_t len, auto walk) {
    const ComplexArray<float> dst = {arrays.destination[0].data() + offset};
    walk_over<decltype(walk)::value>(
        dst, len, [](auto a, auto b) { return make_complex(a, b); },
        Array<const float>{arrays.source[0].data()}, Array<const float>{arrays.source[1].data()});
    for (size_t i = 0; i < len; ++i) ASSERT_EQ(dst.parts[2 * i + 1], arrays.source[1][i]);
  });
}

TEST(Loops, WalksThatNarrowAgree) {
  static const std::vector<double> doubles(kLongest, 1.0 / 3);
  expect_same_results<float>([](auto& arrays, size_t offset, size_t len, auto walk) {
    const NarrowedArray dst = {{arrays.destination[0].data() + offset}};
    walk_over<decltype(walk)::value>(dst, len, unchanged, Array<const double>{doubles.data()});
    for (size_t i = 0; i < len; ++i) ASSERT_EQ(dst.floats.data[i], 1.0F / 3);
  });
}

}  // namespace
}  // namespace zivks
