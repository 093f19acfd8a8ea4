#include "bench/row.h"

namespace bench {

std::vector<Row> logic_rows() {
  using namespace role;
  return {
      ROW(ZIVKS_And_8u, kPlain, ElementWise<BitwiseAnd>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_And_16u, kPlain, ElementWise<BitwiseAnd>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_And_32u, kPlain, ElementWise<BitwiseAnd>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_And_8u_I, kPlain, InPlace<BitwiseAnd>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_And_16u_I, kPlain, InPlace<BitwiseAnd>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_And_32u_I, kPlain, InPlace<BitwiseAnd>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_AndC_8u, kPlain, ElementWise<BitwiseAnd>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_AndC_16u, kPlain, ElementWise<BitwiseAnd>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_AndC_32u, kPlain, ElementWise<BitwiseAnd>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_AndC_8u_I, kPlain, InPlace<BitwiseAnd>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_AndC_16u_I, kPlain, InPlace<BitwiseAnd>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_AndC_32u_I, kPlain, InPlace<BitwiseAnd>, NoRoutine, val, srcDst, len),

      ROW(ZIVKS_Or_8u, kPlain, ElementWise<BitwiseOr>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Or_16u, kPlain, ElementWise<BitwiseOr>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Or_32u, kPlain, ElementWise<BitwiseOr>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Or_8u_I, kPlain, InPlace<BitwiseOr>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Or_16u_I, kPlain, InPlace<BitwiseOr>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Or_32u_I, kPlain, InPlace<BitwiseOr>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_OrC_8u, kPlain, ElementWise<BitwiseOr>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_OrC_16u, kPlain, ElementWise<BitwiseOr>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_OrC_32u, kPlain, ElementWise<BitwiseOr>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_OrC_8u_I, kPlain, InPlace<BitwiseOr>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_OrC_16u_I, kPlain, InPlace<BitwiseOr>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_OrC_32u_I, kPlain, InPlace<BitwiseOr>, NoRoutine, val, srcDst, len),

      ROW(ZIVKS_Xor_8u, kPlain, ElementWise<BitwiseXor>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Xor_16u, kPlain, ElementWise<BitwiseXor>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Xor_32u, kPlain, ElementWise<BitwiseXor>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_Xor_8u_I, kPlain, InPlace<BitwiseXor>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Xor_16u_I, kPlain, InPlace<BitwiseXor>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_Xor_32u_I, kPlain, InPlace<BitwiseXor>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_XorC_8u, kPlain, ElementWise<BitwiseXor>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_XorC_16u, kPlain, ElementWise<BitwiseXor>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_XorC_32u, kPlain, ElementWise<BitwiseXor>, NoRoutine, src, val, dst, len),
      ROW(ZIVKS_XorC_8u_I, kPlain, InPlace<BitwiseXor>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_XorC_16u_I, kPlain, InPlace<BitwiseXor>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_XorC_32u_I, kPlain, InPlace<BitwiseXor>, NoRoutine, val, srcDst, len),

      ROW(ZIVKS_Not_8u, kPlain, ElementWise<BitwiseNot>, NoRoutine, src, dst, len),
      ROW(ZIVKS_Not_16u, kPlain, ElementWise<BitwiseNot>, NoRoutine, src, dst, len),
      ROW(ZIVKS_Not_32u, kPlain, ElementWise<BitwiseNot>, NoRoutine, src, dst, len),
      ROW(ZIVKS_Not_8u_I, kPlain, InPlace<BitwiseNot>, NoRoutine, srcDst, len),

      ROW(ZIVKS_LShiftC_8u, kPlain, ElementWise<ShiftLeft>, NoRoutine, src, number<3>, dst, len),
      ROW(ZIVKS_LShiftC_8u, kPlain, ElementWise<ShiftLeft>, NoRoutine, src, number<0>, dst, len).with("by 0"),
      ROW(ZIVKS_LShiftC_16u, kPlain, ElementWise<ShiftLeft>, NoRoutine, src, number<3>, dst, len),
      ROW(ZIVKS_LShiftC_16u, kPlain, ElementWise<ShiftLeft>, NoRoutine, src, number<16>, dst, len)
          .with("by 16"),
      ROW(ZIVKS_LShiftC_16s, kPlain, ElementWise<ShiftLeft>, NoRoutine, src, number<3>, dst, len),
      ROW(ZIVKS_LShiftC_32s, kPlain, ElementWise<ShiftLeft>, NoRoutine, src, number<3>, dst, len),
      ROW(ZIVKS_LShiftC_8u_I, kPlain, InPlace<ShiftLeft>, NoRoutine, number<3>, srcDst, len),
      ROW(ZIVKS_LShiftC_16u_I, kPlain, InPlace<ShiftLeft>, NoRoutine, number<3>, srcDst, len),
      ROW(ZIVKS_LShiftC_16s_I, kPlain, InPlace<ShiftLeft>, NoRoutine, number<3>, srcDst, len),
      ROW(ZIVKS_LShiftC_32s_I, kPlain, InPlace<ShiftLeft>, NoRoutine, number<3>, srcDst, len),

      ROW(ZIVKS_RShiftC_8u, kPlain, ElementWise<ShiftRight>, NoRoutine, src, number<3>, dst, len),
      ROW(ZIVKS_RShiftC_16u, kPlain, ElementWise<ShiftRight>, NoRoutine, src, number<3>, dst, len),
      ROW(ZIVKS_RShiftC_16s, kPlain, ElementWise<ShiftRight>, NoRoutine, src, number<3>, dst, len),
      ROW(ZIVKS_RShiftC_32s, kPlain, ElementWise<ShiftRight>, NoRoutine, src, number<3>, dst, len),
      ROW(ZIVKS_RShiftC_32s, kPlain, ElementWise<ShiftRight>, NoRoutine, src, number<0>, dst, len)
          .with("by 0"),
      ROW(ZIVKS_RShiftC_8u_I, kPlain, InPlace<ShiftRight>, NoRoutine, number<3>, srcDst, len),
      ROW(ZIVKS_RShiftC_16u_I, kPlain, InPlace<ShiftRight>, NoRoutine, number<3>, srcDst, len),
      ROW(ZIVKS_RShiftC_16s_I, kPlain, InPlace<ShiftRight>, NoRoutine, number<3>, srcDst, len),
      ROW(ZIVKS_RShiftC_32s_I, kPlain, InPlace<ShiftRight>, NoRoutine, number<3>, srcDst, len),
  };
}

}  // namespace bench
