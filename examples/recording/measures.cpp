#include "measures.h"

#include <zivks.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <utility>

namespace {

constexpr int kFramesPerSecond = 50;
constexpr int64_t kMostFrames = 6000, kOutlines = 1200;  // outlines: about one a pixel

// What crossings are counted, of neighbours one of which may be zero.
float crossings(const float* samples, int32_t count) {
  constexpr int32_t kHalfForContact = 2;
  float result;
  check(ZIVKS_ZeroCrossing_32f(samples, count, &result, kHalfForContact));
  return result;
}

}  // namespace

double Measures::level_db() const { return 10 * std::log10(power); }
double Measures::peak_db() const { return 20 * std::log10(peak); }

Meter::Meter(double offset, int64_t length, int sample_rate)
    : channel_{offset, {}, {}},
      sample_rate_(sample_rate),
      frame_length_(static_cast<int32_t>(
          std::max({int64_t{sample_rate / kFramesPerSecond}, length / kMostFrames, int64_t{1}}))),
      outline_length_(static_cast<int32_t>(std::max(length / kOutlines, int64_t{1}))),
      centred_(own(ZIVKS_Malloc_32f(frame_length_ + 1))) {}

void Meter::add(const float* samples, int32_t count) {
  while (count > 0) {
    const auto left_in = [&](int32_t length) { return length - static_cast<int32_t>(position_ % length); };
    const int32_t part = std::min({count, left_in(frame_length_), left_in(outline_length_)});
    add_to_frame(samples, part);
    add_to_outline(samples, part);
    position_ += part;
    samples += part;
    count -= part;
  }
}

void Meter::add_to_frame(const float* samples, int32_t count) {
  const bool is_first = position_ % frame_length_ == 0;
  float* const previous = centred_.get();
  float* const centred = previous + 1;
  check(ZIVKS_SubC_32f(samples, static_cast<float>(channel_.offset), centred, count));
  if (is_first && position_ > 0) channel_.frames.back().crossings += double{crossings(previous, 2)};
  if (is_first) {
    channel_.frames.push_back({static_cast<double>(position_) / sample_rate_, 0, 0, 0, 0});
    squares_ = 0;
  }

  Measures& frame = channel_.frames.back();
  float peak;
  check(ZIVKS_MaxAbs_32f(samples, count, &peak));
  // The smallest normal number is the least that MaxAbs reports, for silence too.
  if (peak > FLT_MIN) frame.peak = std::max(frame.peak, double{peak});
  const int32_t before = is_first ? 0 : 1;
  frame.crossings += double{crossings(centred - before, count + before)};
  for (int32_t i = 0; i < count; ++i) squares_ += double{centred[i]} * double{centred[i]};
  const auto measured = static_cast<double>(position_ % frame_length_ + count);
  frame.seconds = measured / sample_rate_;
  frame.power = squares_ / measured;
  *previous = centred[count - 1];
}

void Meter::add_to_outline(const float* samples, int32_t count) {
  float lowest, highest;
  check(ZIVKS_MinMax_32f(samples, count, &lowest, &highest));
  if (position_ % outline_length_ == 0) {
    channel_.outlines.push_back({static_cast<double>(position_) / sample_rate_, lowest, highest});
  } else {
    Outline& outline = channel_.outlines.back();
    outline = {outline.start, std::min(outline.lowest, lowest), std::max(outline.highest, highest)};
  }
}

Channel Meter::take() { return std::move(channel_); }

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
