// What the program does with a sound, from its samples to files and measures.
#ifndef ZIVKS_EXAMPLES_RECORDING_PROCESSING_H
#define ZIVKS_EXAMPLES_RECORDING_PROCESSING_H

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "measures.h"
#include "sound.h"

inline constexpr int32_t kDefaultBlock = 1 << 16;

struct Processing {
  int clicks_per_second = 0;      // added to each channel
  int32_t mask = 1;               // odd; samples of the median filter, 1 for no filter
  float threshold = 0.2F;         // samples no further than this from the median stay what they are
  int32_t factor = 1;             // by which the sample rate is lowered
  int32_t block = kDefaultBlock;  // samples that are in memory at a time, of each channel
  std::filesystem::path copy;     // of the sound as it is; empty for none
};

// A sound that was made of the one that was read, or that one itself.
struct Track {
  std::string name;
  std::vector<Channel> channels;
  std::vector<double> error_power;  // by channel: mean square of the difference from the sound that was read
};

struct Report {
  std::vector<Track> tracks;  // the first one is the sound that was read
  std::vector<std::filesystem::path> files;
};

// Reads the sound twice, block by block, and writes what is made of it into the folder. The results do not depend on
// the length of a block.
Report process(Sound& sound, const Processing& processing, const std::filesystem::path& folder);

// The file in the folder that belongs to the sound and ends in `suffix`. Throws std::runtime_error if it must not be
// replaced.
std::filesystem::path output_file(const SoundInfo& sound, const std::filesystem::path& folder,
                                  const std::string& suffix);

#endif
