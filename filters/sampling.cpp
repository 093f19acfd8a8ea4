// Sampling up and down by an integer factor.
//
// Elements are bits here, of 2, 4, 8 or 16 bytes. A group is `factor` of them, and `phase` a position in a group.
// Small factors have loops of registers of their own.
#include <zivks/filters.h>

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

#include "core/checks.h"
#include "core/copy.h"

using namespace zivks;

namespace {

template <size_t bytes>
using Bits = std::conditional_t<bytes == 16, RegisterPair<uint64_t>, UnsignedOf<bytes>>;

template <class T>
ZIVKStatus check_sampling(const T* src, int32_t srcLen, const T* dst, const int32_t* dstLen, int32_t factor,
                          const int32_t* phase) {
  if (ZIVKStatus status = check_arrays(srcLen, src, dst, dstLen, phase)) return status;
  if (factor < 1) return ZIVK_STS_SAMPLE_FACTOR_ERR;
  if (*phase < 0 || *phase >= factor) return ZIVK_STS_SAMPLE_PHASE_ERR;
  return ZIVK_STS_NO_ERR;
}

template <class T>
void copy_elements(const T* src, T* dst, size_t len) {
  copy_upward(reinterpret_cast<uint8_t*>(dst), len * sizeof(T),
              as_operand(reinterpret_cast<const uint8_t*>(src)));
}

// --- Up --------------------------------------------------------------------------------------------

// Any factor: zeros, and then the samples, in pieces that stay in the nearest cache in between.
template <size_t element>
void spread_over_zeros(size_t factor, const uint8_t* src, size_t len, uint8_t* dst, size_t phase) {
  constexpr size_t kPieceBytes = size_t{16} << 10;
  const size_t group = factor * element;
  const size_t piece = std::max<size_t>(1, kPieceBytes / group);
  for (size_t left = len; left > 0;) {
    const size_t count = std::min(piece, left);
    std::memset(dst, 0, count * group);
    uint8_t* to = dst + phase * element;
    for (size_t i = 0; i < count; ++i) {
      write(to, read<Bits<element>>(src));
      src += element;
      to += group;
    }
    dst += count * group;
    left -= count;
  }
}

// A register of samples fills `factor` registers of the output. Each of those comes from sixteen bytes of the samples,
// its window, by a shuffle that leaves zeros where no sample is.
template <size_t element, size_t factor>
class SpreadRegister {
 public:
  static constexpr size_t kSamples = kRegisterBytes / element, kOutputBytes = kRegisterBytes * factor;

  explicit SpreadRegister(size_t phase) {
    set_shuffles(static_cast<uint8_t>(phase * element), std::make_index_sequence<factor>());
  }

  // Whether all samples that an output register can hold lie in its window.
  static constexpr bool is_possible() {
    for (size_t j = 0; j < factor; ++j) {
      if (sample_of((j + 1) * kRegisterBytes - 1) + element > window(j) + kWindowBytes) return false;
    }
    return true;
  }

  template <bool streams = false>
  ZIVKS_INLINE void operator()(const uint8_t* src, uint8_t* dst) const {
    store_all<streams>(src, dst, std::make_index_sequence<factor>());
  }

 private:
  static constexpr size_t kGroupBytes = element * factor, kWindowBytes = 16;

  // Where the sample begins that goes to the group of a byte of the output.
  static constexpr size_t sample_of(size_t byte) { return byte / kGroupBytes * element; }

  // Where the window of output register `j` begins. It does not leave the register of samples.
  static constexpr size_t window(size_t j) {
    return std::min(sample_of(j * kRegisterBytes), kRegisterBytes - kWindowBytes);
  }

