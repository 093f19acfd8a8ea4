// Test data: special values of each element type and reproducible pseudo-random arrays.
#ifndef ZIVKS_TESTS_GENERIC_VALUES_H
#define ZIVKS_TESTS_GENERIC_VALUES_H

#include <zivks/types.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

namespace zivks_test {

template <class To, class From>
To bit_cast(const From& from) {
  static_assert(sizeof(To) == sizeof(From));
  To to;
  std::memcpy(&to, &from, sizeof to);
  return to;
}

template <class T>
using BitsOf = std::conditional_t<
    sizeof(T) == 1, uint8_t,
    std::conditional_t<sizeof(T) == 2, uint16_t, std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>>>;

// A NaN from its bits: quiet or signalling, with a payload that is recognised again.
template <class T>
T nan_with_payload(bool quiet, bool negative, uint32_t payload = 0x1234) {
  using Bits = BitsOf<T>;
  constexpr int kMantissaBits = std::numeric_limits<T>::digits - 1;
  Bits bits = bit_cast<Bits>(std::numeric_limits<T>::infinity()) | Bits{payload};
  if (quiet) bits |= Bits{1} << (kMantissaBits - 1);
  if (negative) bits |= Bits{1} << (8 * sizeof(T) - 1);
  return bit_cast<T>(bits);
}

// Complex records and decimals consist of two parts, every other element of one.
template <class T, class = void>
struct ElementParts {
  using Part = T;
  static constexpr size_t kCount = 1;
};
template <class T>
struct ElementParts<T, std::void_t<decltype(T::re)>> {
  using Part = decltype(T::re);
  static constexpr size_t kCount = 2;
};
template <>
struct ElementParts<ZIVKDecimal128> {
  using Part = uint64_t;
  static constexpr size_t kCount = 2;
};
template <class T>
using PartOf = typename ElementParts<T>::Part;

// Limits and their neighbours, and values that arithmetic treats specially. Finite values come first.
template <class T>
const std::vector<T>& special_values() {
  using Limits = std::numeric_limits<T>;
  static const std::vector<T> values = [] {
    std::vector<T> list;
    if constexpr (std::is_floating_point_v<T>) {
      for (T value :
           {T{0}, T{0.5}, T{1}, T{1.5}, T{2.5}, T{3}, static_cast<T>(0x1.000001p+24), static_cast<T>(1e-30),
            T{1} + Limits::epsilon(), Limits::min(), Limits::min() - Limits::denorm_min(),
            Limits::denorm_min(), Limits::max(), Limits::max() / 2}) {
        list.insert(list.end(), {value, -value});
      }
      if constexpr (sizeof(T) == 8) {
        // Around what float32 can hold and where its rounding ties.
        for (T value : {0x1p-150, 0x1.000002p-150, 0x1.8p-149, 0x1.fffffefp+127, 0x1.ffffffp+127,
                        0x1.000001p+0, 0x1.000003p+0, 1e300}) {
          list.insert(list.end(), {value, -value});
        }
      }
      list.insert(list.end(), {Limits::infinity(), -Limits::infinity()});
      for (bool quiet : {true, false}) {
        for (bool negative : {true, false}) list.push_back(nan_with_payload<T>(quiet, negative));
      }
    } else {
      constexpr T kLow = Limits::min(), kHigh = Limits::max();
      for (T offset : {T{0}, T{1}, T{2}}) {
        list.insert(list.end(), {static_cast<T>(kLow + offset), static_cast<T>(kHigh - offset)});
      }
      for (int shift : {1, 2}) {
        for (T offset : {T{0}, T{1}}) list.push_back(static_cast<T>((kHigh >> shift) + offset));
      }
      for (int value : {-2, -1, 0, 1, 3, 100}) list.push_back(static_cast<T>(value));
      // Where float32 and float64 begin to round, and ties of that rounding.
      for (int digits : {24, 53}) {
        for (int offset : {0, 1, 2, 3}) {
          if (Limits::digits > digits) list.push_back(static_cast<T>((int64_t{1} << digits) + offset));
        }
      }
    }
    return list;
  }();
  return values;
}

// The special values of a float type, and numbers around ties and bounds of the rounding to integers.
template <class T>
std::vector<T> values_around_ties() {
  std::vector<T> values = special_values<T>();
  for (int digits : {0, 1, 2, 7, 8, 15, 16, 23, 24, 31, 32, 52, 53, 62, 63, 64}) {
    for (double offset : {-1.5, -1.0, -0.75, -0.5, -0.25, 0.0, 0.25, 0.5, 0.75, 1.0, 1.5}) {
      const T value = static_cast<T>(std::ldexp(1.0, digits) + offset);
      for (T near : {value, std::nextafter(value, T{0}), std::nextafter(value, 2 * value)}) {
        values.insert(values.end(), {near, -near});
      }
    }
  }
  return values;
}

template <class T>
size_t count_finite(const std::vector<T>& values) {
  size_t count = 0;
  for (T value : values) {
    if (std::isfinite(static_cast<double>(value))) ++count;
  }
  return count;
}

// All values of a type of 8 bits, of 16 bits too if `exhaustive`, else the special values.
template <class T>
std::vector<T> decisive_values(bool exhaustive) {
  if constexpr (std::is_integral_v<T> && sizeof(T) <= 2) {
    if (sizeof(T) == 1 || exhaustive) {
      std::vector<T> all(size_t{1} << (8 * sizeof(T)));
      for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<T>(i);
      return all;
    }
  }
  return special_values<T>();
}

// The same sequence on every machine (splitmix64).
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  uint64_t next() {
    uint64_t z = state_ += 0x9E3779B97F4A7C15;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
  }
  uint64_t below(uint64_t bound) { return next() % bound; }

 private:
  uint64_t state_;
};

// How many elements are special. A reduction of an array with NaN mostly returns NaN, so there are arrays
// without.
enum class Flavour { kFinite, kFewSpecial, kManySpecial };

template <class T>
T random_part(Random& random, Flavour flavour) {
  const std::vector<T>& special = special_values<T>();
  const uint64_t choice = random.next();
  if (flavour == Flavour::kFinite && choice % 8 == 0) return special[random.below(count_finite(special))];
  if (flavour == Flavour::kFewSpecial && choice % 64 == 0) return special[random.below(special.size())];
  if (flavour == Flavour::kManySpecial && choice % 4 == 0) return special[random.below(special.size())];
  const uint64_t bits = random.next();
  if constexpr (std::is_floating_point_v<T>) {
    if (flavour == Flavour::kManySpecial && choice % 4 == 1) return bit_cast<T>(static_cast<BitsOf<T>>(bits));
    const double magnitude = std::ldexp(static_cast<double>(bits >> 12), static_cast<int>(bits % 24) - 64);
    return static_cast<T>(bits & 0x800 ? -magnitude : magnitude);
  } else {
    // Small numbers as often as large ones, so that sums do not always saturate.
    return static_cast<T>(static_cast<std::make_signed_t<T>>(bits) >> (choice % 16 < 8 ? 0 : sizeof(T) * 4));
  }
}

}  // namespace zivks_test

#endif
