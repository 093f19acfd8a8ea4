// A sound that is read block by block, so that its length does not matter.
#ifndef ZIVKS_EXAMPLES_RECORDING_SOUND_H
#define ZIVKS_EXAMPLES_RECORDING_SOUND_H

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What tells a file from all others, whatever its name is.
struct FileIdentity {
  dev_t device;
  ino_t inode;
};

struct SoundInfo {
  std::string name;  // of the file, without its folder
  int sample_rate;   // Hz
  int bits;          // a sample
  int channels;
  int64_t length;                    // samples a channel
  std::optional<FileIdentity> file;  // if the sound is read from one

  double seconds() const { return static_cast<double>(length) / sample_rate; }
  std::string description() const;  // one line
};

class Sound {
 public:
  virtual ~Sound() = default;
  virtual const SoundInfo& info() const = 0;

  // Reads the next `count` samples of each channel, full scale 1, as far as there are so many.
  virtual void read(const std::vector<float*>& channels, int32_t count) = 0;
  // Goes back to the beginning.
  virtual void rewind() = 0;
};

#endif
