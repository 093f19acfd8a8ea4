#ifndef ZIVKS_TESTS_GENERIC_GUARDED_MEMORY_H
#define ZIVKS_TESTS_GENERIC_GUARDED_MEMORY_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>

namespace zivks_test {

// Memory between two inaccessible pages.
class GuardedMemory {
 public:
  GuardedMemory() {
    void* const mapping =
        mmap(nullptr, kCapacity + 2 * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (mapping == MAP_FAILED) std::abort();
    begin_ = static_cast<unsigned char*>(mapping) + page_;
    if (mprotect(begin_, kCapacity, PROT_READ | PROT_WRITE) != 0) std::abort();
  }
  ~GuardedMemory() { munmap(begin_ - page_, kCapacity + 2 * page_); }
  GuardedMemory(const GuardedMemory&) = delete;
  GuardedMemory& operator=(const GuardedMemory&) = delete;
  unsigned char* begin() const { return begin_; }
  unsigned char* end() const { return begin_ + kCapacity; }

  static constexpr std::size_t kCapacity = std::size_t{1} << 25;

 private:
  const std::size_t page_ = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  unsigned char* begin_;
};

}  // namespace zivks_test

#endif
