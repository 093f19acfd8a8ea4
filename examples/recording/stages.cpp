#include "stages.h"

#include <algorithm>

MedianFilter::MedianFilter(int32_t mask)
    : mask_(mask), delay_line_(own(ZIVKS_Malloc_32f(std::max(mask - 1, 1)))) {
  ZIVKFilterMedianPolicy* handle;
  check(ZIVKS_FilterMedianInit(mask, ZIVK_DT_32F, &handle));
  handle_.reset(handle);
}

void MedianFilter::filter(const float* src, float* dst, int32_t count) {
  const float* const before = has_begun_ ? delay_line_.get() : nullptr;
  check(ZIVKS_FilterMedian_32f(src, dst, count, mask_, before, delay_line_.get(), handle_.get()));
  has_begun_ = true;
}

Reducer::Reducer(int32_t factor, int32_t most)
    : factor_(factor),
      history_(factor - 1),
      phase_(factor - 1),
      recent_(own(ZIVKS_Malloc_32f(history_ + most))),
      mean_(own(ZIVKS_Malloc_32f(most))),
      reduced_(own(ZIVKS_Malloc_32f(most))) {
  check(ZIVKS_Zero_32f(recent_.get(), history_ + most));
}

int32_t Reducer::reduce(const float* src, int32_t count) {
  float* const block = recent_.get() + history_;
  check(ZIVKS_Copy_32f(src, block, count));
  check(ZIVKS_Zero_32f(mean_.get(), count));
  for (int32_t back = 0; back < factor_; ++back) {
    check(ZIVKS_AddProductC_32f(block - back, 1 / static_cast<float>(factor_), mean_.get(), count));
  }
  if (history_ > 0) check(ZIVKS_Move_32f(recent_.get() + count, recent_.get(), history_));
  int32_t kept;
  check(ZIVKS_SampleDown_32f(mean_.get(), count, reduced_.get(), &kept, factor_, &phase_));
  return kept;
}
