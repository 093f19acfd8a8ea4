// Reversal of the bytes within each element.
#include <zivks/movement.h>

#include "core/checks.h"

using namespace zivks;

namespace {

constexpr auto swap_elements = [](auto a) { return swap_bytes(a); };

constexpr size_t kSampleBytes = 3;

// A few samples, loaded and stored as two words that overlap, at the bottom of a register.
template <size_t samples, size_t word_bytes>
struct FewSamples {
  static constexpr size_t kSamples = samples;

  ZIVKS_INLINE static U64 load(const uint8_t* from) {
    const U8 words = U8(load_two<word_bytes>(from, from + kSecond));
    return U64(shuffle_bytes(words, order(std::make_index_sequence<2 * word_bytes>())));
  }
  ZIVKS_INLINE static void store(uint8_t* to, U64 words) { store_two<word_bytes>(to, to + kSecond, words); }

 private:
  static constexpr size_t kSecond = kSampleBytes * samples - word_bytes;  // where the second word begins

  static constexpr uint8_t source_of(size_t i) {
    const size_t to = i < word_bytes ? i : i - word_bytes + kSecond;
    const size_t from = to / kSampleBytes * kSampleBytes + (kSampleBytes - 1) - to % kSampleBytes;
    return static_cast<uint8_t>(from < word_bytes ? from : from - kSecond + word_bytes);
  }
  template <size_t... I>
  ZIVKS_INLINE static U8 order(std::index_sequence<I...>) {
    return U8{source_of(I)...};
  }
};
using TwoSamples = FewSamples<2, sizeof(uint32_t)>;
using FiveSamples = FewSamples<5, sizeof(uint64_t)>;

// As many samples as a register has bytes.
struct RegisterOfSamples {
  static constexpr size_t kSamples = kRegisterBytes;

  ZIVKS_INLINE static RegisterTriple<U8> load(const uint8_t* from) { return load_triples_reversed(from); }
  ZIVKS_INLINE static void store(uint8_t* to, RegisterTriple<U8> samples) { store_triples(to, samples); }
};

// Samples before the next that is aligned to a register: 3 * samples + address = 0 modulo the register. There
// are fewer of them than a register has bytes, and 3 * 11 = 1 modulo 32, the larger register.
ZIVKS_INLINE size_t samples_unaligned(const uint8_t* address) {
  return bytes_unaligned(address) * 11 % kRegisterBytes;
}

// Steps from the first sample on. The last step ends where the array ends and is loaded ahead of all stores,
// so that `dst` may be `src`; so is the first where others begin at an aligned sample, which lies within it.
template <class Step>
ZIVKS_INLINE void swap_by_steps(const uint8_t* src, uint8_t* dst, size_t bytes) {
  constexpr size_t kStepBytes = kSampleBytes * Step::kSamples;
  constexpr bool kAlignsSteps = kAligns && Step::kSamples == kRegisterBytes;
  uint8_t* const first_dst = dst;
  const uint8_t* const last = src + (bytes - kStepBytes);
  uint8_t* const last_dst = dst + (bytes - kStepBytes);
  const auto first_samples = Step::load(src);
  const auto last_samples = Step::load(last);
  if (kAlignsSteps) {
    const size_t skipped = kSampleBytes * samples_unaligned(dst);
    src += skipped, dst += skipped;
  }
  for (; src < last; src += kStepBytes, dst += kStepBytes) Step::store(dst, Step::load(src));
  if (kAlignsSteps) Step::store(first_dst, first_samples);
  Step::store(last_dst, last_samples);
}

}  // namespace

ZIVKStatus ZIVKS_SwapBytes_16u(const uint16_t* src, uint16_t* dst, int32_t len) {
  return map_arrays(dst, len, swap_elements, src);
}
ZIVKStatus ZIVKS_SwapBytes_32u(const uint32_t* src, uint32_t* dst, int32_t len) {
  return map_arrays(dst, len, swap_elements, src);
}
ZIVKStatus ZIVKS_SwapBytes_64u(const uint64_t* src, uint64_t* dst, int32_t len) {
  return map_arrays(dst, len, swap_elements, src);
}

ZIVKStatus ZIVKS_SwapBytes_24u(const uint8_t* src, uint8_t* dst, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  const size_t bytes = kSampleBytes * static_cast<size_t>(len);
  if (bytes >= kSampleBytes * RegisterOfSamples::kSamples) {
    swap_by_steps<RegisterOfSamples>(src, dst, bytes);
  } else if (bytes >= kSampleBytes * FiveSamples::kSamples) {
    swap_by_steps<FiveSamples>(src, dst, bytes);
  } else if (bytes >= kSampleBytes * TwoSamples::kSamples) {
    swap_by_steps<TwoSamples>(src, dst, bytes);
  } else {
    const uint8_t bytes_of_sample[] = {src[2], src[1], src[0]};
    std::memcpy(dst, bytes_of_sample, kSampleBytes);
  }
  return ZIVK_STS_NO_ERR;
}

ZIVKStatus ZIVKS_SwapBytes_16u_I(uint16_t* srcDst, int32_t len) {
  return ZIVKS_SwapBytes_16u(srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_SwapBytes_24u_I(uint8_t* srcDst, int32_t len) {
  return ZIVKS_SwapBytes_24u(srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_SwapBytes_32u_I(uint32_t* srcDst, int32_t len) {
  return ZIVKS_SwapBytes_32u(srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_SwapBytes_64u_I(uint64_t* srcDst, int32_t len) {
  return ZIVKS_SwapBytes_64u(srcDst, srcDst, len);
}