  // Of each group the bytes from `position` on come from its sample.
  template <size_t j, size_t... I>
  static U8 shuffle_of(uint8_t position, std::index_sequence<I...>) {
    const U8 sample = {static_cast<uint8_t>(sample_of(j * kRegisterBytes + I) - window(j))...};
    const U8 in_group = {static_cast<uint8_t>((j * kRegisterBytes + I) % kGroupBytes)...};
    const U8 in_sample = in_group - broadcast(position);
    return (sample + in_sample) | U8(in_sample >= broadcast(static_cast<uint8_t>(element)));
  }
  template <size_t... J>
  void set_shuffles(uint8_t position, std::index_sequence<J...>) {
    ((shuffle_[J] = shuffle_of<J>(position, std::make_index_sequence<kRegisterBytes>())), ...);
  }

  template <bool streams, size_t... J>
  ZIVKS_INLINE void store_all(const uint8_t* src, uint8_t* dst, std::index_sequence<J...>) const {
    const U8 spread[] = {shuffle_bytes(load_repeated(src + window(J)), shuffle_[J])...};
    if constexpr (streams) (stream(dst + J * kRegisterBytes, spread[J]), ...);
    if constexpr (!streams) (store(dst + J * kRegisterBytes, spread[J]), ...);
  }

  U8 shuffle_[factor];
};

template <bool streams, class Step>
ZIVKS_INLINE void spread_steps(const Step& given_step, const uint8_t* src, uint8_t* dst, size_t steps) {
  const Step step = given_step;  // of which the compiler knows that no store changes it
#pragma GCC unroll 2
  for (size_t i = 0; i < steps; ++i) {
    step.template operator()<streams>(src, dst);
    src += kRegisterBytes;
    dst += Step::kOutputBytes;
  }
}

// The first and the last step are aligned with the groups, those in between with registers of the output, whatever
// position of a group that is.
template <size_t element, size_t factor>
[[gnu::flatten]] void spread(const uint8_t* src, size_t len, uint8_t* dst, size_t phase) {
  using Step = SpreadRegister<element, factor>;
  static_assert(Step::is_possible());
  if (len < Step::kSamples) return spread_over_zeros<element>(factor, src, len, dst, phase);
  const size_t bytes = len * factor * element;
  const Step step_of_groups(phase);
  step_of_groups(src, dst);

  const size_t skipped = kAligns ? bytes_unaligned(dst) / element : 0;
  const size_t skipped_samples = (skipped + factor - 1 - phase) / factor;
  const Step step(skipped_samples * factor + phase - skipped);
  const uint8_t* const from = src + skipped_samples * element;
  uint8_t* const to = dst + skipped * element;
  const size_t steps = (bytes - skipped * element) / Step::kOutputBytes;
  if (kHasStreams && bytes_unaligned(to) == 0 && streams(bytes)) {
    spread_steps<true>(step, from, to, steps);
    order_streams();
  } else {
    spread_steps<false>(step, from, to, steps);
  }

  step_of_groups(src + (len - Step::kSamples) * element, dst + bytes - Step::kOutputBytes);
  leave_registers();
}

template <size_t element>
void spread_to_groups(size_t factor, const uint8_t* src, size_t len, uint8_t* dst, size_t phase) {
  if (factor == 2) return spread<element, 2>(src, len, dst, phase);
  if constexpr (SpreadRegister<element, 3>::is_possible()) {  // not of 16 bytes in registers of 32
    if (factor == 3) return spread<element, 3>(src, len, dst, phase);
  }
  if (factor == 4) return spread<element, 4>(src, len, dst, phase);
  if (factor == 8) return spread<element, 8>(src, len, dst, phase);
  spread_over_zeros<element>(factor, src, len, dst, phase);
}

template <class T>
ZIVKStatus sample_up(const T* src, int32_t srcLen, T* dst, int32_t* dstLen, int32_t factor,
                     const int32_t* phase) {
  if (ZIVKStatus status = check_sampling(src, srcLen, dst, dstLen, factor, phase)) return status;
  // Stricter than need be: it refuses some lengths that just fit.
  if (INT32_MAX / srcLen <= factor) return ZIVK_STS_SAMPLE_FACTOR_ERR;

  *dstLen = srcLen * factor;
  if (factor == 1) {
    copy_elements(src, dst, static_cast<size_t>(srcLen));
  } else {
    spread_to_groups<sizeof(T)>(static_cast<size_t>(factor), reinterpret_cast<const uint8_t*>(src),
                                static_cast<size_t>(srcLen), reinterpret_cast<uint8_t*>(dst),
                                static_cast<size_t>(*phase));
  }
  return ZIVK_STS_NO_ERR;
}

// --- Down ------------------------------------------------------------------------------------------

// Any factor.
template <class T>
void keep_one_of_many(size_t factor, const T* src, T* dst, size_t count) {
#pragma GCC unroll 4
  for (size_t i = 0; i < count; ++i) write(dst + i, read<T>(src + i * factor));
}

// Every n-th element from `first` on, as an operand of the drivers.
template <class T, size_t n>
struct EveryNthElement {
  using Element = T;
  static constexpr size_t kStepRegisters = n, kElementBytes = n * sizeof(T), kGroup = 1;

