// WAV files, read and written block by block.
#ifndef ZIVKS_EXAMPLES_RECORDING_WAV_FILE_H
#define ZIVKS_EXAMPLES_RECORDING_WAV_FILE_H

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "sound.h"

// Opens a WAV file of 16 or 24 bits, the formats whose samples float represents exactly. The file may be a
// pipe, and "-" is standard input. Throws std::runtime_error with a message for the user if the file is anything else
// or not whole.
std::unique_ptr<Sound> open_wav_file(const std::filesystem::path& file);

// Throws std::runtime_error if `file` must not be replaced: if it is, by this path or another, the one that
// the sound is read from, or no regular file, or write-protected.
void refuse_to_overwrite(const SoundInfo& sound, const std::filesystem::path& file);

// A new WAV file of 24 bits. One that stands there already is replaced when the new one is complete, and not before.
class WavWriter {
 public:
  // The file gets the channels of `sound`, from which it is made, with its own length and sample rate. Throws
  // std::runtime_error if a WAV file cannot hold so much.
  WavWriter(std::filesystem::path file, const SoundInfo& sound, int64_t length, int sample_rate);
  ~WavWriter();

  void write(const std::vector<const float*>& channels, int32_t count);
  void finish();  // without it nothing is replaced
  const std::filesystem::path& file() const { return file_; }

 private:
  struct Output;

  std::filesystem::path file_;
  std::unique_ptr<Output> output_;
};

#endif
