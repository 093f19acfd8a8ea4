#include "measures.h"

#include <zivks.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "examples/array.h"

double Measures::level_db() const { return 10 * std::log10(power); }
double Measures::peak_db() const { return 20 * std::log10(peak); }

Channel measure(const float* samples, int32_t length, int32_t frame_length, int sample_rate) {
  constexpr int32_t kHalfForContact = 2;
  double sum = 0;
  for (int32_t i = 0; i < length; ++i) sum += double{samples[i]};
  Channel channel = {sum / length, {}};

  frame_length = std::min(frame_length, length);
  const auto centred = own(ZIVKS_Malloc_32f(frame_length + 1));  // and the first sample behind the frame
  for (int32_t start = 0; start < length; start += std::min(frame_length, length - start)) {
    const int32_t count = std::min(frame_length, length - start);
    const int32_t with_next = std::min(count + 1, length - start);

    float peak;
    check(ZIVKS_MaxAbs_32f(samples + start, count, &peak));
    // The smallest normal number is the least that MaxAbs reports, for silence too.
    if (peak <= FLT_MIN) peak = 0;
    check(ZIVKS_SubC_32f(samples + start, static_cast<float>(channel.offset), centred.get(), with_next));
    double squares = 0;
    for (int32_t i = 0; i < count; ++i) {
      const double sample = centred[static_cast<std::size_t>(i)];
      squares += sample * sample;
    }
    float crossings;
    check(ZIVKS_ZeroCrossing_32f(centred.get(), with_next, &crossings, kHalfForContact));

    channel.frames.push_back({static_cast<double>(start) / sample_rate,
                              static_cast<double>(count) / sample_rate, squares / count, double{peak},
                              double{crossings}});
  }
  return channel;
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