  const T* first;

  template <size_t N>
  ZIVKS_INLINE Lanes<T, N> load(size_t i) const {
    return load_registers<N>(first + i * n, std::make_index_sequence<N / kElements>());
  }
  // As of an array: the first and the last `end` elements of `len`.
  template <size_t N, size_t end>
  ZIVKS_INLINE Lanes<T, N> load_ends(size_t len) const {
    const T* const last = first + (len - end) * n;
    if constexpr (end < kElements) {
      return {{gather(last, std::make_index_sequence<end>())}};
    } else {
      return load_end_registers<N>(last, std::make_index_sequence<end / kElements>());
    }
  }
  template <size_t>
  ZIVKS_INLINE void prefetch(size_t) const {}
  template <size_t elements>
  ZIVKS_INLINE void read_ahead(size_t i) const {
    zivks::read_ahead<elements * kElementBytes>(first + i * n);
  }

  const void* memory() const { return first; }
  ZIVKS_INLINE EveryNthElement from(size_t i) const { return {first + i * n}; }

 private:
  static constexpr size_t kElements = kRegisterElements<T>;

  template <size_t N, size_t... K>
  ZIVKS_INLINE static Lanes<T, N> load_registers(const T* from, std::index_sequence<K...>) {
    return {{load_every<n>(from + K * kElements * n)...}};
  }
  template <size_t N, size_t... K>
  ZIVKS_INLINE Lanes<T, N> load_end_registers(const T* last, std::index_sequence<K...>) const {
    return {{load_every<n>(first + K * kElements * n)..., load_every<n>(last + K * kElements * n)...}};
  }
  template <size_t... K>
  ZIVKS_INLINE Register<T> gather(const T* last, std::index_sequence<K...>) const {
    return Register<T>{read<T>(first + K * n)..., read<T>(last + K * n)...};
  }
};

// `src` begins with an element that is kept. Whole groups go through registers. The last element that is kept may begin a
// group that is not whole, and is written by itself.
template <size_t factor, class T>
void keep_one_of_few(const T* src, size_t len, T* dst, size_t count) {
  if (len >= factor) map(dst, len / factor, unchanged, EveryNthElement<T, factor>{src});
  if (count > 0) write(dst + count - 1, read<T>(src + (count - 1) * factor));
}

template <class T>
void keep_one_of(size_t factor, const T* src, size_t len, T* dst, size_t count) {
  if constexpr (sizeof(T) < 16) {
    if (factor == 2) return keep_one_of_few<2>(src, len, dst, count);
    if (factor == 3) return keep_one_of_few<3>(src, len, dst, count);
    if (factor == 4) return keep_one_of_few<4>(src, len, dst, count);
  }
  keep_one_of_many(factor, src, dst, count);
}

template <class T>
ZIVKStatus sample_down(const T* src, int32_t srcLen, T* dst, int32_t* dstLen, int32_t factor,
                       int32_t* phase) {
  if (ZIVKStatus status = check_sampling(src, srcLen, dst, dstLen, factor, phase)) return status;
  const auto len = static_cast<size_t>(srcLen), group = static_cast<size_t>(factor),
             position = static_cast<size_t>(*phase);
  const size_t count = (group + len - 1 - position) / group;
  const size_t left = position < len ? len - position : 0;
  if (factor == 1) {
    copy_elements(src, dst, len);
  } else {
    keep_one_of(group, reinterpret_cast<const Bits<sizeof(T)>*>(src + std::min(position, len)), left,
                reinterpret_cast<Bits<sizeof(T)>*>(dst), count);
  }
  *dstLen = static_cast<int32_t>(count);
  *phase = static_cast<int32_t>((position + group - len % group) % group);
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_SampleUp_16s(const int16_t* src, int32_t srcLen, int16_t* dst, int32_t* dstLen,
                              int32_t factor, const int32_t* phase) {
  return sample_up(src, srcLen, dst, dstLen, factor, phase);
}
ZIVKStatus ZIVKS_SampleUp_32f(const float* src, int32_t srcLen, float* dst, int32_t* dstLen, int32_t factor,
                              const int32_t* phase) {
  return sample_up(src, srcLen, dst, dstLen, factor, phase);
}
ZIVKStatus ZIVKS_SampleUp_64f(const double* src, int32_t srcLen, double* dst, int32_t* dstLen, int32_t factor,
                              const int32_t* phase) {
  return sample_up(src, srcLen, dst, dstLen, factor, phase);
}
ZIVKStatus ZIVKS_SampleUp_16sc(const ZIVK16sc* src, int32_t srcLen, ZIVK16sc* dst, int32_t* dstLen,
                               int32_t factor, const int32_t* phase) {
  return sample_up(src, srcLen, dst, dstLen, factor, phase);
}
ZIVKStatus ZIVKS_SampleUp_32fc(const ZIVK32fc* src, int32_t srcLen, ZIVK32fc* dst, int32_t* dstLen,
                               int32_t factor, const int32_t* phase) {
  return sample_up(src, srcLen, dst, dstLen, factor, phase);
}
ZIVKStatus ZIVKS_SampleUp_64fc(const ZIVK64fc* src, int32_t srcLen, ZIVK64fc* dst, int32_t* dstLen,
                               int32_t factor, const int32_t* phase) {
  return sample_up(src, srcLen, dst, dstLen, factor, phase);
}

ZIVKStatus ZIVKS_SampleDown_16s(const int16_t* src, int32_t srcLen, int16_t* dst, int32_t* dstLen,
                                int32_t factor, int32_t* phase) {
  return sample_down(src, srcLen, dst, dstLen, factor, phase);
}
ZIVKStatus ZIVKS_SampleDown_32f(const float* src, int32_t srcLen, float* dst, int32_t* dstLen, int32_t factor,
                                int32_t* phase) {
  return sample_down(src, srcLen, dst, dstLen, factor, phase);
}
ZIVKStatus ZIVKS_SampleDown_64f(const double* src, int32_t srcLen, double* dst, int32_t* dstLen,
                                int32_t factor, int32_t* phase) {
  return sample_down(src, srcLen, dst, dstLen, factor, phase);
}
ZIVKStatus ZIVKS_SampleDown_16sc(const ZIVK16sc* src, int32_t srcLen, ZIVK16sc* dst, int32_t* dstLen,
                                 int32_t factor, int32_t* phase) {
  return sample_down(src, srcLen, dst, dstLen, factor, phase);
}
ZIVKStatus ZIVKS_SampleDown_32fc(const ZIVK32fc* src, int32_t srcLen, ZIVK32fc* dst, int32_t* dstLen,
                                 int32_t factor, int32_t* phase) {
  return sample_down(src, srcLen, dst, dstLen, factor, phase);
}
ZIVKStatus ZIVKS_SampleDown_64fc(const ZIVK64fc* src, int32_t srcLen, ZIVK64fc* dst, int32_t* dstLen,
                                 int32_t factor, int32_t* phase) {
  return sample_down(src, srcLen, dst, dstLen, factor, phase);
}
