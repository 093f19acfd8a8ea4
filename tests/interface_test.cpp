// Values and layouts that programs are compiled against. They must never change, so they stand here a second
// time. The test passes if this file compiles.
#include <zivks/types.h>

#include <cstddef>

static_assert(ZIVK_STS_NO_ERR == 0 && ZIVK_STS_NULL_PTR_ERR == 1 && ZIVK_STS_SIZE_ERR == 2);
static_assert(ZIVK_STS_TOPK_METHOD_ERR == 7 && ZIVK_STS_MALLOC_ERR == 9 && ZIVK_STS_TRIANGLE_ERR == 10);
static_assert(ZIVK_STS_MASK_SIZE_ERR == 17 && ZIVK_STS_ZC_TYPE_ERR == 18 && ZIVK_STS_SHIFT_ERR == 19);
static_assert(ZIVK_STS_SCALE_ERR == 20 && ZIVK_STS_ROUND_RANGE_ERR == 200 && ZIVK_STS_BUFFER_SIZE_ERR == 202);
static_assert(ZIVK_STS_EVEN_MASK_WARN == 307 && ZIVK_STS_SAMPLE_FACTOR_ERR == 400);
static_assert(ZIVK_STS_SAMPLE_PHASE_ERR == 401 && ZIVK_STS_ROUND_MODE_ERR == 402);
static_assert(ZIVK_STS_DATA_TYPE_ERR == 405 && ZIVK_STS_TOPK_STRIDE_ERR == 600);

static_assert(ZIVK_DT_8U == 1 && ZIVK_DT_16U == 5 && ZIVK_DT_16S == 7 && ZIVK_DT_32U == 9 &&
              ZIVK_DT_32S == 11);
static_assert(ZIVK_DT_32F == 13 && ZIVK_DT_64U == 15 && ZIVK_DT_64S == 17 && ZIVK_DT_64F == 19);

static_assert(ZIVK_RND_ZERO == 0 && ZIVK_RND_NEAR == 1 && ZIVK_RND_AWAY == 2);

static_assert(sizeof(ZIVKStatus) == 4 && sizeof(ZIVKDataType) == 4 && sizeof(ZIVKRoundMode) == 4);

template <class Complex, class Part>
constexpr bool is_pair_of = sizeof(Complex) == 2 * sizeof(Part) && alignof(Complex) == alignof(Part) &&
                            offsetof(Complex, re) == 0 && offsetof(Complex, im) == sizeof(Part);
static_assert(is_pair_of<ZIVK8sc, signed char> && is_pair_of<ZIVK16sc, short> && is_pair_of<ZIVK32sc, int>);
static_assert(is_pair_of<ZIVK64sc, long> && is_pair_of<ZIVK32fc, float> && is_pair_of<ZIVK64fc, double>);
