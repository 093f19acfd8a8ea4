#include "clicks.h"

#include <zivks.h>

#include <algorithm>

namespace {

// A record holds bounds and seed of noise; every call with it gives the same values.
void fill_with_noise(float* values, int32_t count, float low, float high, uint32_t seed) {
  ZIVKRandUniformState_32f* record;
  check(ZIVKS_RandUniformInit_32f(&record, low, high, seed));
  const ZIVKStatus status = ZIVKS_RandUniform_32f(values, count, record);
  check(ZIVKS_RandUniformRelease_32f(record));
  check(status);
}

}  // namespace

Clicks::Clicks(int per_second, int sample_rate, int channel)
    : per_second_(per_second), sample_rate_(sample_rate), seed_(static_cast<uint32_t>(channel) * 0x9E3779B1) {
  if (per_second_ == 0) return;
  first_samples_ = own(ZIVKS_Malloc_32s(per_second));
  places_ = own(ZIVKS_Malloc_32f(per_second));
  heights_ = own(ZIVKS_Malloc_32f(per_second));
}

// The clicks of one second.
void Clicks::draw() {
  constexpr float kLowest = 0.3F;
  const auto last_place = static_cast<float>(std::max(sample_rate_ - kSamples, 0));
  fill_with_noise(places_.get(), per_second_, 0, last_place, seed_++);
  fill_with_noise(heights_.get(), per_second_, kLowest, 1, seed_++);
  check(ZIVKS_SortAscend_32f_I(places_.get(), per_second_));
  check(ZIVKS_Convert_32f32s_S(places_.get(), first_samples_.get(), per_second_, ZIVK_RND_ZERO, 1));
}

void Clicks::add(float* samples, int32_t count) {
  if (per_second_ == 0) return;
  while (count > 0) {
    if (second_at_ == 0) draw();
    const int32_t part = std::min(count, sample_rate_ - second_at_);
    for (int32_t i = 0; i < per_second_; ++i) {
      const int32_t first = first_samples_.get()[i];
      const float height = heights_.get()[i];
      for (int32_t at = std::max(first, second_at_); at < std::min(first + kSamples, second_at_ + part);
           ++at) {
        float& sample = samples[at - second_at_];
        sample = std::clamp(i % 2 == 0 ? sample + height : sample - height, -1.0F, 1.0F);
      }
    }
    second_at_ = (second_at_ + part) % sample_rate_;
    samples += part;
    count -= part;
  }
}
