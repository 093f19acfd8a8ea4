#include "tone.h"

#include <zivks.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "examples/array.h"

namespace {

constexpr double kPeak = 0.5;

// The wave is generated in pieces of one length, each from the phase that the one before it left, and handed out in
// whatever blocks are wanted. Errors of the wave grow along a piece, so that blocks cut in other places would give
// other samples.
class Tone : public Sound {
 public:
  Tone(SoundInfo info, double frequency)
      : info_(std::move(info)), cycles_per_sample_(frequency / info_.sample_rate) {}

  const SoundInfo& info() const override { return info_; }
  void rewind() override {
    phase_ = 0;
    used_ = kPiece;
  }

  void read(const std::vector<float*>& channels, int32_t count) override {
    for (float* samples = channels[0]; count > 0;) {
      if (used_ == kPiece) generate();
      const int32_t part = std::min(count, kPiece - used_);
      check(ZIVKS_Copy_32f(piece_.get() + used_, samples, part));
      used_ += part;
      samples += part;
      count -= part;
    }
  }

 private:
  static constexpr int32_t kPiece = 4096;

  void generate() {
    check(ZIVKS_Triangle_64f(exact_.get(), kPiece, kPeak, cycles_per_sample_, 0, &phase_));
    check(ZIVKS_Convert_64f32f(exact_.get(), piece_.get(), kPiece));
    used_ = 0;
  }

  SoundInfo info_;
  double cycles_per_sample_;
  double phase_ = 0;
  int32_t used_ = kPiece;  // samples of the piece that were handed out
  Array<double> exact_ = own(ZIVKS_Malloc_64f(kPiece));
  Array<float> piece_ = own(ZIVKS_Malloc_32f(kPiece));
};

}  // namespace

std::unique_ptr<Sound> make_tone(double frequency, double seconds) {
  char name[50];
  std::snprintf(name, sizeof name, "triangle-%gHz.wav", frequency);
  const auto length = static_cast<int64_t>(std::llround(seconds * kToneSampleRate));
  return std::make_unique<Tone>(SoundInfo{name, kToneSampleRate, 24, 1, std::max<int64_t>(length, 1), {}},
                                frequency);
}
