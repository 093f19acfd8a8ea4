// Rows that are known to take more instructions than is required of all, and how many they may take. The
// check fails when one of them gets worse, and also when one has become good enough to leave this list.
#ifndef BENCH_INSTRUCTION_COUNTER_KNOWN_MISSES_H
#define BENCH_INSTRUCTION_COUNTER_KNOWN_MISSES_H

namespace bench {

struct KnownMiss {
  const char* row;
  double share;    // of the plain loop's instructions an element
  int short_call;  // instructions of a call with the worst of the lengths 1 to 16
  const char* reason;
};

inline constexpr int kNoMiss = 0;

inline constexpr char kWideElements[] = "sixteen elements of 16 bytes fill sixteen registers an array";
inline constexpr char kHints[] =
    "two prefetch hints a turn, which the plain loop has not; and elements of 16 bytes";
inline constexpr char kScale[] = "finding the multiplier takes some fifteen instructions before the loop";
inline constexpr char kScaleAndMode[] =
    "checks, finding the multiplier and choosing the rounding mode take some forty instructions";
inline constexpr char kScaleAndTail[] = "and up to seven elements of the tail are rounded one by one";
inline constexpr char kTailRules[] = "whole blocks and tail have different rules, and a short array has both";
inline constexpr char kKeptAroundTheMiddle[] =
    "of 14 elements in blocks of 8, six on either side of the middle are put back one by one";
inline constexpr char kTwoComparisons[] =
    "a load and two comparisons a register are half of the plain loop's five already";
inline constexpr char kTwoSearches[] = "a search for the extreme, and another one for the place where it stands";
inline constexpr char kTwoOperations[] = "two operations a register to leave the real parts alone";

inline constexpr KnownMiss kKnownMisses[] = {
    // clang-format off
    {"ZIVKS_Copy_64sc", kNoMiss, 75, kWideElements},
    {"ZIVKS_Copy_64fc", kNoMiss, 75, kWideElements},
    {"ZIVKS_Move_64sc", kNoMiss, 78, kWideElements},
    {"ZIVKS_Move_64fc", kNoMiss, 78, kWideElements},
    {"ZIVKS_Set_64sc", kNoMiss, 74, kWideElements},
    {"ZIVKS_Set_64fc", kNoMiss, 75, kWideElements},
    {"ZIVKS_Flip_64fc", kNoMiss, 84, kWideElements},
    {"ZIVKS_CplxToReal_64fc", kNoMiss, 96, kWideElements},
    {"ZIVKS_RealToCplx_64f", kNoMiss, 97, kWideElements},
    {"ZIVKS_RealToCplx_64f re", kNoMiss, 91, kWideElements},
    {"ZIVKS_RealToCplx_64f im", kNoMiss, 88, kWideElements},
    {"ZIVKS_Conj_64fc", kNoMiss, 98, kWideElements},
    {"ZIVKS_Conj_64fc_I", kNoMiss, 90, kWideElements},
    {"ZIVKS_Add_64fc", kNoMiss, 106, kWideElements},
    {"ZIVKS_Add_64fc_I", kNoMiss, 104, kWideElements},
    {"ZIVKS_Sub_64fc", kNoMiss, 111, kWideElements},
    {"ZIVKS_Sub_64fc_I", kNoMiss, 109, kWideElements},
    {"ZIVKS_AddC_64fc", kNoMiss, 98, kWideElements},
    {"ZIVKS_AddC_64fc_I", kNoMiss, 90, kWideElements},
    {"ZIVKS_SubC_64fc", kNoMiss, 102, kWideElements},
    {"ZIVKS_SubC_64fc_I", kNoMiss, 94, kWideElements},
    {"ZIVKS_SubCRev_64fc", kNoMiss, 102, kWideElements},
    {"ZIVKS_SubCRev_64fc_I", kNoMiss, 94, kWideElements},
    {"ZIVKS_Real_64fc", 1.07, 80, kHints},
    {"ZIVKS_Imag_64fc", 1.07, 80, kHints},
    {"ZIVKS_Convert_16s32f_S", kNoMiss, 68, kScale},
    {"ZIVKS_Convert_16s64f_S", kNoMiss, 83, kScale},
    {"ZIVKS_Convert_32s32f_S", kNoMiss, 64, kScale},
    {"ZIVKS_Convert_32s64f_S", kNoMiss, 80, kScale},
    {"ZIVKS_Convert_32f8u_S zero", kNoMiss, 85, kScaleAndMode},
    {"ZIVKS_Convert_32f8u_S near", kNoMiss, 87, kScaleAndMode},
    {"ZIVKS_Convert_32f8u_S away", kNoMiss, 85, kScaleAndMode},
    {"ZIVKS_Convert_32f16u_S zero", kNoMiss, 80, kScaleAndMode},
    {"ZIVKS_Convert_32f16u_S near", kNoMiss, 82, kScaleAndMode},
    {"ZIVKS_Convert_32f16u_S away", kNoMiss, 82, kScaleAndMode},
    {"ZIVKS_Convert_64f8u_S zero", kNoMiss, 95, kScaleAndMode},
    {"ZIVKS_Convert_64f8u_S away", kNoMiss, 97, kScaleAndMode},
    {"ZIVKS_Convert_64f16u_S zero", kNoMiss, 93, kScaleAndMode},
    {"ZIVKS_Convert_64f16u_S away", kNoMiss, 95, kScaleAndMode},
    {"ZIVKS_Convert_32f8s_S zero", kNoMiss, 85, kScaleAndMode},
    {"ZIVKS_Convert_32f8s_S near", kNoMiss, 87, kScaleAndMode},
    {"ZIVKS_Convert_32f8s_S away", kNoMiss, 85, kScaleAndMode},
    {"ZIVKS_Convert_32f16s_S zero", kNoMiss, 77, kScaleAndMode},
    {"ZIVKS_Convert_32f16s_S near", kNoMiss, 79, kScaleAndMode},
    {"ZIVKS_Convert_32f16s_S away", kNoMiss, 79, kScaleAndMode},
    {"ZIVKS_Convert_32f32s_S zero", kNoMiss, 69, kScaleAndMode},
    {"ZIVKS_Convert_32f32s_S near", kNoMiss, 71, kScaleAndMode},
    {"ZIVKS_Convert_32f32s_S away", kNoMiss, 71, kScaleAndMode},
    {"ZIVKS_Convert_64f8s_S zero", kNoMiss, 92, kScaleAndMode},
    {"ZIVKS_Convert_64f8s_S away", kNoMiss, 93, kScaleAndMode},
    {"ZIVKS_Convert_64f16s_S zero", kNoMiss, 90, kScaleAndMode},
    {"ZIVKS_Convert_64f16s_S away", kNoMiss, 91, kScaleAndMode},
    {"ZIVKS_Convert_64f32s_S zero", kNoMiss, 86, kScaleAndMode},
    {"ZIVKS_Convert_64f32s_S away", kNoMiss, 87, kScaleAndMode},
    {"ZIVKS_Convert_64f64s_S zero", kNoMiss, 81, kScaleAndMode},
    {"ZIVKS_Convert_64f64s_S away", kNoMiss, 82, kScaleAndMode},
    {"ZIVKS_Convert_64f8u_S near", kNoMiss, 308, kScaleAndTail},
    {"ZIVKS_Convert_64f16u_S near", kNoMiss, 197, kScaleAndTail},
    {"ZIVKS_Convert_64f8s_S near", kNoMiss, 319, kScaleAndTail},
    {"ZIVKS_Convert_64f16s_S near", kNoMiss, 201, kScaleAndTail},
    {"ZIVKS_Convert_64f32s_S near", kNoMiss, 188, kScaleAndTail},
    {"ZIVKS_Convert_64f64s_S near", kNoMiss, 179, kScaleAndTail},
    {"ZIVKS_Max_64f", kNoMiss, 62, kTailRules},
    {"ZIVKS_Min_64f", kNoMiss, 62, kTailRules},
    {"ZIVKS_MinMax_32f", kNoMiss, 74, kTailRules},
    {"ZIVKS_MinMax_64f", kNoMiss, 89, kTailRules},
    {"ZIVKS_MaxAbs_64f", kNoMiss, 73, kTailRules},
    {"ZIVKS_MinAbs_64f", kNoMiss, 72, kTailRules},
    {"ZIVKS_ZeroCrossing_32f kind 0", kNoMiss, 93, kTailRules},
    {"ZIVKS_ZeroCrossing_32f kind 1", kNoMiss, 87, kTailRules},
    {"ZIVKS_ZeroCrossing_32f kind 2", kNoMiss, 120, kTailRules},
    {"ZIVKS_ZeroCrossing_16s32f kind 0", kNoMiss, 104, kTailRules},
    {"ZIVKS_ZeroCrossing_16s32f kind 1", kNoMiss, 101, kTailRules},
    {"ZIVKS_ZeroCrossing_16s32f kind 2", kNoMiss, 98, kTailRules},
    {"ZIVKS_Flip_8u_I", kNoMiss, 82, kKeptAroundTheMiddle},
    {"ZIVKS_MaxIndx_16s", kNoMiss, 81, kTwoSearches},
    {"ZIVKS_MaxIndx_32s", kNoMiss, 96, kTwoSearches},
    {"ZIVKS_MaxIndx_32f", kNoMiss, 141, kTwoSearches},
    {"ZIVKS_MaxIndx_64f", kNoMiss, 187, kTwoSearches},
    {"ZIVKS_MinIndx_16s", kNoMiss, 81, kTwoSearches},
    {"ZIVKS_MinIndx_32s", kNoMiss, 96, kTwoSearches},
    {"ZIVKS_MinIndx_32f", kNoMiss, 141, kTwoSearches},
    {"ZIVKS_MinIndx_64f", kNoMiss, 179, kTwoSearches},
    {"ZIVKS_MinMaxIndx_8u", kNoMiss, 117, kTwoSearches},
    {"ZIVKS_MinMaxIndx_16u", kNoMiss, 121, kTwoSearches},
    {"ZIVKS_MinMaxIndx_32u", kNoMiss, 148, kTwoSearches},
    {"ZIVKS_MinMaxIndx_16s", kNoMiss, 139, kTwoSearches},
    {"ZIVKS_MinMaxIndx_32s", kNoMiss, 166, kTwoSearches},
    {"ZIVKS_MinMaxIndx_32f", kNoMiss, 225, kTwoSearches},
    {"ZIVKS_MinMaxIndx_64f", kNoMiss, 300, kTwoSearches},
    {"ZIVKS_MaxAbsIndx_16s", kNoMiss, 85, kTwoSearches},
    {"ZIVKS_MaxAbsIndx_32s", kNoMiss, 103, kTwoSearches},
    {"ZIVKS_MinAbsIndx_16s", kNoMiss, 75, kTwoSearches},
    {"ZIVKS_MinAbsIndx_32s", kNoMiss, 93, kTwoSearches},
    {"ZIVKS_MinMax_8u", 0.58, kNoMiss, kTwoComparisons},
    {"ZIVKS_MinMax_16u", 0.58, kNoMiss, kTwoComparisons},
    {"ZIVKS_MinMax_32u", 0.58, kNoMiss, kTwoComparisons},
    {"ZIVKS_MinMax_16s", 0.58, kNoMiss, kTwoComparisons},
    {"ZIVKS_MinMax_32s", 0.58, kNoMiss, kTwoComparisons},
    {"ZIVKS_Conj_16sc", 0.59, kNoMiss, kTwoOperations},
    {"ZIVKS_Conj_16sc_I", 0.61, kNoMiss, kTwoOperations},
    // clang-format on
};

}  // namespace bench

#endif
