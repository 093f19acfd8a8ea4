#ifndef ZIVKS_EXAMPLES_PROGRESS_H
#define ZIVKS_EXAMPLES_PROGRESS_H

#include <chrono>
#include <cstdint>
#include <string>

// A line on standard error that tells how far long work has come, if that is a terminal. It appears after a second and
// is gone at the end.
class Progress {
 public:
  // `size` is that of the whole work, 0 if it is not known. What is counted beside it is called `unit`.
  Progress(uint64_t size, std::string unit);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void show(uint64_t done, uint64_t count);

 private:
  using Clock = std::chrono::steady_clock;

  uint64_t size_;
  std::string unit_;
  bool is_wanted_;
  bool is_shown_ = false;
  Clock::time_point next_;
};

#endif
