// Measures of a channel.
#ifndef ZIVKS_EXAMPLES_RECORDING_MEASURES_H
#define ZIVKS_EXAMPLES_RECORDING_MEASURES_H

#include <cstdint>
#include <vector>

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

struct Channel {
  double offset;                 // mean of all samples
  std::vector<Measures> frames;  // of equal duration; the last one may be shorter
};

// Peaks are those of the samples as they are; powers and crossings those of the samples less their offset. A
// pair of neighbours on both sides of a border between frames counts for the earlier frame.
Channel measure(const float* samples, int32_t length, int32_t frame_length, int sample_rate);

// The measures of frames that follow one another, as if they were one.
Measures combine(const Measures* first, const Measures* last);

#endif
