// Samples of 24 bits, packed in three bytes each, lowest byte first: into 32-bit elements and back.
#include <zivks/convert.h>

#include <algorithm>

#include "convert/rounding.h"
#include "core/checks.h"
#include "core/scale.h"
#include "core/scaled_integer.h"

using namespace zivks;

namespace {

template <class R>
ZIVKS_INLINE R clamp_to_triples(R x) {
  using T = ElementOf<R>;
  x = minimum(x, broadcast(kMostTriple<T>));
  return std::is_signed_v<T> ? maximum(x, broadcast(kLeastTriple<T>)) : x;
}

// `kernel` makes registers of integers out of registers of the source, in the range of a sample.
template <class T, class Source, class Kernel>
void pack(Source src, uint8_t* dst, size_t len, Kernel kernel) {
  map_registers<T>(packed<T>(dst), len, kernel, src);
}

// Blocks shift by the lowest byte of the count; in the tail everything but 0 saturates.
template <class T>
[[gnu::cold, gnu::noinline]] void pack_wrapping(const T* src, uint8_t* dst, size_t len, int shift) {
  constexpr size_t kBlock = 8;
  const size_t blocks = len & ~(kBlock - 1);
  for (size_t i = 0; i < len; ++i) {
    const int64_t value = src[i];
    const int64_t in_tail = value == 0 ? 0 : value > 0 ? int64_t{INT32_MAX} : int64_t{INT32_MIN};
    const int64_t grown = i < blocks ? shift_left_wrapping(value, shift) : in_tail;
    const auto sample =
        static_cast<uint32_t>(std::clamp(grown, int64_t{kLeastTriple<T>}, int64_t{kMostTriple<T>}));
    for (size_t byte = 0; byte < 3; ++byte) dst[3 * i + byte] = static_cast<uint8_t>(sample >> (8 * byte));
  }
}

template <class T, class Source>
ZIVKStatus pack_scaled(Source src, uint8_t* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (!is_valid_scale(scale)) return ZIVK_STS_SCALE_ERR;
  const size_t count = static_cast<size_t>(len);
  const int exponent = scale_exponent(scale);
  if (exponent >= kLeastWrappingShift) {
    pack_wrapping(as_operand(src).data, dst, count, exponent);
  } else {
    with_scaling<T, ZIVK_RND_NEAR, std::is_signed_v<T> ? 23 : 24>(exponent, [=](auto multiply) {
      pack<T>(src, dst, count, [=](auto x) ZIVKS_INLINE_LAMBDA { return clamp_to_triples(multiply(x)); });
    });
  }
  return ZIVK_STS_NO_ERR;
}

template <class T, class Source>
ZIVKStatus pack_rounded(Source src, uint8_t* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  const double multiplier = scale_multiplier(scale);
  if (multiplier != multiplier) return ZIVK_STS_SCALE_ERR;
  with_rounding_mode_of_floats(
      ZIVK_RND_NEAR, [=, m = broadcast(multiplier_in<float>(multiplier))](auto mode) {
        pack<T>(src, dst, static_cast<size_t>(len),
                [m](F32 x) { return round_to_triples<T, decltype(mode)::value>(x * m); });
      });
  return ZIVK_STS_NO_ERR;
}

constexpr auto to_float = [](auto a) {
  return convert<float>(lift<int32_t>([](auto x) { return I32(x); }, a));
};

// Of signed samples there have to be three.
template <class T, class Kernel>
ZIVKStatus unpack_signed(const uint8_t* src, T* dst, int32_t len, Kernel kernel) {
  constexpr int32_t kLeastLength = 3;
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (len < kLeastLength) return ZIVK_STS_SIZE_ERR;
  return map(dst, static_cast<size_t>(len), kernel, packed<int32_t>(src));
}

constexpr size_t kReadAhead = 1024;

}  // namespace

ZIVKStatus ZIVKS_Convert_24u32u(const uint8_t* src, uint32_t* dst, int32_t len) {
  return map_arrays(dst, len, unchanged, packed<uint32_t>(src));
}
ZIVKStatus ZIVKS_Convert_24u32f(const uint8_t* src, float* dst, int32_t len) {
  return map_arrays(dst, len, to_float, packed<uint32_t>(src));
}
ZIVKStatus ZIVKS_Convert_24s32s(const uint8_t* src, int32_t* dst, int32_t len) {
  return unpack_signed(src, dst, len, unchanged);
}
ZIVKStatus ZIVKS_Convert_24s32f(const uint8_t* src, float* dst, int32_t len) {
  return unpack_signed(src, dst, len, to_float);
}

ZIVKStatus ZIVKS_Convert_32u24u_S(const uint32_t* src, uint8_t* dst, int32_t len, double scale) {
  return pack_scaled<uint32_t>(prefetched<kReadAhead>(src), dst, len, scale);
}
ZIVKStatus ZIVKS_Convert_32s24s_S(const int32_t* src, uint8_t* dst, int32_t len, double scale) {
  return pack_scaled<int32_t>(src, dst, len, scale);
}
ZIVKStatus ZIVKS_Convert_32f24u_S(const float* src, uint8_t* dst, int32_t len, double scale) {
  return pack_rounded<uint32_t>(prefetched<kReadAhead>(src), dst, len, scale);
}
ZIVKStatus ZIVKS_Convert_32f24s_S(const float* src, uint8_t* dst, int32_t len, double scale) {
  return pack_rounded<int32_t>(prefetched<kReadAhead>(src), dst, len, scale);
}
