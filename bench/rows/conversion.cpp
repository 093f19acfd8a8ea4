#include "bench/row.h"

namespace bench {

#define IN_MODE(function, plain, mode, rounding, name) \
  ROW(function, kRounding, plain<rounding>, kSrc, kDst, kLen, kNumber<mode>, kNumber<4>).with(name)
#define IN_EACH_MODE(function, plain)                             \
  IN_MODE(function, plain, ZIVK_RND_ZERO, TowardZero, "zero"),    \
      IN_MODE(function, plain, ZIVK_RND_NEAR, ToNearest, "near"), \
      IN_MODE(function, plain, ZIVK_RND_AWAY, AwayFromZero, "away")
// For functions with a loop that does not multiply.
#define AT_SCALE_ONE(function, plain)                                                              \
  ROW(function, kRounding, plain<ToNearest>, kSrc, kDst, kLen, kNumber<ZIVK_RND_NEAR>, kNumber<1>) \
      .with("scale 1")
// For integers, which grow in another loop than that in which they shrink.
#define AT_SCALE_HALF(function, plain)                                                                \
  ROW(function, kRounding, plain<ToNearest>, kSrc, kDst, kLen, kNumber<ZIVK_RND_NEAR>, kNumber<1, 2>) \
      .with("scale 0.5")

std::vector<Row> conversion_rows() {
  return {
      ROW(ZIVKS_Convert_8u32f, kWidening, ElementWise<Convert>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_8s16s, kWidening, ElementWise<Convert>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_8s32f, kWidening, ElementWise<Convert>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_16u32f, kWidening, ElementWise<Convert>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_16s32s, kWidening, ElementWise<Convert>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_16s32f, kWidening, ElementWise<Convert>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_32s32f, kWidening, ElementWise<Convert>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_32s64f, kWidening, ElementWise<Convert>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_32f64f, kWidening, ElementWise<Convert>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_64s64f, kWidening, ElementWise<Convert>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_64f32f, kWidening, ElementWise<Convert>, kSrc, kDst, kLen),

      ROW(ZIVKS_Convert_16s32f_S, kWidening, ConvertScaled, kSrc, kDst, kLen, kNumber<4>),
      ROW(ZIVKS_Convert_16s64f_S, kWidening, ConvertScaled, kSrc, kDst, kLen, kNumber<4>),
      ROW(ZIVKS_Convert_32s32f_S, kWidening, ConvertScaled, kSrc, kDst, kLen, kNumber<4>),
      ROW(ZIVKS_Convert_32s64f_S, kWidening, ConvertScaled, kSrc, kDst, kLen, kNumber<4>),

      ROW(ZIVKS_Convert_8s8u, kPlain, ElementWise<Clamp>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_32s16s, kPlain, ElementWise<Clamp>, kSrc, kDst, kLen),
      ROW(ZIVKS_Convert_32s16s_S, kRounding, RoundScaledInteger<ToNearest>, kSrc, kDst, kLen, kNumber<8>),
      ROW(ZIVKS_Convert_32s16s_S, kRounding, RoundScaledInteger<ToNearest>, kSrc, kDst, kLen, kNumber<1>)
          .with("scale 1"),
      IN_EACH_MODE(ZIVKS_Convert_8u8s_S, RoundScaledInteger),
      AT_SCALE_ONE(ZIVKS_Convert_8u8s_S, RoundScaledInteger),
      AT_SCALE_HALF(ZIVKS_Convert_8u8s_S, RoundScaledInteger),
      IN_EACH_MODE(ZIVKS_Convert_16s8s_S, RoundScaledInteger),
      AT_SCALE_HALF(ZIVKS_Convert_16s8s_S, RoundScaledInteger),
      IN_EACH_MODE(ZIVKS_Convert_64s32s_S, RoundScaledInteger),

      ROW(ZIVKS_Convert_24u32u, kPacked, Unpack<Unsigned>, kPackedSrc, kDst, kLen),
      ROW(ZIVKS_Convert_24u32f, kPacked, Unpack<Unsigned>, kPackedSrc, kDst, kLen),
      ROW(ZIVKS_Convert_24s32s, kPacked, Unpack<Signed>, kPackedSrc, kDst, kLen),
      ROW(ZIVKS_Convert_24s32f, kPacked, Unpack<Signed>, kPackedSrc, kDst, kLen),
      ROW(ZIVKS_Convert_32u24u_S, kPacked, Pack<Unsigned>, kSrc, kPackedDst, kLen, kNumber<8>),
      ROW(ZIVKS_Convert_32u24u_S, kPacked, Pack<Unsigned>, kSrc, kPackedDst, kLen, kNumber<1>)
          .with("scale 1"),
      ROW(ZIVKS_Convert_32s24s_S, kPacked, Pack<Signed>, kSrc, kPackedDst, kLen, kNumber<8>),
      ROW(ZIVKS_Convert_32s24s_S, kPacked, Pack<Signed>, kSrc, kPackedDst, kLen, kNumber<1>).with("scale 1"),
      ROW(ZIVKS_Convert_32s24s_S, kPacked, Pack<Signed>, kSrc, kPackedDst, kLen, kNumber<1, 2>)
          .with("scale 0.5"),
      ROW(ZIVKS_Convert_32f24u_S, kPacked, Pack<Unsigned>, kSrc, kPackedDst, kLen, kNumber<1, 4096>),
      ROW(ZIVKS_Convert_32f24s_S, kPacked, Pack<Signed>, kSrc, kPackedDst, kLen, kNumber<1, 4096>),

      IN_EACH_MODE(ZIVKS_Convert_32f8u_S, RoundScaled),
      AT_SCALE_ONE(ZIVKS_Convert_32f8u_S, RoundScaled),
      IN_EACH_MODE(ZIVKS_Convert_32f16u_S, RoundScaled),
      AT_SCALE_ONE(ZIVKS_Convert_32f16u_S, RoundScaled),
      IN_EACH_MODE(ZIVKS_Convert_64f8u_S, RoundScaled),
      AT_SCALE_ONE(ZIVKS_Convert_64f8u_S, RoundScaled),
      IN_EACH_MODE(ZIVKS_Convert_64f16u_S, RoundScaled),
      AT_SCALE_ONE(ZIVKS_Convert_64f16u_S, RoundScaled),
      IN_EACH_MODE(ZIVKS_Convert_32f8s_S, RoundScaled),
      AT_SCALE_ONE(ZIVKS_Convert_32f8s_S, RoundScaled),
      IN_EACH_MODE(ZIVKS_Convert_32f16s_S, RoundScaled),
      IN_EACH_MODE(ZIVKS_Convert_32f32s_S, RoundScaled),
      IN_EACH_MODE(ZIVKS_Convert_64f8s_S, RoundScaled),
      IN_EACH_MODE(ZIVKS_Convert_64f16s_S, RoundScaled),
      IN_EACH_MODE(ZIVKS_Convert_64f32s_S, RoundScaled),
      IN_EACH_MODE(ZIVKS_Convert_64f64s_S, RoundScaled),
  };
}

}  // namespace bench
