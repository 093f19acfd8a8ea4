#include "bench/row.h"

namespace bench {

// The unscaled path, the shallowest and a deeper division, and a multiplication.
#define AT_FOUR_SCALES(function, plain_loop, ...)                                  \
  ROW(function, kScaled, plain_loop, __VA_ARGS__, kNumber<1>).with("scale 1"),     \
      ROW(function, kScaled, plain_loop, __VA_ARGS__, kNumber<2>).with("scale 2"), \
      ROW(function, kScaled, plain_loop, __VA_ARGS__, kNumber<8>).with("scale 8"), \
      ROW(function, kScaled, plain_loop, __VA_ARGS__, kNumber<1, 2>).with("scale 0.5")

std::vector<Row> arithmetic_rows() {
  return {
      ROW(ZIVKS_Add_32f, kPlain, ElementWise<Add>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Add_64f, kPlain, ElementWise<Add>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Add_32fc, kPlain, ElementWise<Add>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Add_64fc, kPlain, ElementWise<Add>, kSrc1, kSrc2, kDst, kLen),

      ROW(ZIVKS_Sub_32f, kPlain, ElementWise<SubtractReversed>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Sub_64f, kPlain, ElementWise<SubtractReversed>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Sub_32fc, kPlain, ElementWise<SubtractReversed>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Sub_64fc, kPlain, ElementWise<SubtractReversed>, kSrc1, kSrc2, kDst, kLen),

      ROW(ZIVKS_AddC_32f, kPlain, ElementWise<Add>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_AddC_64f, kPlain, ElementWise<Add>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_AddC_32fc, kPlain, ElementWise<Add>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_AddC_64fc, kPlain, ElementWise<Add>, kSrc, kVal, kDst, kLen),

      ROW(ZIVKS_SubC_32f, kPlain, ElementWise<Subtract>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_SubC_64f, kPlain, ElementWise<Subtract>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_SubC_32fc, kPlain, ElementWise<Subtract>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_SubC_64fc, kPlain, ElementWise<Subtract>, kSrc, kVal, kDst, kLen),

      ROW(ZIVKS_SubCRev_32f, kPlain, ElementWise<SubtractReversed>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_SubCRev_64f, kPlain, ElementWise<SubtractReversed>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_SubCRev_32fc, kPlain, ElementWise<SubtractReversed>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_SubCRev_64fc, kPlain, ElementWise<SubtractReversed>, kSrc, kVal, kDst, kLen),

      ROW(ZIVKS_Add_16s, kSaturating, ElementWise<AddSaturating>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Add_16u, kSaturating, ElementWise<AddSaturating>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Add_32u, kSaturating, ElementWise<AddSaturating>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Sub_16s, kSaturating, ElementWise<SubtractReversedSaturating>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_AddC_16s_I, kSaturating, InPlace<AddSaturating>, kVal, kSrcDst, kLen),
      ROW(ZIVKS_SubC_16s_I, kSaturating, InPlace<SubtractSaturating>, kVal, kSrcDst, kLen),
      ROW(ZIVKS_Add_8u16u, kWidening, ElementWise<Add>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Add_16s32f, kWidening, ElementWise<Add>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Sub_16s32f, kWidening, ElementWise<SubtractReversed>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Add_16s32s_I, kWidening, InPlace<AddWrapping>, kSrc, kSrcDst, kLen),

      AT_FOUR_SCALES(ZIVKS_Add_8u_S, Scaled<Add>, kSrc1, kSrc2, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_Add_16u_S, Scaled<Add>, kSrc1, kSrc2, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_Add_16s_S, Scaled<Add>, kSrc1, kSrc2, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_Add_32s_S, Scaled<Add>, kSrc1, kSrc2, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_Add_16sc_S, Scaled<Add>, kSrc1, kSrc2, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_Add_32sc_S, Scaled<Add>, kSrc1, kSrc2, kDst, kLen),

      AT_FOUR_SCALES(ZIVKS_Sub_8u_S, Scaled<SubtractReversed>, kSrc1, kSrc2, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_Sub_16u_S, Scaled<SubtractReversed>, kSrc1, kSrc2, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_Sub_16s_S, Scaled<SubtractReversed>, kSrc1, kSrc2, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_Sub_32s_S, Scaled<SubtractReversed>, kSrc1, kSrc2, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_Sub_16sc_S, Scaled<SubtractReversed>, kSrc1, kSrc2, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_Sub_32sc_S, Scaled<SubtractReversed>, kSrc1, kSrc2, kDst, kLen),

      AT_FOUR_SCALES(ZIVKS_AddC_8u_S, Scaled<Add>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_AddC_16u_S, Scaled<Add>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_AddC_16s_S, Scaled<Add>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_AddC_32s_S, Scaled<Add>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_AddC_16sc_S, Scaled<Add>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_AddC_32sc_S, Scaled<Add>, kSrc, kVal, kDst, kLen),

      AT_FOUR_SCALES(ZIVKS_SubC_8u_S, Scaled<Subtract>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_SubC_16u_S, Scaled<Subtract>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_SubC_16s_S, Scaled<Subtract>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_SubC_32s_S, Scaled<Subtract>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_SubC_16sc_S, Scaled<Subtract>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_SubC_32sc_S, Scaled<Subtract>, kSrc, kVal, kDst, kLen),

      AT_FOUR_SCALES(ZIVKS_SubCRev_8u_S, Scaled<SubtractReversed>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_SubCRev_16u_S, Scaled<SubtractReversed>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_SubCRev_16s_S, Scaled<SubtractReversed>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_SubCRev_32s_S, Scaled<SubtractReversed>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_SubCRev_16sc_S, Scaled<SubtractReversed>, kSrc, kVal, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_SubCRev_32sc_S, Scaled<SubtractReversed>, kSrc, kVal, kDst, kLen),

      AT_FOUR_SCALES(ZIVKS_Add_64s_S, AddScaled64, kSrc1, kSrc2, kDst, kLen),
      AT_FOUR_SCALES(ZIVKS_AddC_64s_S, AddScaled64, kSrc, kVal, kDst, kLen, kNumber<ZIVK_RND_NEAR>),
      AT_FOUR_SCALES(ZIVKS_AddC_64u_S, AddScaled64, kSrc, kVal, kDst, kLen, kNumber<ZIVK_RND_NEAR>),
      ROW(ZIVKS_AddC_64s_S, kScaled, AddScaled64, kSrc, kVal, kDst, kLen, kNumber<ZIVK_RND_ZERO>, kNumber<8>)
          .with("scale 8, to zero"),
      ROW(ZIVKS_AddC_64s_S, kScaled, AddScaled64, kSrc, kVal, kDst, kLen, kNumber<ZIVK_RND_AWAY>, kNumber<8>)
          .with("scale 8, ties up"),
      ROW(ZIVKS_AddC_64u_S, kScaled, AddScaled64, kSrc, kVal, kDst, kLen, kNumber<ZIVK_RND_ZERO>, kNumber<8>)
          .with("scale 8, to zero"),
      ROW(ZIVKS_AddC_64u_S, kScaled, AddScaled64, kSrc, kVal, kDst, kLen, kNumber<ZIVK_RND_AWAY>, kNumber<8>)
          .with("scale 8, ties up"),

      ROW(ZIVKS_Abs_16s, kSaturating, ElementWise<Absolute>, kSrc, kDst, kLen),
      ROW(ZIVKS_Abs_32s, kSaturating, ElementWise<Absolute>, kSrc, kDst, kLen),
      ROW(ZIVKS_Abs_32f, kPlain, ElementWise<Absolute>, kSrc, kDst, kLen),
      ROW(ZIVKS_Abs_64f, kPlain, ElementWise<Absolute>, kSrc, kDst, kLen),

      ROW(ZIVKS_AddProduct_32f, kPlain, AddProduct, kSrc1, kSrc2, kSrcDst, kLen),
      ROW(ZIVKS_AddProduct_64f, kPlain, AddProduct, kSrc1, kSrc2, kSrcDst, kLen),
      ROW(ZIVKS_AddProduct_32fc, kPlain, AddComplexProduct, kSrc1, kSrc2, kSrcDst, kLen),
      ROW(ZIVKS_AddProduct_64fc, kPlain, AddComplexProduct, kSrc1, kSrc2, kSrcDst, kLen),
      ROW(ZIVKS_AddProductC_32f, kPlain, AddProduct, kSrc, kVal, kSrcDst, kLen),
      ROW(ZIVKS_AddProductC_64f, kPlain, AddProduct, kSrc, kVal, kSrcDst, kLen),

      AT_FOUR_SCALES(ZIVKS_AddProduct_16s_S, AddProductScaled16s, kSrc1, kSrc2, kSrcDst, kLen),
      AT_FOUR_SCALES(ZIVKS_AddProduct_32s_S, AddProductScaled32s, kSrc1, kSrc2, kSrcDst, kLen),
      AT_FOUR_SCALES(ZIVKS_AddProduct_16s32s_S, AddProductScaled32s, kSrc1, kSrc2, kSrcDst, kLen),
  };
}

}  // namespace bench
