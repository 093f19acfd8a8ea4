// What is done to a channel, block by block: each stage keeps what the next block needs of this one.
#ifndef ZIVKS_EXAMPLES_RECORDING_STAGES_H
#define ZIVKS_EXAMPLES_RECORDING_STAGES_H

#include <zivks.h>

#include <cstdint>
#include <memory>

#include "examples/array.h"

// Replaces each sample by the median of `mask` samples around it. Clicks of up to (mask - 1) / 2 samples disappear.
class MedianFilter {
 public:
  explicit MedianFilter(int32_t mask);  // odd

  // Samples by which the output is behind the input: it is the median of samples up to the present one.
  int32_t lag() const { return mask_ / 2; }
  // A block holds at least `mask` samples.
  void filter(const float* src, float* dst, int32_t count);

 private:
  struct ReleaseHandle {
    void operator()(ZIVKFilterMedianPolicy* handle) const { ZIVKS_FilterMedianRelease(handle); }
  };

  int32_t mask_;
  bool has_begun_ = false;
  std::unique_ptr<ZIVKFilterMedianPolicy, ReleaseHandle> handle_;
  Array<float> delay_line_;
};

// Lowers the sample rate by `factor`: the mean of each `factor` samples. So what lies above half of the new rate is
// weakened before it would come back as a lower tone.
class Reducer {
 public:
  Reducer(int32_t factor, int32_t most);  // samples in a block

  // Returns the number of samples that it gives for the next `count`, which may be none.
  int32_t reduce(const float* src, int32_t count);
  const float* samples() const { return reduced_.get(); }

 private:
  int32_t factor_, history_;  // samples of the block before
  int32_t phase_;             // of the last sample of a group
  Array<float> recent_;       // the history, and the block behind it
  Array<float> mean_, reduced_;
};

#endif
