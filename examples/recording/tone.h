// A test tone.
#ifndef ZIVKS_EXAMPLES_RECORDING_TONE_H
#define ZIVKS_EXAMPLES_RECORDING_TONE_H

#include <memory>

#include "sound.h"

inline constexpr int kToneSampleRate = 48000;

// A triangle wave at half of full scale, in one channel. `frequency`, in Hz, is less than half the sample rate.
std::unique_ptr<Sound> make_tone(double frequency, double seconds);

#endif
