#include "reference/reference.h"

namespace zivks_test {
namespace {

enum class Extreme { kLeast, kGreatest };

template <class T>
constexpr bool kIsFloat = std::is_floating_point_v<T>;

// Elements in the block pass: whole blocks of 32 bytes.
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

// In the block pass a NaN wins, as the plain quiet NaN, and -0 is below +0.
template <class T>
T in_block(Extreme extreme, T a, T b) {
  if constexpr (kIsFloat<T>) {
    if (std::isnan(a) || std::isnan(b)) return std::numeric_limits<T>::quiet_NaN();
    if (a == 0 && b == 0) return std::signbit(a) == (extreme == Extreme::kLeast) ? a : b;
  }
  return (a < b) == (extreme == Extreme::kLeast) ? a : b;
}

// In the tail only what is strictly beyond the running value replaces it.
template <class T>
T in_tail(Extreme extreme, T running, T element) {
  return (extreme == Extreme::kLeast ? element < running : element > running) ? element : running;
}

// Both passes over the elements from `first` on, seeded as there are blocks or not.
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
  // Of 32-bit integers the block pass leaves out the first block; its first element takes part with its sign.
  const size_t first = std::is_same_v<T, int32_t> ? 8 : 0;
  return extreme_of(Extreme::kGreatest, samples, magnitude<T>, seed, magnitude(samples[0]), first);
}

template <class T>
void add_signed_type(References& references, const std::string& type) {
  references["ZIVKS_Min_" + type] = reduction(least<T>);
  references["ZIVKS_Max_" + type] = reduction(greatest<T>);
  references["ZIVKS_MinMax_" + type] = reduction(both<T>);
  references["ZIVKS_MinAbs_" + type] = reduction(least_magnitude<T>);
  references["ZIVKS_MaxAbs_" + type] = reduction(greatest_magnitude<T>);
}

}  // namespace

References extremes_references() {
  References references = {{"ZIVKS_MinMax_8u", reduction(both<uint8_t>)},
                           {"ZIVKS_MinMax_16u", reduction(both<uint16_t>)},
                           {"ZIVKS_MinMax_32u", reduction(both<uint32_t>)}};
  add_signed_type<int16_t>(references, "16s");
  add_signed_type<int32_t>(references, "32s");
  add_signed_type<float>(references, "32f");
  add_signed_type<double>(references, "64f");
  return references;
}

}  // namespace zivks_test
