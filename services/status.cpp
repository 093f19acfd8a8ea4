#include <zivk_core.h>

const char* ZIVK_GetStatusString(ZIVKStatus status) {
  switch (status) {
    case ZIVK_STS_NO_ERR: return "no error";
    case ZIVK_STS_NULL_PTR_ERR: return "a required pointer is null";
    case ZIVK_STS_SIZE_ERR: return "a length is out of range";
    case ZIVK_STS_TOPK_METHOD_ERR: return "the TopK method is not 0, 1 or 2";
    case ZIVK_STS_MALLOC_ERR: return "working memory could not be allocated";
    case ZIVK_STS_TRIANGLE_ERR:
      return "phase, asymmetry, frequency or magnitude of a triangle wave is out of range";
    case ZIVK_STS_MASK_SIZE_ERR: return "the length of the median mask is out of range";
    case ZIVK_STS_ZC_TYPE_ERR: return "the zero-crossing kind is not 0, 1 or 2";
    case ZIVK_STS_SHIFT_ERR: return "the shift count is negative";
    case ZIVK_STS_SCALE_ERR: return "the scale is not positive and finite";
    case ZIVK_STS_ROUND_RANGE_ERR: return "the rounding mode of a conversion to unsigned is not 0, 1 or 2";
    case ZIVK_STS_BUFFER_SIZE_ERR: return "the size of a working buffer would overflow";
    case ZIVK_STS_EVEN_MASK_WARN: return "warning: the even length of the median mask was reduced by one";
    case ZIVK_STS_SAMPLE_FACTOR_ERR: return "the sampling factor is below 1";
    case ZIVK_STS_SAMPLE_PHASE_ERR: return "the sampling phase is out of range";
    case ZIVK_STS_ROUND_MODE_ERR: return "the rounding mode of a conversion to signed is not 0, 1 or 2";
    case ZIVK_STS_DATA_TYPE_ERR: return "the data type is not supported by this function";
    case ZIVK_STS_TOPK_STRIDE_ERR: return "the TopK source stride is below 1";
    default: return "unknown status";
  }
}
