#include "processing.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <stdexcept>
#include <utility>

#include "clicks.h"
#include "examples/progress.h"
#include "stages.h"
#include "wav_file.h"

namespace {

namespace fs = std::filesystem;

// Samples of all channels in a block, at most: as bytes they are counted in an int32_t.
constexpr int32_t kMostAtOnce = 1 << 26;

// Calls `use(count, is_last)` for one block after the other. All hold `block` samples but the last one, which
// takes the rest as well: a median filter needs blocks as long as its mask.
template <class Use>
void for_each_block(int64_t length, int32_t block, Use use) {
  for (int64_t left = length; left > 0;) {
    const bool is_last = left < 2 * int64_t{block};
    const int32_t count = is_last ? static_cast<int32_t>(left) : block;
    use(count, is_last);
    left -= count;
  }
}

std::vector<double> offsets_of(Sound& sound, int32_t block, int32_t most, Progress& progress) {
  std::vector<Array<float>> buffers;
  std::vector<float*> channels;
  for (int c = 0; c < sound.info().channels; ++c) {
    channels.push_back(buffers.emplace_back(own(ZIVKS_Malloc_32f(most))).get());
  }
  std::vector<double> sums(channels.size());
  uint64_t done = 0;
  for_each_block(sound.info().length, block, [&](int32_t count, bool) {
    sound.read(channels, count);
    for (std::size_t c = 0; c < channels.size(); ++c) {
      for (int32_t i = 0; i < count; ++i) sums[c] += double{channels[c][i]};
    }
    done += static_cast<uint64_t>(count);
    progress.show(done, done / 2);  // of two passes
  });
  sound.rewind();
  for (double& sum : sums) sum /= static_cast<double>(sound.info().length);
  return sums;
}

// Consecutive samples of a channel.
struct Stretch {
  const float* samples;
  int32_t count;
};

// To a sum that goes through the sound in order, so that it does not depend on blocks.
void add_squared_differences(const float* a, const float* b, int32_t count, double& sum) {
  for (int32_t i = 0; i < count; ++i) {
    const double difference = double{a[i]} - double{b[i]};
    sum += difference * difference;
  }
}

// A block of samples, and the last few of the block before it.
class BlockWithHistory {
 public:
  BlockWithHistory(int32_t history, int32_t most)
      : history_(history), samples_(own(ZIVKS_Malloc_32f(history + most))) {}

  float* block() { return samples_.get() + history_; }
  const float* history() const { return samples_.get(); }
  // The last of `count` samples become the history of the next block.
  void keep(int32_t count) {
    if (history_ > 0) check(ZIVKS_Move_32f(samples_.get() + count, samples_.get(), history_));
  }

 private:
  int32_t history_;
  Array<float> samples_;
};

// The way of one channel through all stages. A block of the cleaned sound begins and ends `lag` samples before the
// block that it is made of, but the first one begins, and the last one ends, where the sound does.
class ChannelProcess {
 public:
  // A block takes up to `most` samples.
  ChannelProcess(const SoundInfo& sound, const Processing& processing, int channel, int32_t most)
      : clicks_(processing.clicks_per_second, sound.sample_rate, channel),
        threshold_(processing.threshold),
        lag_(processing.mask / 2),
        recorded_(lag_, most),
        clicked_(lag_, most + lag_),
        cleaned_(own(ZIVKS_Malloc_32f(most + lag_))) {
    if (processing.mask > 1) filter_ = std::make_unique<MedianFilter>(processing.mask);
    if (processing.factor > 1) reducer_ = std::make_unique<Reducer>(processing.factor, most + lag_);
  }

  float* input() { return recorded_.block(); }

  // Takes what stands in input().
  void process(int32_t count, bool is_last) {
    check(ZIVKS_Copy_32f(input(), clicked_.block(), count));
    clicks_.add(clicked_.block(), count);
    add_squared_differences(input(), clicked_.block(), count, clicked_error);
    recorded = {input(), count};
    clicked = cleaned = {clicked_.block(), count};
    if (filter_) clean(count, is_last);
    if (reducer_) reduced = {reducer_->samples(), reducer_->reduce(cleaned.samples, cleaned.count)};
  }

  // What the last block became after each stage.
  Stretch recorded = {}, clicked = {}, cleaned = {}, reduced = {};
  // Sums of squared differences from the recorded sound.
  double recorded_error = 0, clicked_error = 0, cleaned_error = 0;

 private:
  void clean(int32_t count, bool is_last) {
    int32_t filtered = count;
    if (is_last) {  // the sound goes on with its last sample, until all of it has come out of the filter
      check(ZIVKS_Set_32f(clicked_.block()[count - 1], clicked_.block() + count, lag_));
      filtered += lag_;
    }
    filter_->filter(clicked_.block(), cleaned_.get(), filtered);
    const int32_t ahead = is_first_ ? lag_ : 0;  // of the first sample of the sound
    is_first_ = false;
    float* const median = cleaned_.get() + ahead;
    cleaned = {median, filtered - ahead};
    const float* const sample = clicked_.history() + ahead;
    for (int32_t i = 0; i < cleaned.count; ++i) {
      if (std::abs(sample[i] - median[i]) <= threshold_) median[i] = sample[i];
    }
    add_squared_differences(recorded_.history() + ahead, cleaned.samples, cleaned.count, cleaned_error);
    recorded_.keep(count);
    clicked_.keep(count);
  }

