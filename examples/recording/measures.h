// What is measured in a channel.
#ifndef ZIVKS_EXAMPLES_RECORDING_MEASURES_H
#define ZIVKS_EXAMPLES_RECORDING_MEASURES_H

#include <cstdint>
#include <vector>

struct Measures {
  double start;      // seconds from the beginning of the recording
  double seconds;    // duration
  double power;      // mean square; a full-scale square wave has 1
  double peak;       // largest absolute sample, 0 for silence
  double crossings;  // of zero; reaching or leaving it counts one half

  double level_db() const;  // of the power, dBFS; minus infinity for silence
  double peak_db() const;   // dBFS; minus infinity for silence
  double crossings_per_second() const { return crossings / seconds; }
};

// Subtracts the mean of the samples from them, and returns it.
double remove_offset(float* samples, int32_t length);

// Measures stretches of frame_length samples; the last one may be shorter. A pair of neighbours on both sides
// of a border counts for the earlier stretch.
std::vector<Measures> measure(const float* samples, int32_t length, int32_t frame_length, int sample_rate);

// The measures of all these stretches together, which follow one another.
Measures combine(const Measures* first, const Measures* last);

#endif
