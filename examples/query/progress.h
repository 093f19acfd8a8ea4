#ifndef ZIVKS_EXAMPLES_QUERY_PROGRESS_H
#define ZIVKS_EXAMPLES_QUERY_PROGRESS_H

#include <chrono>
#include <cstdint>

// A line on standard error that tells how far a long file has been read, if that is a terminal. It appears after a
// second and is gone at the end.
class Progress {
 public:
  // `size` is that of the file in bytes, 0 if it is not known.
  explicit Progress(uint64_t size);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void show(uint64_t bytes, uint64_t rows);

 private:
  using Clock = std::chrono::steady_clock;

  uint64_t size_;
  bool is_wanted_;
  bool is_shown_ = false;
  Clock::time_point next_;
};

#endif
