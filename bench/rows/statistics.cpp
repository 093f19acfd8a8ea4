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
  return {
      ROW(ZIVKS_Max_16s, kExtreme, Maximum<>, kSrc, kLen, kResult),
      ROW(ZIVKS_Max_32s, kExtreme, Maximum<>, kSrc, kLen, kResult),
      ROW(ZIVKS_Max_32f, kNanWatching, Maximum<>, kSrc, kLen, kResult),
      ROW(ZIVKS_Max_64f, kNanWatching, Maximum<>, kSrc, kLen, kResult),
      ROW(ZIVKS_Min_16s, kExtreme, Minimum<>, kSrc, kLen, kResult),
      ROW(ZIVKS_Min_32s, kExtreme, Minimum<>, kSrc, kLen, kResult),
      ROW(ZIVKS_Min_32f, kNanWatching, Minimum<>, kSrc, kLen, kResult),
      ROW(ZIVKS_Min_64f, kNanWatching, Minimum<>, kSrc, kLen, kResult),
      ROW(ZIVKS_MinMax_8u, kExtreme, MinimumAndMaximum, kSrc, kLen, kMin, kMax),
      ROW(ZIVKS_MinMax_16u, kExtreme, MinimumAndMaximum, kSrc, kLen, kMin, kMax),
      ROW(ZIVKS_MinMax_32u, kExtreme, MinimumAndMaximum, kSrc, kLen, kMin, kMax),
      ROW(ZIVKS_MinMax_16s, kExtreme, MinimumAndMaximum, kSrc, kLen, kMin, kMax),
      ROW(ZIVKS_MinMax_32s, kExtreme, MinimumAndMaximum, kSrc, kLen, kMin, kMax),
      ROW(ZIVKS_MinMax_32f, kNanWatching, MinimumAndMaximum, kSrc, kLen, kMin, kMax),
      ROW(ZIVKS_MinMax_64f, kNanWatching, MinimumAndMaximum, kSrc, kLen, kMin, kMax),
      ROW(ZIVKS_MaxAbs_16s, kSaturating, Maximum<Magnitude>, kSrc, kLen, kResult),
      ROW(ZIVKS_MaxAbs_32s, kSaturating, Maximum<Magnitude>, kSrc, kLen, kResult),
      ROW(ZIVKS_MaxAbs_32f, kNanWatching, Maximum<Magnitude>, kSrc, kLen, kResult),
      ROW(ZIVKS_MaxAbs_64f, kNanWatching, Maximum<Magnitude>, kSrc, kLen, kResult),
      ROW(ZIVKS_MinAbs_16s, kSaturating, Minimum<Magnitude>, kSrc, kLen, kResult),
      ROW(ZIVKS_MinAbs_32s, kSaturating, Minimum<Magnitude>, kSrc, kLen, kResult),
      ROW(ZIVKS_MinAbs_32f, kNanWatching, Minimum<Magnitude>, kSrc, kLen, kResult),
      ROW(ZIVKS_MinAbs_64f, kNanWatching, Minimum<Magnitude>, kSrc, kLen, kResult),
      ROW(ZIVKS_MaxIndx_16s, kPosition, MaximumAndIndex<>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MaxIndx_32s, kPosition, MaximumAndIndex<>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MaxIndx_32f, kPosition, MaximumAndIndex<>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MaxIndx_64f, kPosition, MaximumAndIndex<>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MinIndx_16s, kPosition, MinimumAndIndex<>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MinIndx_32s, kPosition, MinimumAndIndex<>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MinIndx_32f, kPosition, MinimumAndIndex<>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MinIndx_64f, kPosition, MinimumAndIndex<>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MinMaxIndx_8u, kPosition, MinimumAndMaximumAndIndices, kSrc, kLen, kMin, kMinIndx, kMax,
          kMaxIndx),
      ROW(ZIVKS_MinMaxIndx_16u, kPosition, MinimumAndMaximumAndIndices, kSrc, kLen, kMin, kMinIndx, kMax,
          kMaxIndx),
      ROW(ZIVKS_MinMaxIndx_32u, kPosition, MinimumAndMaximumAndIndices, kSrc, kLen, kMin, kMinIndx, kMax,
          kMaxIndx),
      ROW(ZIVKS_MinMaxIndx_16s, kPosition, MinimumAndMaximumAndIndices, kSrc, kLen, kMin, kMinIndx, kMax,
          kMaxIndx),
      ROW(ZIVKS_MinMaxIndx_32s, kPosition, MinimumAndMaximumAndIndices, kSrc, kLen, kMin, kMinIndx, kMax,
          kMaxIndx),
      ROW(ZIVKS_MinMaxIndx_32f, kPosition, MinimumAndMaximumAndIndices, kSrc, kLen, kMin, kMinIndx, kMax,
          kMaxIndx),
      ROW(ZIVKS_MinMaxIndx_64f, kPosition, MinimumAndMaximumAndIndices, kSrc, kLen, kMin, kMinIndx, kMax,
          kMaxIndx),
      ROW(ZIVKS_MaxAbsIndx_16s, kPosition, MaximumAndIndex<Magnitude>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MaxAbsIndx_32s, kPosition, MaximumAndIndex<Magnitude>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MinAbsIndx_16s, kPosition, MinimumAndIndex<Magnitude>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MinAbsIndx_32s, kPosition, MinimumAndIndex<Magnitude>, kSrc, kLen, kResult, kIndx),
      ROW(ZIVKS_MaxEvery_32f, kPlain, ElementWise<LargerOf>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_MaxEvery_64f, kPlain, ElementWise<LargerOf>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_MaxEvery_16s_I, kPlain, InPlace<LargerOf>, kSrc, kSrcDst, kLen),
      ROW(ZIVKS_MaxEvery_32s_I, kPlain, InPlace<LargerOf>, kSrc, kSrcDst, kLen),
      ROW(ZIVKS_MinEvery_32f, kPlain, ElementWise<SmallerOf>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_MinEvery_64f, kPlain, ElementWise<SmallerOf>, kSrc1, kSrc2, kDst, kLen),
      ROW(ZIVKS_MinEvery_16s_I, kPlain, InPlace<SmallerOf>, kSrc, kSrcDst, kLen),
      ROW(ZIVKS_MinEvery_32s_I, kPlain, InPlace<SmallerOf>, kSrc, kSrcDst, kLen),
      ROW(ZIVKS_CountInRange_32s, kCounting, CountBetween, kSrc, kLen, kResult, kNumber<-1000000000>,
          kNumber<1000000000>),
      ROW(ZIVKS_FindNearest_16u, kSearch, BisectEach, kSrc, kDst, kDstIndx, kLen, kTable<1024>, kNumber<1024>)
          .with("1 Ki entries"),
      ROW(ZIVKS_FindNearest_16u, kSearch, BisectEach, kSrc, kDst, kDstIndx, kLen, kTable<16384>,
          kNumber<16384>)
          .with("16 Ki entries"),
      LibraryFunction<&find_nearest_one_by_one>::row<BisectEach>(
          "ZIVKS_FindNearestOne_16u", kSearch, kSrc, kDst, kDstIndx, kLen, kTable<1024>, kNumber<1024>),
      ROW(ZIVKS_ReplaceNAN_32f_I, kPlain, InPlace<NumberOr>, kVal, kSrcDst, kLen),
      ROW(ZIVKS_ReplaceNAN_64f_I, kPlain, InPlace<NumberOr>, kVal, kSrcDst, kLen),
      ROW(ZIVKS_ZeroCrossing_32f, kCounting, CountChanges<ProductIsNegative>, kSrc, kLen, kResult, kNumber<0>)
          .with("kind 0"),
      ROW(ZIVKS_ZeroCrossing_32f, kCounting, CountChanges<SignBitsDiffer>, kSrc, kLen, kResult, kNumber<1>)
          .with("kind 1"),
      ROW(ZIVKS_ZeroCrossing_32f, kCounting, CountChanges<SignDistance>, kSrc, kLen, kResult, kNumber<2>)
          .with("kind 2"),
      ROW(ZIVKS_ZeroCrossing_16s32f, kCounting, CountChanges<ProductIsNegative>, kSrc, kLen, kResult,
          kNumber<0>)
          .with("kind 0"),
      ROW(ZIVKS_ZeroCrossing_16s32f, kCounting, CountChanges<SignBitsDiffer>, kSrc, kLen, kResult, kNumber<1>)
          .with("kind 1"),
      ROW(ZIVKS_ZeroCrossing_16s32f, kCounting, CountChanges<SignDistance>, kSrc, kLen, kResult, kNumber<2>)
          .with("kind 2"),
  };
}

}  // namespace bench
