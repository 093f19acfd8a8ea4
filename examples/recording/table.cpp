#include "table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kRows = 20;
constexpr std::size_t kChannelsInARow = 3;
constexpr double kQuietest = -60;  // dBFS at the left end of a bar

// A bar from kQuietest to full scale.
std::string bar(double level_db, std::size_t width) {
  const double filled = std::clamp(1 - level_db / kQuietest, 0.0, 1.0);
  std::string text(static_cast<std::size_t>(std::lround(filled * static_cast<double>(width))), '#');
  text.resize(width, ' ');
  return text;
}

void print_measures(const Channel& channel) {
  const Measures all = combine(channel.frames.data(), channel.frames.data() + channel.frames.size());
  std::printf("  %10.2f  %9.2f  %11.1f", all.level_db(), all.peak_db(), all.crossings_per_second());
}

}  // namespace

void print_table(const SoundInfo& sound, const Report& report) {
  const std::vector<Channel>& channels = report.tracks.front().channels;
  std::printf("%s\n\n", sound.description().c_str());
  std::printf("channel    offset  level/dBFS  peak/dBFS  crossings/s\n");
  for (std::size_t i = 0; i < channels.size(); ++i) {
    std::printf("%7zu  %+8.5f", i + 1, channels[i].offset);
    print_measures(channels[i]);
    std::printf("\n");
  }

  const std::size_t shown = std::min(channels.size(), kChannelsInARow);
  const std::size_t bar_width = 36 / shown;
  const std::size_t frame_count = channels.front().frames.size();
  const std::size_t frames_in_a_row = (frame_count + kRows - 1) / kRows;
  std::printf("\n%zu frame%s of %.0f ms a line%s; a bar reaches from %.0f dBFS to 0\n", frames_in_a_row,
              frames_in_a_row == 1 ? "" : "s", 1000 * channels.front().frames.front().seconds,
              shown < channels.size() ? ", the first channels only" : "", kQuietest);
  std::printf("   from/s");
  for (std::size_t i = 0; i < shown; ++i) {
    std::string heading = channels.size() == 1 ? "" : "channel " + std::to_string(i + 1);
    heading.resize(bar_width, ' ');
    std::printf("   level   peak  cross/s  %s", heading.c_str());
  }
  std::printf("\n");
  for (std::size_t first = 0; first < frame_count; first += frames_in_a_row) {
    const std::size_t last = std::min(first + frames_in_a_row, frame_count);
    std::printf("%9.3f", channels.front().frames[first].start);
    for (std::size_t i = 0; i < shown; ++i) {
      const Measures row = combine(channels[i].frames.data() + first, channels[i].frames.data() + last);
      std::printf("  %6.1f %6.1f  %7.0f  %s", row.level_db(), row.peak_db(), row.crossings_per_second(),
                  bar(row.level_db(), bar_width).c_str());
    }
    std::printf("\n");
  }

  for (std::size_t t = 1; t < report.tracks.size(); ++t) {
    const Track& track = report.tracks[t];
    std::printf("\n%s\n", track.name.c_str());
    std::printf("channel  level/dBFS  peak/dBFS  crossings/s  error/dBFS\n");
    for (std::size_t i = 0; i < track.channels.size(); ++i) {
      std::printf("%7zu", i + 1);
      print_measures(track.channels[i]);
      std::printf("  %10.2f\n", 10 * std::log10(track.error_power[i]));
    }
  }
}
