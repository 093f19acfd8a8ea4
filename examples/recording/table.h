#ifndef ZIVKS_EXAMPLES_RECORDING_TABLE_H
#define ZIVKS_EXAMPLES_RECORDING_TABLE_H

#include <vector>

#include "measures.h"
#include "recording.h"

struct Channel {
  double offset;                 // that was removed
  std::vector<Measures> frames;  // of equal duration
};

// One line a channel, then about 20 lines over time.
void print_table(const Recording& recording, const std::vector<Channel>& channels);

#endif