  Clicks clicks_;
  float threshold_;
  int32_t lag_;
  bool is_first_ = true;
  BlockWithHistory recorded_, clicked_;
  Array<float> cleaned_;
  std::unique_ptr<MedianFilter> filter_;
  std::unique_ptr<Reducer> reducer_;
};

// Files in the folder that are called like the sound are written by the program itself.
void refuse_name_of_output(const SoundInfo& sound, const fs::path& folder, const fs::path& copy) {
  const std::string stem = fs::path(sound.name).stem().string() + ".";
  if (copy.empty() || copy.filename().string().rfind(stem, 0) != 0) return;
  if (fs::weakly_canonical(fs::absolute(copy)).parent_path() != fs::canonical(folder)) return;
  throw std::runtime_error(copy.string() + ": would be another file of the output as well");
}

// Where what comes out of a stage goes: into measures, a file, or both.
struct Outlet {
  std::string name;
  Stretch ChannelProcess::*stretch;
  double ChannelProcess::*error = nullptr;
  std::vector<Meter> meters;  // by channel
  std::unique_ptr<WavWriter> writer;

  void take(const std::vector<std::unique_ptr<ChannelProcess>>& channels) {
    std::vector<const float*> samples;
    const int32_t count = ((*channels[0]).*stretch).count;
    for (const auto& channel : channels) samples.push_back(((*channel).*stretch).samples);
    for (std::size_t c = 0; c < meters.size(); ++c) meters[c].add(samples[c], count);
    if (writer) writer->write(samples, count);
  }
};

}  // namespace

fs::path output_file(const SoundInfo& sound, const fs::path& folder, const std::string& suffix) {
  fs::path file = folder / (fs::path(sound.name).stem().string() + suffix);
  refuse_to_overwrite(sound, file);
  return file;
}

Report process(Sound& sound, const Processing& wanted, const fs::path& folder) {
  const SoundInfo& info = sound.info();
  if (info.sample_rate % wanted.factor != 0) {
    throw std::runtime_error(std::to_string(info.sample_rate) + " Hz cannot be reduced by a factor of " +
                             std::to_string(wanted.factor) + " to a whole number of Hz");
  }
  const auto refuse_longer = [&](const char* what, int32_t count) {
    if (count <= info.length) return;
    throw std::runtime_error("the sound has " + std::to_string(info.length) + " samples, and " + what +
                             " takes " + std::to_string(count));
  };
  refuse_longer("the median", wanted.mask);
  refuse_longer("the mean", wanted.factor);
  refuse_name_of_output(info, folder, wanted.copy);
  Processing processing = wanted;
  const int32_t block = std::max(std::min(processing.block, kMostAtOnce / info.channels), processing.mask);
  const auto most = static_cast<int32_t>(std::min(info.length, 2 * int64_t{block}));

  std::vector<Outlet> outlets;
  const auto add_outlet = [&](const std::string& name, Stretch ChannelProcess::*stretch,
                              double ChannelProcess::*error, const fs::path& file, int sample_rate) {
    outlets.push_back({name, stretch, error, {}, {}});
    if (file.empty()) return;
    const int64_t length = info.length * sample_rate / info.sample_rate;
    outlets.back().writer = std::make_unique<WavWriter>(file, info, length, sample_rate);
  };
  const auto file = [&](const char* suffix) { return output_file(info, folder, suffix); };
  if (processing.copy.empty() && !info.file)
    processing.copy = file(".wav");  // a sound that was no file before
  add_outlet("as it is", &ChannelProcess::recorded, &ChannelProcess::recorded_error, processing.copy,
             info.sample_rate);
  if (processing.clicks_per_second > 0) {
    add_outlet("with " + std::to_string(processing.clicks_per_second) + " clicks a second",
               &ChannelProcess::clicked, &ChannelProcess::clicked_error, file(".clicks.wav"),
               info.sample_rate);
  }
  if (processing.mask > 1) {
    add_outlet("cleaned by a median of " + std::to_string(processing.mask), &ChannelProcess::cleaned,
               &ChannelProcess::cleaned_error, file(".cleaned.wav"), info.sample_rate);
  }
  if (processing.factor > 1) {
    add_outlet("reduced", &ChannelProcess::reduced, nullptr, file(".reduced.wav"),
               info.sample_rate / processing.factor);
  }

  Progress progress(2 * static_cast<uint64_t>(info.length), "samples");
  const std::vector<double> offsets = offsets_of(sound, block, most, progress);
  std::vector<std::unique_ptr<ChannelProcess>> channels;
  std::vector<float*> inputs;
  for (int c = 0; c < info.channels; ++c) {
    channels.push_back(std::make_unique<ChannelProcess>(info, processing, c, most));
    inputs.push_back(channels.back()->input());
  }
  for (Outlet& outlet : outlets) {
    if (outlet.error == nullptr) continue;
    for (double offset : offsets) outlet.meters.emplace_back(offset, info.length, info.sample_rate);
  }

  auto done = static_cast<uint64_t>(info.length);
  for_each_block(info.length, block, [&](int32_t count, bool is_last) {
    sound.read(inputs, count);
    for (auto& channel : channels) channel->process(count, is_last);
    for (Outlet& outlet : outlets) outlet.take(channels);
    done += static_cast<uint64_t>(count);
    progress.show(done, done / 2);  // of two passes
  });

  Report report;
  for (Outlet& outlet : outlets) {
    if (outlet.writer) {
      outlet.writer->finish();
      report.files.push_back(outlet.writer->file());
    }
    if (outlet.error == nullptr) continue;
    Track& track = report.tracks.emplace_back(Track{outlet.name, {}, {}});
    for (std::size_t c = 0; c < channels.size(); ++c) {
      track.channels.push_back(outlet.meters[c].take());
      track.error_power.push_back((*channels[c]).*outlet.error / static_cast<double>(info.length));
    }
  }
  return report;
}
