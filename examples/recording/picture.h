#ifndef ZIVKS_EXAMPLES_RECORDING_PICTURE_H
#define ZIVKS_EXAMPLES_RECORDING_PICTURE_H

#include <filesystem>
#include <vector>

#include "recording.h"
#include "table.h"

// Draws the wave of each channel, the levels and the zero crossings into a PNG in the folder, and returns its
// path. The data and the gnuplot script stay beside it. Throws std::runtime_error if gnuplot fails.
std::filesystem::path draw(const Recording& recording, const std::vector<Channel>& channels,
                           const std::filesystem::path& folder);

#endif
