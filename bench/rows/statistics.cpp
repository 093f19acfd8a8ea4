#include "bench/row.h"

namespace bench {

// The function for a single value has no array: a call for each of many.
static ZIVKStatus find_nearest_one_by_one(const uint16_t* src, uint16_t* dst, int32_t* dstIndx, int32_t len,
                                          const uint16_t* table, int32_t tableLen) {
  for (int32_t i = 0; i < len; ++i) {
    ZIVKS_FindNearestOne_16u(src[i], dst + i, dstIndx + i, table, tableLen);
  }
  return ZIVK_STS_NO_ERR;
}

std::vector<Row> statistics_rows() {
  using namespace role;
  return {
      ROW(ZIVKS_Max_16s, kExtreme, Maximum<>, MaxElement, src, len, result),
      ROW(ZIVKS_Max_32s, kExtreme, Maximum<>, MaxElement, src, len, result),
      ROW(ZIVKS_Max_32f, kNanWatching, Maximum<>, MaxElement, src, len, result),
      ROW(ZIVKS_Max_64f, kNanWatching, Maximum<>, MaxElement, src, len, result),
      ROW(ZIVKS_Min_16s, kExtreme, Minimum<>, MinElement, src, len, result),
      ROW(ZIVKS_Min_32s, kExtreme, Minimum<>, MinElement, src, len, result),
      ROW(ZIVKS_Min_32f, kNanWatching, Minimum<>, MinElement, src, len, result),
      ROW(ZIVKS_Min_64f, kNanWatching, Minimum<>, MinElement, src, len, result),
      ROW(ZIVKS_MinMax_8u, kExtreme, MinimumAndMaximum, MinmaxElement, src, len, pMin, pMax),
      ROW(ZIVKS_MinMax_16u, kExtreme, MinimumAndMaximum, MinmaxElement, src, len, pMin, pMax),
      ROW(ZIVKS_MinMax_32u, kExtreme, MinimumAndMaximum, MinmaxElement, src, len, pMin, pMax),
      ROW(ZIVKS_MinMax_16s, kExtreme, MinimumAndMaximum, MinmaxElement, src, len, pMin, pMax),
      ROW(ZIVKS_MinMax_32s, kExtreme, MinimumAndMaximum, MinmaxElement, src, len, pMin, pMax),
      ROW(ZIVKS_MinMax_32f, kNanWatching, MinimumAndMaximum, MinmaxElement, src, len, pMin, pMax),
      ROW(ZIVKS_MinMax_64f, kNanWatching, MinimumAndMaximum, MinmaxElement, src, len, pMin, pMax),
      ROW(ZIVKS_MaxAbs_16s, kSaturating, Maximum<Magnitude>, NoRoutine, src, len, result),
      ROW(ZIVKS_MaxAbs_32s, kSaturating, Maximum<Magnitude>, NoRoutine, src, len, result),
      ROW(ZIVKS_MaxAbs_32f, kNanWatching, Maximum<Magnitude>, NoRoutine, src, len, result),
      ROW(ZIVKS_MaxAbs_64f, kNanWatching, Maximum<Magnitude>, NoRoutine, src, len, result),
      ROW(ZIVKS_MinAbs_16s, kSaturating, Minimum<Magnitude>, NoRoutine, src, len, result),
      ROW(ZIVKS_MinAbs_32s, kSaturating, Minimum<Magnitude>, NoRoutine, src, len, result),
      ROW(ZIVKS_MinAbs_32f, kNanWatching, Minimum<Magnitude>, NoRoutine, src, len, result),
      ROW(ZIVKS_MinAbs_64f, kNanWatching, Minimum<Magnitude>, NoRoutine, src, len, result),
      ROW(ZIVKS_MaxIndx_16s, kPosition, MaximumAndIndex<>, MaxElement, src, len, result, pIndx),
      ROW(ZIVKS_MaxIndx_32s, kPosition, MaximumAndIndex<>, MaxElement, src, len, result, pIndx),
      ROW(ZIVKS_MaxIndx_32f, kPosition, MaximumAndIndex<>, MaxElement, src, len, result, pIndx),
      ROW(ZIVKS_MaxIndx_64f, kPosition, MaximumAndIndex<>, MaxElement, src, len, result, pIndx),
      ROW(ZIVKS_MinIndx_16s, kPosition, MinimumAndIndex<>, MinElement, src, len, result, pIndx),
      ROW(ZIVKS_MinIndx_32s, kPosition, MinimumAndIndex<>, MinElement, src, len, result, pIndx),
      ROW(ZIVKS_MinIndx_32f, kPosition, MinimumAndIndex<>, MinElement, src, len, result, pIndx),
      ROW(ZIVKS_MinIndx_64f, kPosition, MinimumAndIndex<>, MinElement, src, len, result, pIndx),
      ROW(ZIVKS_MinMaxIndx_8u, kPosition, MinimumAndMaximumAndIndices, MinmaxElement, src, len, pMin,
          pMinIndx, pMax, pMaxIndx),
      ROW(ZIVKS_MinMaxIndx_16u, kPosition, MinimumAndMaximumAndIndices, MinmaxElement, src, len, pMin,
          pMinIndx, pMax, pMaxIndx),
      ROW(ZIVKS_MinMaxIndx_32u, kPosition, MinimumAndMaximumAndIndices, MinmaxElement, src, len, pMin,
          pMinIndx, pMax, pMaxIndx),
      ROW(ZIVKS_MinMaxIndx_16s, kPosition, MinimumAndMaximumAndIndices, MinmaxElement, src, len, pMin,
          pMinIndx, pMax, pMaxIndx),
      ROW(ZIVKS_MinMaxIndx_32s, kPosition, MinimumAndMaximumAndIndices, MinmaxElement, src, len, pMin,
          pMinIndx, pMax, pMaxIndx),
      ROW(ZIVKS_MinMaxIndx_32f, kPosition, MinimumAndMaximumAndIndices, MinmaxElement, src, len, pMin,
          pMinIndx, pMax, pMaxIndx),
      ROW(ZIVKS_MinMaxIndx_64f, kPosition, MinimumAndMaximumAndIndices, MinmaxElement, src, len, pMin,
          pMinIndx, pMax, pMaxIndx),
      ROW(ZIVKS_MaxAbsIndx_16s, kPosition, MaximumAndIndex<Magnitude>, NoRoutine, src, len, result, pIndx),
      ROW(ZIVKS_MaxAbsIndx_32s, kPosition, MaximumAndIndex<Magnitude>, NoRoutine, src, len, result, pIndx),
      ROW(ZIVKS_MinAbsIndx_16s, kPosition, MinimumAndIndex<Magnitude>, NoRoutine, src, len, result, pIndx),
      ROW(ZIVKS_MinAbsIndx_32s, kPosition, MinimumAndIndex<Magnitude>, NoRoutine, src, len, result, pIndx),
      ROW(ZIVKS_MaxEvery_32f, kPlain, ElementWise<LargerOf>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_MaxEvery_64f, kPlain, ElementWise<LargerOf>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_MaxEvery_16s_I, kPlain, InPlace<LargerOf>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_MaxEvery_32s_I, kPlain, InPlace<LargerOf>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_MaxEvery_32f_I, kPlain, InPlace<LargerOf>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_MaxEvery_64f_I, kPlain, InPlace<LargerOf>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_MinEvery_32f, kPlain, ElementWise<SmallerOf>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_MinEvery_64f, kPlain, ElementWise<SmallerOf>, NoRoutine, src1, src2, dst, len),
      ROW(ZIVKS_MinEvery_16s_I, kPlain, InPlace<SmallerOf>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_MinEvery_32s_I, kPlain, InPlace<SmallerOf>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_MinEvery_32f_I, kPlain, InPlace<SmallerOf>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_MinEvery_64f_I, kPlain, InPlace<SmallerOf>, NoRoutine, src, srcDst, len),
      ROW(ZIVKS_CountInRange_32s, kExtreme, CountBetween, NoRoutine, src, len, result, number<-1000000000>,
          number<1000000000>),
      ROW(ZIVKS_FindNearest_16u, kBisection, BisectEach, LowerBoundEach, src, dst, dstIndx, len, table<1024>,
          number<1024>)
          .with("1 Ki entries"),
      ROW(ZIVKS_FindNearest_16u, kBisection, BisectEach, LowerBoundEach, src, dst, dstIndx, len, table<16384>,
          number<16384>)
          .with("16 Ki entries"),
      LibraryFunction<&find_nearest_one_by_one>::row<BisectEach, LowerBoundEach>(
          "ZIVKS_FindNearestOne_16u", kPlain, src, dst, dstIndx, len, table<1024>, number<1024>),
      ROW(ZIVKS_ReplaceNAN_32f_I, kPlain, InPlace<NumberOr>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_ReplaceNAN_64f_I, kPlain, InPlace<NumberOr>, NoRoutine, val, srcDst, len),
      ROW(ZIVKS_ZeroCrossing_32f, kWidening, CountChanges<ProductIsNegative>, NoRoutine, src, len, result,
          number<0>)
          .with("kind 0"),
      ROW(ZIVKS_ZeroCrossing_32f, kWidening, CountChanges<SignBitsDiffer>, NoRoutine, src, len, result,
          number<1>)
          .with("kind 1"),
      ROW(ZIVKS_ZeroCrossing_32f, kWidening, CountChanges<SignDistance>, NoRoutine, src, len, result,
          number<2>)
          .with("kind 2"),
      ROW(ZIVKS_ZeroCrossing_16s32f, kWidening, CountChanges<ProductIsNegative>, NoRoutine, src, len, result,
          number<0>)
          .with("kind 0"),
      ROW(ZIVKS_ZeroCrossing_16s32f, kWidening, CountChanges<SignBitsDiffer>, NoRoutine, src, len, result,
          number<1>)
          .with("kind 1"),
      ROW(ZIVKS_ZeroCrossing_16s32f, kWidening, CountChanges<SignDistance>, NoRoutine, src, len, result,
          number<2>)
          .with("kind 2"),
  };
}

}  // namespace bench
