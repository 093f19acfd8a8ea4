#include "bench/row.h"

namespace bench {

std::vector<Row> arithmetic_rows() {
  using namespace role;
  return {
      ROW(ZIVKS_Add_32f, kPlain, ElementWise<Add>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Add_64f, kPlain, ElementWise<Add>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Add_32fc, kPlain, ElementWise<Add>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Add_64fc, kPlain, ElementWise<Add>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Add_32f_I, kPlain, InPlace<Add>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Add_64f_I, kPlain, InPlace<Add>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Add_32fc_I, kPlain, InPlace<Add>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Add_64fc_I, kPlain, InPlace<Add>, NoRoutine, src, srcDst, len),

      ROW(ZIVKS_Sub_32f, kPlain, ElementWise<SubtractReversed>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Sub_64f, kPlain, ElementWise<SubtractReversed>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Sub_32fc, kPlain, ElementWise<SubtractReversed>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Sub_64fc, kPlain, ElementWise<SubtractReversed>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Sub_32f_I, kPlain, InPlace<SubtractReversed>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Sub_64f_I, kPlain, InPlace<SubtractReversed>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Sub_32fc_I, kPlain, InPlace<SubtractReversed>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Sub_64fc_I, kPlain, InPlace<SubtractReversed>, NoRoutine, src, srcDst, len),

      ROW(ZIVKS_AddC_32f, kPlain, ElementWise<Add>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_AddC_64f, kPlain, ElementWise<Add>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_AddC_32fc, kPlain, ElementWise<Add>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_AddC_64fc, kPlain, ElementWise<Add>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_AddC_32f_I, kPlain, InPlace<Add>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_AddC_64f_I, kPlain, InPlace<Add>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_AddC_32fc_I, kPlain, InPlace<Add>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_AddC_64fc_I, kPlain, InPlace<Add>, NoRoutine, val, srcDst, len),

      ROW(ZIVKS_SubC_32f, kPlain, ElementWise<Subtract>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_SubC_64f, kPlain, ElementWise<Subtract>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_SubC_32fc, kPlain, ElementWise<Subtract>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_SubC_64fc, kPlain, ElementWise<Subtract>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_SubC_32f_I, kPlain, InPlace<Subtract>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_SubC_64f_I, kPlain, InPlace<Subtract>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_SubC_32fc_I, kPlain, InPlace<Subtract>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_SubC_64fc_I, kPlain, InPlace<Subtract>, NoRoutine, val, srcDst, len),

      ROW(ZIVKS_SubCRev_32f, kPlain, ElementWise<SubtractReversed>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_SubCRev_64f, kPlain, ElementWise<SubtractReversed>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_SubCRev_32fc, kPlain, ElementWise<SubtractReversed>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_SubCRev_64fc, kPlain, ElementWise<SubtractReversed>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_SubCRev_32f_I, kPlain, InPlace<SubtractReversed>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_SubCRev_64f_I, kPlain, InPlace<SubtractReversed>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_SubCRev_32fc_I, kPlain, InPlace<SubtractReversed>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_SubCRev_64fc_I, kPlain, InPlace<SubtractReversed>, NoRoutine, val, srcDst, len),

      ROW(ZIVKS_Add_16s, kSaturating, ElementWise<AddSaturating>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Add_16u, kSaturating, ElementWise<AddSaturating>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Add_32u, kSaturating, ElementWise<AddSaturating>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Add_16s_I, kSaturating, InPlace<AddSaturating>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Add_32u_I, kSaturating, InPlace<AddSaturating>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Sub_16s, kSaturating, ElementWise<SubtractReversedSaturating>, NoRoutine, src1, src2, dst,
          len),
      ROW(ZIVKS_Sub_16s_I, kSaturating, InPlace<SubtractReversedSaturating>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_AddC_16s_I, kSaturating, InPlace<AddSaturating>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_SubC_16s_I, kSaturating, InPlace<SubtractSaturating>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_Add_8u16u, kWidening, ElementWise<Add>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Add_16s32f, kWidening, ElementWise<Add>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Sub_16s32f, kWidening, ElementWise<SubtractReversed>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Add_16s32s_I, kWidening, InPlace<AddWrapping>, NoRoutine, src, srcDst, len),

      ROW(ZIVKS_Abs_16s, kSaturating, ElementWise<Absolute>, NoRoutine, src, dst, len),
      ROW(ZIVKS_Abs_32s, kSaturating, ElementWise<Absolute>, NoRoutine, src, dst, len),
      ROW(ZIVKS_Abs_32f, kPlain, ElementWise<Absolute>, NoRoutine, src, dst, len),
      ROW(ZIVKS_Abs_64f, kPlain, ElementWise<Absolute>, NoRoutine, src, dst, len),
      ROW(ZIVKS_Abs_16s_I, kSaturating, InPlace<Absolute>, NoRoutine, srcDst, len),
      ROW(ZIVKS_Abs_32s_I, kSaturating, InPlace<Absolute>, NoRoutine, srcDst, len),
      ROW(ZIVKS_Abs_32f_I, kPlain, InPlace<Absolute>, NoRoutine, srcDst, len),
      ROW(ZIVKS_Abs_64f_I, kPlain, InPlace<Absolute>, NoRoutine, srcDst, len),
  };
}

}  // namespace bench
