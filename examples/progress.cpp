#include "examples/progress.h"

#include <unistd.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <utility>

Progress::Progress(uint64_t size, std::string unit)
    : size_(size),
      unit_(std::move(unit)),
      is_wanted_(isatty(STDERR_FILENO) == 1),
      next_(Clock::now() + std::chrono::seconds(1)) {}

Progress::~Progress() {
  constexpr char kEraseLine[] = "\r\x1B[K";
  if (is_shown_) std::fputs(kEraseLine, stderr);
}

void Progress::show(uint64_t done, uint64_t count) {
  if (!is_wanted_ || Clock::now() < next_) return;
  next_ = Clock::now() + std::chrono::milliseconds(100);
  is_shown_ = true;
  if (size_ == 0) {
    std::fprintf(stderr, "\r%" PRIu64 " %s", count, unit_.c_str());
    return;
  }
  constexpr std::size_t kWidth = 40;
  const double share = std::min(static_cast<double>(done) / static_cast<double>(size_), 1.0);
  std::string bar(static_cast<std::size_t>(share * kWidth), '#');
  bar.resize(kWidth, '.');
  std::fprintf(stderr, "\r[%s] %3.0f %%, %" PRIu64 " %s", bar.c_str(), 100 * share, count, unit_.c_str());
}
