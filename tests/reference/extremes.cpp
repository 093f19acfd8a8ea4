#include "reference/reference.h"

namespace zivks_test {
namespace {

enum class Extreme { kLeast, kGreatest };

template <class T>
constexpr bool kIsFloat = std::is_floating_point_v<T>;

// The number of elements in whole blocks of 32 bytes.
template <class T>
size_t block_elements(const std::vector<T>& samples) {
  return samples.size() / (32 / sizeof(T)) * (32 / sizeof(T));
}

template <class T>
T magnitude(T value) {
  if constexpr (kIsFloat<T>) {
    return bit_cast<T>(bit_cast<BitsOf<T>>(value) & ~(BitsOf<T>{1} << (8 * sizeof(T) - 1)));
  } else {
    return value == std::numeric_limits<T>::min() ? std::numeric_limits<T>::max()
                                                  : static_cast<T>(value < 0 ? -value : value);
  }
}

// In blocks the result is the plain quiet NaN if either is a NaN, and -0 is below +0.
template <class T>
T in_block(Extreme extreme, T a, T b) {
  if constexpr (kIsFloat<T>) {
    if (std::isnan(a) || std::isnan(b)) return std::numeric_limits<T>::quiet_NaN();
    if (a == 0 && b == 0) return std::signbit(a) == (extreme == Extreme::kLeast) ? a : b;
  }
  return (a < b) == (extreme == Extreme::kLeast) ? a : b;
}

template <class T>
bool is_beyond(Extreme extreme, T running, T element) {
  return extreme == Extreme::kLeast ? element < running : element > running;
}

// In the tail an element replaces the running value only if it is strictly beyond it.
template <class T>
T in_tail(Extreme extreme, T running, T element) {
  return is_beyond(extreme, running, element) ? element : running;
}

// First the blocks, then the tail. The seed depends on whether there are blocks; if there are, the elements
// ahead of `first` are left out.
template <class T>
T extreme_of(Extreme extreme, const std::vector<T>& samples, T (*value)(T), T block_seed, T short_seed,
             size_t first = 0) {
  const size_t blocks = block_elements(samples);
  T running = blocks == 0 ? short_seed : block_seed;
  for (size_t i = blocks == 0 ? 0 : first; i < samples.size(); ++i) {
    running = i < blocks ? in_block(extreme, running, value(samples[i]))
                         : in_tail(extreme, running, value(samples[i]));
  }
  return running;
}

template <class T>
T itself(T value) {
  return value;
}
template <class T>
T least(const std::vector<T>& samples) {
  return extreme_of(Extreme::kLeast, samples, itself<T>, samples[0], samples[0]);
}
template <class T>
T greatest(const std::vector<T>& samples) {
  return extreme_of(Extreme::kGreatest, samples, itself<T>, samples[0], samples[0]);
}
template <class T>
std::pair<T, T> both(const std::vector<T>& samples) {
  return {least(samples), greatest(samples)};
}
template <class T>
T least_magnitude(const std::vector<T>& samples) {
  constexpr T kSeed = std::numeric_limits<T>::max();
  return extreme_of(Extreme::kLeast, samples, magnitude<T>, kSeed, kSeed);
}
template <class T>
T greatest_magnitude(const std::vector<T>& samples) {
  const T seed = kIsFloat<T> ? std::numeric_limits<T>::min() : samples[0];
  // 32-bit integers: the first block is left out, but its first element is the seed, with its sign.
  const size_t first = std::is_same_v<T, int32_t> ? 8 : 0;
  return extreme_of(Extreme::kGreatest, samples, magnitude<T>, seed, magnitude(samples[0]), first);
}

// The first block whose extreme is strictly beyond all earlier ones wins. Its elements are compared with that
// extreme one after the other; if none but the last is left, the last is the result without a comparison.
template <class T>
std::tuple<T, int32_t> position_of(Extreme extreme, const std::vector<T>& samples, T (*value)(T), T seed) {
  const size_t block = 32 / sizeof(T), blocks = block_elements(samples);
  T best = seed;
  size_t index = 0;
  for (size_t start = 0; start < blocks; start += block) {
    T of_block = value(samples[start]);
    for (size_t i = 1; i < block; ++i) of_block = in_block(extreme, of_block, value(samples[start + i]));
    if (!is_beyond(extreme, best, of_block)) continue;
    best = of_block;
    index = start;
  }
  if (blocks > 0) {
    const size_t last = index + block - 1;
    while (index < last && value(samples[index]) != best) ++index;
  }
  for (size_t i = blocks; i < samples.size(); ++i) {
    if (!is_beyond(extreme, best, value(samples[i]))) continue;
    best = value(samples[i]);
    index = i;
  }
  return {best, static_cast<int32_t>(index)};
}

template <class T>
std::tuple<T, int32_t> position_of_least(const std::vector<T>& samples) {
  return position_of(Extreme::kLeast, samples, itself<T>, samples[0]);
}
template <class T>
std::tuple<T, int32_t> position_of_greatest(const std::vector<T>& samples) {
  return position_of(Extreme::kGreatest, samples, itself<T>, samples[0]);
}
template <class T>
std::tuple<T, int32_t, T, int32_t> position_of_both(const std::vector<T>& samples) {
  return std::tuple_cat(position_of_least(samples), position_of_greatest(samples));
}
template <class T>
std::tuple<T, int32_t> position_of_least_magnitude(const std::vector<T>& samples) {
  return position_of(Extreme::kLeast, samples, magnitude<T>, std::numeric_limits<T>::max());
}
template <class T>
std::tuple<T, int32_t> position_of_greatest_magnitude(const std::vector<T>& samples) {
  return position_of(Extreme::kGreatest, samples, magnitude<T>, T{0});
}

template <class T>
void add_signed_type(References& references, const std::string& type) {
  references["ZIVKS_Min_" + type] = reduction(least<T>);
  references["ZIVKS_Max_" + type] = reduction(greatest<T>);
  references["ZIVKS_MinMax_" + type] = reduction(both<T>);
  references["ZIVKS_MinAbs_" + type] = reduction(least_magnitude<T>);
  references["ZIVKS_MaxAbs_" + type] = reduction(greatest_magnitude<T>);
  references["ZIVKS_MinIndx_" + type] = reduction(position_of_least<T>);
  references["ZIVKS_MaxIndx_" + type] = reduction(position_of_greatest<T>);
  references["ZIVKS_MinMaxIndx_" + type] = reduction(position_of_both<T>);
  if constexpr (!kIsFloat<T>) {
    references["ZIVKS_MinAbsIndx_" + type] = reduction(position_of_least_magnitude<T>);
    references["ZIVKS_MaxAbsIndx_" + type] = reduction(position_of_greatest_magnitude<T>);
  }
}

}  // namespace

References extremes_references() {
  References references = {{"ZIVKS_MinMax_8u", reduction(both<uint8_t>)},
                           {"ZIVKS_MinMax_16u", reduction(both<uint16_t>)},
                           {"ZIVKS_MinMax_32u", reduction(both<uint32_t>)},
                           {"ZIVKS_MinMaxIndx_8u", reduction(position_of_both<uint8_t>)},
                           {"ZIVKS_MinMaxIndx_16u", reduction(position_of_both<uint16_t>)},
                           {"ZIVKS_MinMaxIndx_32u", reduction(position_of_both<uint32_t>)}};
  add_signed_type<int16_t>(references, "16s");
  add_signed_type<int32_t>(references, "32s");
  add_signed_type<float>(references, "32f");
  add_signed_type<double>(references, "64f");
  return references;
}

}  // namespace zivks_test
