#include "bench/row.h"

namespace bench {

std::vector<Row> logic_rows() {
  return {
      ROW(ZIVKS_And_8u, kPlain, ElementWise<BitwiseAnd>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_And_16u, kPlain, ElementWise<BitwiseAnd>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_And_32u, kPlain, ElementWise<BitwiseAnd>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_AndC_8u, kPlain, ElementWise<BitwiseAnd>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_AndC_16u, kPlain, ElementWise<BitwiseAnd>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_AndC_32u, kPlain, ElementWise<BitwiseAnd>, kSrc, kVal, kDst, kLen),

      ROW(ZIVKS_Or_8u, kPlain, ElementWise<BitwiseOr>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Or_16u, kPlain, ElementWise<BitwiseOr>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Or_32u, kPlain, ElementWise<BitwiseOr>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_OrC_8u, kPlain, ElementWise<BitwiseOr>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_OrC_16u, kPlain, ElementWise<BitwiseOr>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_OrC_32u, kPlain, ElementWise<BitwiseOr>, kSrc, kVal, kDst, kLen),

      ROW(ZIVKS_Xor_8u, kPlain, ElementWise<BitwiseXor>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Xor_16u, kPlain, ElementWise<BitwiseXor>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_Xor_32u, kPlain, ElementWise<BitwiseXor>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_XorC_8u, kPlain, ElementWise<BitwiseXor>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_XorC_16u, kPlain, ElementWise<BitwiseXor>, kSrc, kVal, kDst, kLen),
      ROW(ZIVKS_XorC_32u, kPlain, ElementWise<BitwiseXor>, kSrc, kVal, kDst, kLen),

      ROW(ZIVKS_Not_8u, kPlain, ElementWise<BitwiseNot>, kSrc, kDst, kLen),
      ROW(ZIVKS_Not_16u, kPlain, ElementWise<BitwiseNot>, kSrc, kDst, kLen),
      ROW(ZIVKS_Not_32u, kPlain, ElementWise<BitwiseNot>, kSrc, kDst, kLen),

      ROW(ZIVKS_LShiftC_8u, kPlain, ElementWise<ShiftLeft>, kSrc, kNumber<3>, kDst, kLen),
      ROW(ZIVKS_LShiftC_8u, kPlain, ElementWise<ShiftLeft>, kSrc, kNumber<0>, kDst, kLen).with("by 0"),
      ROW(ZIVKS_LShiftC_16u, kPlain, ElementWise<ShiftLeft>, kSrc, kNumber<3>, kDst, kLen),
      ROW(ZIVKS_LShiftC_16u, kPlain, ElementWise<ShiftLeft>, kSrc, kNumber<16>, kDst, kLen).with("by 16"),
      ROW(ZIVKS_LShiftC_16s, kPlain, ElementWise<ShiftLeft>, kSrc, kNumber<3>, kDst, kLen),
      ROW(ZIVKS_LShiftC_32s, kPlain, ElementWise<ShiftLeft>, kSrc, kNumber<3>, kDst, kLen),
      ROW(ZIVKS_LShiftC_8u_I, kPlain, InPlace<ShiftLeft>, kNumber<3>, kSrcDst, kLen),
      ROW(ZIVKS_LShiftC_16u_I, kPlain, InPlace<ShiftLeft>, kNumber<3>, kSrcDst, kLen),
      ROW(ZIVKS_LShiftC_16s_I, kPlain, InPlace<ShiftLeft>, kNumber<3>, kSrcDst, kLen),
      ROW(ZIVKS_LShiftC_32s_I, kPlain, InPlace<ShiftLeft>, kNumber<3>, kSrcDst, kLen),

      ROW(ZIVKS_RShiftC_8u, kPlain, ElementWise<ShiftRight>, kSrc, kNumber<3>, kDst, kLen),
      ROW(ZIVKS_RShiftC_16u, kPlain, ElementWise<ShiftRight>, kSrc, kNumber<3>, kDst, kLen),
      ROW(ZIVKS_RShiftC_16s, kPlain, ElementWise<ShiftRight>, kSrc, kNumber<3>, kDst, kLen),
      ROW(ZIVKS_RShiftC_32s, kPlain, ElementWise<ShiftRight>, kSrc, kNumber<3>, kDst, kLen),
      ROW(ZIVKS_RShiftC_32s, kPlain, ElementWise<ShiftRight>, kSrc, kNumber<0>, kDst, kLen).with("by 0"),
      ROW(ZIVKS_RShiftC_8u_I, kPlain, InPlace<ShiftRight>, kNumber<3>, kSrcDst, kLen),
      ROW(ZIVKS_RShiftC_16u_I, kPlain, InPlace<ShiftRight>, kNumber<3>, kSrcDst, kLen),
      ROW(ZIVKS_RShiftC_16s_I, kPlain, InPlace<ShiftRight>, kNumber<3>, kSrcDst, kLen),
      ROW(ZIVKS_RShiftC_32s_I, kPlain, InPlace<ShiftRight>, kNumber<3>, kSrcDst, kLen),
  };
}

}  // namespace bench
