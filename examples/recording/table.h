#ifndef ZIVKS_EXAMPLES_RECORDING_TABLE_H
#define ZIVKS_EXAMPLES_RECORDING_TABLE_H

#include "processing.h"

// One line a channel for the sound that was read, then about 20 lines over time; then one line a channel after each
// stage that keeps the sample rate.
void print_table(const SoundInfo& sound, const Report& report);

#endif
