#ifndef ZIVKS_EXAMPLES_RECORDING_PICTURE_H
#define ZIVKS_EXAMPLES_RECORDING_PICTURE_H

#include <filesystem>

#include "processing.h"

// Makes the folder unless it is there. Throws std::runtime_error if no files can be made in it.
void prepare_folder(const std::filesystem::path& folder);

// Draws the waves, the levels and the zero crossings of all channels into a PNG in the folder, and returns its
// path: before and after the last stage that keeps the sample rate, if there is one. The data and the gnuplot script stay beside it. Throws
// std::runtime_error if that fails.
std::filesystem::path draw(const SoundInfo& sound, const Report& report, const std::filesystem::path& folder);

#endif
