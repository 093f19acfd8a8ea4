// What the programs have in common: how they end, well or with a message.
#ifndef ZIVKS_EXAMPLES_PROGRAM_H
#define ZIVKS_EXAMPLES_PROGRAM_H

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <stdexcept>

// What was printed may have waited in a buffer until now.
inline void finish_output() {
  const bool failed_before = std::ferror(stdout) != 0;
  if (std::fflush(stdout) != 0 || failed_before) throw std::runtime_error("cannot write to standard output");
}

// Carries out `run` and returns the program's exit status. `input` is what memory may not suffice for.
template <class Run>
int run_program(const char* name, const char* input, Run run) try {
  run();
  finish_output();
  return EXIT_SUCCESS;
} catch (const std::bad_alloc&) {
  std::fprintf(stderr, "%s: not enough memory for this %s\n", name, input);
  return EXIT_FAILURE;
} catch (const std::exception& error) {
  std::fflush(stdout);
  std::fprintf(stderr, "%s: %s\n", name, error.what());
  return EXIT_FAILURE;
}

#endif
