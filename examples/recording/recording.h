// A sound file, taken apart into its channels.
#ifndef ZIVKS_EXAMPLES_RECORDING_RECORDING_H
#define ZIVKS_EXAMPLES_RECORDING_RECORDING_H

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "examples/array.h"

struct Recording {
  std::string name;  // of the file, without its folder
  dev_t device;      // of the file, together with the inode its identity
  ino_t inode;
  int sample_rate;                     // Hz
  int bits;                            // a sample in the file
  int32_t length;                      // samples a channel
  std::vector<Array<float>> channels;  // full scale is 1

  double seconds() const { return static_cast<double>(length) / sample_rate; }
  std::string description() const;  // one line
};

// Reads a WAV file of 16 or 24 bits, the formats whose samples float represents exactly. The file may be a
// pipe, and "-" is standard input. Throws std::runtime_error with a message for the user if the file is
// anything else or not whole.
Recording read_recording(const std::filesystem::path& file);

// Throws std::runtime_error if `file` must not be replaced: if it is, by this path or another, the one that
// the recording was read from, or no regular file, or write-protected.
void refuse_to_overwrite(const Recording& recording, const std::filesystem::path& file);

// Writes a WAV file of 24 bits, with the same samples as the one that was read. A file that stands there
// already is replaced when the new one is complete, and not before.
void write_24_bits(const Recording& recording, const std::filesystem::path& file);

#endif
