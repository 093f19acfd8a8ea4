#ifndef ZIVKS_EXAMPLES_RECORDING_PICTURE_H
#define ZIVKS_EXAMPLES_RECORDING_PICTURE_H

#include <filesystem>
#include <vector>

#include "recording.h"
#include "table.h"

// Makes the folder unless it is there. Throws std::runtime_error if no files can be made in it.
void prepare_folder(const std::filesystem::path& folder);

// Draws the wave of each channel, the levels and the zero crossings into a PNG in the folder, and returns its
// path. The data and the gnuplot script stay beside it. Throws std::runtime_error if that fails.
std::filesystem::path draw(const Recording& recording, const std::vector<Channel>& channels,
                           const std::filesystem::path& folder);

#endif
