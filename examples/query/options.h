#ifndef ZIVKS_EXAMPLES_QUERY_OPTIONS_H
#define ZIVKS_EXAMPLES_QUERY_OPTIONS_H

#include <filesystem>

#include "question.h"

struct Options {
  bool help = false;
  std::filesystem::path file;
  char delimiter = ',';
  Question question;
};

extern const char kUsage[];

// Throws std::runtime_error with a message for the user.
Options parse_options(int argc, char** argv);

#endif
