/**
 * @file
 * Status codes, selectors and element records that all functions share.
 */
#ifndef ZIVKS_TYPES_H
#define ZIVKS_TYPES_H

#include <stdint.h>

#if defined(__GNUC__)
#define ZIVKS_API __attribute__((visibility("default")))
#else
#define ZIVKS_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** @defgroup types Types
 *  Status codes, selectors and element records.
 *  @{ */

/**
 * Result of a call: one of the `ZIVK_STS_` values, never negative. After any status but #ZIVK_STS_NO_ERR and
 * #ZIVK_STS_EVEN_MASK_WARN nothing has been written.
 */
typedef int32_t ZIVKStatus;

/** Values of ZIVKStatus. */
enum {
  ZIVK_STS_NO_ERR = 0,              /**< the operation was carried out */
  ZIVK_STS_NULL_PTR_ERR = 1,        /**< a required pointer is null */
  ZIVK_STS_SIZE_ERR = 2,            /**< a length is out of range, as a rule below 1 */
  ZIVK_STS_TOPK_METHOD_ERR = 7,     /**< the TopK method is not 0, 1 or 2 */
  ZIVK_STS_MALLOC_ERR = 9,          /**< working memory could not be allocated */
  ZIVK_STS_TRIANGLE_ERR = 10,       /**< phase, asymmetry, frequency or magnitude out of range */
  ZIVK_STS_MASK_SIZE_ERR = 17,      /**< median mask length out of range */
  ZIVK_STS_ZC_TYPE_ERR = 18,        /**< zero-crossing kind out of range */
  ZIVK_STS_SHIFT_ERR = 19,          /**< negative shift count */
  ZIVK_STS_SCALE_ERR = 20,          /**< scale is not positive and finite */
  ZIVK_STS_ROUND_RANGE_ERR = 200,   /**< rounding mode not 0, 1 or 2, in conversions to unsigned types */
  ZIVK_STS_BUFFER_SIZE_ERR = 202,   /**< the size of a working buffer would overflow */
  ZIVK_STS_EVEN_MASK_WARN = 307,    /**< warning: an even median mask was reduced by one; the work was done */
  ZIVK_STS_SAMPLE_FACTOR_ERR = 400, /**< sampling factor below 1 */
  ZIVK_STS_SAMPLE_PHASE_ERR = 401,  /**< sampling phase out of range */
  ZIVK_STS_ROUND_MODE_ERR = 402,    /**< rounding mode not 0, 1 or 2, in conversions to signed types */
  ZIVK_STS_DATA_TYPE_ERR = 405,     /**< the ZIVKDataType value is not supported by this call */
  ZIVK_STS_TOPK_STRIDE_ERR = 600    /**< TopK source stride below 1 */
};

/** Selects an element type at run time: one of the `ZIVK_DT_` values. */
typedef int32_t ZIVKDataType;

/** Values of ZIVKDataType. */
enum {
  ZIVK_DT_8U = 1,   /**< uint8_t */
  ZIVK_DT_16U = 5,  /**< uint16_t */
  ZIVK_DT_16S = 7,  /**< int16_t */
  ZIVK_DT_32U = 9,  /**< uint32_t */
  ZIVK_DT_32S = 11, /**< int32_t */
  ZIVK_DT_32F = 13, /**< float */
  ZIVK_DT_64U = 15, /**< uint64_t */
  ZIVK_DT_64S = 17, /**< int64_t */
  ZIVK_DT_64F = 19  /**< double */
};

/** Selects how a conversion rounds: one of the `ZIVK_RND_` values. */
typedef int32_t ZIVKRoundMode;

/** Values of ZIVKRoundMode. */
enum {
  ZIVK_RND_ZERO = 0, /**< toward zero */
  ZIVK_RND_NEAR = 1, /**< to nearest, ties to even */
  ZIVK_RND_AWAY = 2  /**< to nearest, ties away from zero */
};

/** Complex number of two int8_t parts. */
typedef struct {
  int8_t re; /**< real part */
  int8_t im; /**< imaginary part */
} ZIVK8sc;

/** Complex number of two int16_t parts. */
typedef struct {
  int16_t re; /**< real part */
  int16_t im; /**< imaginary part */
} ZIVK16sc;

/** Complex number of two int32_t parts. */
typedef struct {
  int32_t re; /**< real part */
  int32_t im; /**< imaginary part */
} ZIVK32sc;

/** Complex number of two int64_t parts. */
typedef struct {
  int64_t re; /**< real part */
  int64_t im; /**< imaginary part */
} ZIVK64sc;

/** Complex number of two float parts. */
typedef struct {
  float re; /**< real part */
  float im; /**< imaginary part */
} ZIVK32fc;

/** Complex number of two double parts. */
typedef struct {
  double re; /**< real part */
  double im; /**< imaginary part */
} ZIVK64fc;

/**
 * Decimal number of 128 bits: the digits as an integer, by sign and magnitude. Where the point stands is the caller's
 * business. A magnitude of 0 with the sign set is a zero
 * like the other.
 */
typedef struct {
  uint64_t lo; /**< lower 64 bits of the magnitude */
  uint64_t hi; /**< bit 63: set if the number is negative; below it, upper 63 bits of the magnitude */
} ZIVKDecimal128;

/** Working memory of a median filter. Nothing in it has a meaning between calls. */
typedef struct ZIVKFilterMedianPolicy ZIVKFilterMedianPolicy;

/** Bounds and seed of uniform noise of uint8_t. Nothing changes in it after it was made. */
typedef struct {
  uint8_t low;   /**< one bound */
  uint8_t high;  /**< the other bound, which may be the lower one */
  uint32_t seed; /**< where every call starts its draws */
} ZIVKRandUniformState_8u;

/** Bounds and seed of uniform noise of int16_t. Nothing changes in it after it was made. */
typedef struct {
  int16_t low;   /**< one bound */
  int16_t high;  /**< the other bound, which may be the lower one */
  uint32_t seed; /**< where every call starts its draws */
} ZIVKRandUniformState_16s;

/** Bounds and seed of uniform noise of float. Nothing changes in it after it was made. */
typedef struct {
  float low;     /**< one bound */
  float high;    /**< the other bound, which may be the lower one */
  uint32_t seed; /**< where every call starts its draws */
} ZIVKRandUniformState_32f;

/** Bounds and seed of uniform noise of double. Nothing changes in it after it was made. */
typedef struct {
  double low;    /**< one bound */
  double high;   /**< the other bound, which may be the lower one */
  uint32_t seed; /**< where every call starts its draws */
} ZIVKRandUniformState_64f;

/** Version of the library, in the form major.minor.patch. */
typedef struct {
  int32_t major;    /**< incompatible changes */
  int32_t minor;    /**< compatible additions */
  int32_t patch;    /**< corrections */
  const char* name; /**< name of the library, a constant text */
  const char* text; /**< "major.minor.patch", a constant text */
} ZIVKLibVersion;

/** @} */

#ifdef __cplusplus
}
#endif

#endif
