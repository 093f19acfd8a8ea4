#ifndef ZIVKS_EXAMPLES_RECORDING_OPTIONS_H
#define ZIVKS_EXAMPLES_RECORDING_OPTIONS_H

#include <filesystem>

#include "processing.h"

struct Options {
  bool help = false;
  std::filesystem::path file;
  std::filesystem::path folder = "recording-output";
  double tone = 0;  // Hz; 0: the file is read
  double seconds = 3;
  Processing processing;
};

extern const char kUsage[];

// Throws std::runtime_error with a message for the user.
Options parse_options(int argc, char** argv);

#endif
