#ifndef ZIVKS_EXAMPLES_RECORDING_TABLE_H
#define ZIVKS_EXAMPLES_RECORDING_TABLE_H

#include <vector>

#include "measures.h"
#include "recording.h"

// One line a channel, then about 20 lines over time.
void print_table(const Recording& recording, const std::vector<Channel>& channels);

#endif
