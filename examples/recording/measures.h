// Measures of a channel.
#ifndef ZIVKS_EXAMPLES_RECORDING_MEASURES_H
#define ZIVKS_EXAMPLES_RECORDING_MEASURES_H

#include <cstdint>
#include <vector>

#include "examples/array.h"

struct Measures {
  double start;      // seconds from the beginning of the recording
  double seconds;    // duration
  double power;      // mean square without the offset; a full-scale square wave has 1
  double peak;       // largest absolute sample, 0 for silence
  double crossings;  // of the offset; reaching or leaving it counts one half

  double level_db() const;  // of the power, dBFS; minus infinity for silence
  double peak_db() const;   // dBFS; minus infinity for silence
  double crossings_per_second() const { return crossings / seconds; }
};

// Of a short stretch of a wave: all that is seen of it when the whole wave is drawn.
struct Outline {
  double start;  // seconds
  float lowest, highest;
};

struct Channel {
  double offset;                 // what levels and crossings are measured from
  std::vector<Measures> frames;  // of equal duration; the last one may be shorter
  std::vector<Outline> outlines;
};

// Measures a channel that comes in blocks. Frames and outlines become longer with the channel, so that their number is
// bounded; blocks of whatever lengths give the same measures. Peaks are those of the samples as they are, powers
// and crossings those of the samples less their offset. A pair of neighbours on both sides of a border between
// frames counts for the earlier frame.
class Meter {
 public:
  Meter(double offset, int64_t length, int sample_rate);

  void add(const float* samples, int32_t count);
  Channel take();

 private:
  void add_to_frame(const float* samples, int32_t count);
  void add_to_outline(const float* samples, int32_t count);

  Channel channel_;
  int sample_rate_;
  int32_t frame_length_, outline_length_;
  int64_t position_ = 0;  // samples that have been added
  double squares_ = 0;    // sum over the present frame
  Array<float> centred_;  // the sample before, and up to a frame behind it, less the offset
};

// The measures of frames that follow one another, as if they were one.
Measures combine(const Measures* first, const Measures* last);

#endif
