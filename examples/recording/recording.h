// A sound file, taken apart into its channels.
#ifndef ZIVKS_EXAMPLES_RECORDING_RECORDING_H
#define ZIVKS_EXAMPLES_RECORDING_RECORDING_H

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "array.h"

struct Recording {
  std::filesystem::path file;
  int sample_rate;                     // Hz
  int bits;                            // a sample in the file
  int32_t length;                      // samples a channel
  std::vector<Array<float>> channels;  // full scale is 1

  double seconds() const { return static_cast<double>(length) / sample_rate; }
  std::string description() const;  // one line
};

// Reads a WAV file of 16 or 24 bits, the formats whose samples float represents exactly. Throws
// std::runtime_error with a message for the user if the file is anything else or not whole.
Recording read_recording(const std::filesystem::path& file);

// Writes a WAV file of 24 bits. What was read from 16 or 24 bits has the same samples there.
void write_24_bits(const Recording& recording, const std::filesystem::path& file);

#endif
