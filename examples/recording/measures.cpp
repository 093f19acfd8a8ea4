#include "measures.h"

#include <zivks.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "array.h"

double Measures::level_db() const { return 10 * std::log10(power); }
double Measures::peak_db() const { return 20 * std::log10(peak); }

double remove_offset(float* samples, int32_t length) {
  double sum = 0;
  for (int32_t i = 0; i < length; ++i) sum += double{samples[i]};
  const double mean = sum / length;
  check(ZIVKS_SubC_32f_I(static_cast<float>(mean), samples, length));
  return mean;
}

std::vector<Measures> measure(const float* samples, int32_t length, int32_t frame_length, int sample_rate) {
  constexpr int32_t kHalfForContact = 2;
  std::vector<Measures> frames;
  for (int32_t start = 0; start < length; start += std::min(frame_length, length - start)) {
    const float* const frame = samples + start;
    const int32_t count = std::min(frame_length, length - start);

    double squares = 0;
    for (int32_t i = 0; i < count; ++i) squares += double{frame[i]} * double{frame[i]};
    float peak;
    check(ZIVKS_MaxAbs_32f(frame, count, &peak));
    // The smallest normal number is the least that MaxAbs reports, for silence too.
    if (peak <= FLT_MIN) peak = 0;
    float crossings;
    check(ZIVKS_ZeroCrossing_32f(frame, std::min(count + 1, length - start), &crossings, kHalfForContact));

    frames.push_back({static_cast<double>(start) / sample_rate, static_cast<double>(count) / sample_rate,
                      squares / count, double{peak}, double{crossings}});
  }
  return frames;
}

Measures combine(const Measures* first, const Measures* last) {
  Measures all = {first->start, 0, 0, 0, 0};
  double energy = 0;
  for (const Measures* one = first; one != last; ++one) {
    all.seconds += one->seconds;
    energy += one->power * one->seconds;
    all.peak = std::max(all.peak, one->peak);
    all.crossings += one->crossings;
  }
  all.power = energy / all.seconds;
  return all;
}
