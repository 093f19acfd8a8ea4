// Arrays larger than any memory.
#ifndef ZIVKS_TESTS_REPEATED_SAMPLES_H
#define ZIVKS_TESTS_REPEATED_SAMPLES_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>

namespace zivks_test {

// A chunk of memory, mapped again and again behind itself.
template <class T>
class RepeatedSamples {
 public:
  static constexpr size_t kChunk = size_t{1} << 20;

  explicit RepeatedSamples(size_t count) : bytes_((count / kChunk + 1) * kChunkBytes) {
    const int file = memfd_create("samples", 0);
    mapping_ = static_cast<char*>(
        mmap(nullptr, bytes_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0));
    if (file < 0 || ftruncate(file, kChunkBytes) != 0 || mapping_ == MAP_FAILED) std::abort();
    // Populated at once, since a fault for every page written takes longer than what the tests do there.
    constexpr int kFlags = MAP_SHARED | MAP_FIXED | MAP_POPULATE;
    for (char* place = mapping_; place < mapping_ + bytes_; place += kChunkBytes) {
      if (mmap(place, kChunkBytes, PROT_READ | PROT_WRITE, kFlags, file, 0) != place) std::abort();
    }
    close(file);
  }
  ~RepeatedSamples() { munmap(mapping_, bytes_); }
  RepeatedSamples(const RepeatedSamples&) = delete;
  RepeatedSamples& operator=(const RepeatedSamples&) = delete;
  T* data() const { return reinterpret_cast<T*>(mapping_); }

 private:
  static constexpr size_t kChunkBytes = kChunk * sizeof(T);
  size_t bytes_;
  char* mapping_;
};

}  // namespace zivks_test

#endif
