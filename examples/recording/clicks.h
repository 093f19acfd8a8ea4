// Clicks, as a scratched record has them.
#ifndef ZIVKS_EXAMPLES_RECORDING_CLICKS_H
#define ZIVKS_EXAMPLES_RECORDING_CLICKS_H

#include <cstdint>

#include "examples/array.h"

// Clicks of one channel. Where they are and how high depends on the channel and on nothing else, so not on the blocks
// that they are added to.
class Clicks {
 public:
  static constexpr int kSamples = 2;  // that a click lasts

  Clicks(int per_second, int sample_rate, int channel);

  // Adds the clicks of the next `count` samples to them.
  void add(float* samples, int32_t count);

 private:
  void draw();

  int32_t per_second_, sample_rate_;
  uint32_t seed_;
  int32_t second_at_ = 0;         // samples of the present second that have gone by
  Array<int32_t> first_samples_;  // of the clicks, from the beginning of the second, ascending
  Array<float> places_, heights_;
};

#endif
