// The memory that calls are measured on.
#ifndef BENCH_ARRAYS_H
#define BENCH_ARRAYS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <random>
#include <type_traits>
#include <vector>

namespace bench {

// Two arrays to read, two to write, four places for single results, and one more array, `work`, for
// handles and scratch memory, of which the contents are nobody's result.
//
// All arrays begin equally far behind a 64-byte boundary: at one, unless they were moved. They follow one
// another in memory, so that a move from a source to a destination always goes the same way, and start at
// different offsets within a page, since on some processors a load waits for an earlier store at the same
// offset. Copies share the memory.
class Arrays {
 public:
  static constexpr int kCount = 4;
  static constexpr int kFirstWritten = 2;
  static constexpr int kWork = kCount;
  static constexpr std::size_t kFarthestMove = 16 << 10;

  explicit Arrays(std::size_t bytes_each) : bytes_each_(bytes_each) {
    const std::size_t distance = (bytes_each + kFarthestMove + 4095) / 4096 * 4096 + 1088;
    storage_.reset(static_cast<std::byte*>(::operator new((kCount + 1) * distance, kPage)),
                   [](std::byte* memory) { ::operator delete(memory, kPage); });
    for (std::size_t i = 0; i <= kCount; ++i) arrays_[i] = storage_.get() + i * distance;
    clear();
  }

  // The same memory, where every array from the given one on starts so many bytes later; `work` stays.
  Arrays moved_by(std::size_t bytes, int first = 0) const {
    Arrays moved = *this;
    for (int i = first; i < kCount; ++i) moved.arrays_[i] += bytes;
    return moved;
  }

  void* array(int index) const { return arrays_[index]; }
  void* result(int index) const { return &(*results_)[static_cast<std::size_t>(index)]; }

  // Touches all pages but those of `work`.
  void clear() const {
    for (int i = 0; i < kCount; ++i) std::memset(arrays_[i], 1, bytes_each_);
    std::memset(results_->data(), 1, results_->size() * sizeof results_->front());
  }

  // What stands in all arrays and results.
  std::vector<std::byte> contents() const {
    std::vector<std::byte> bytes(kCount * bytes_each_ + results_->size() * sizeof results_->front());
    for (std::size_t i = 0; i < kCount; ++i) std::memcpy(&bytes[i * bytes_each_], arrays_[i], bytes_each_);
    std::memcpy(&bytes[kCount * bytes_each_], results_->data(), bytes.size() - kCount * bytes_each_);
    return bytes;
  }

 private:
  static constexpr std::align_val_t kPage{4096};
  std::size_t bytes_each_;
  std::shared_ptr<std::byte> storage_;
  std::shared_ptr<std::vector<std::max_align_t>> results_ =
      std::make_shared<std::vector<std::max_align_t>>(4);
  std::byte* arrays_[kCount + 1];
};

// Random values of the whole range for integers, between -1024 and 1024 for floats. They repeat after 4096
// elements, which no loop can tell.
template <class T>
void fill_at_random(void* memory, int32_t len, int seed) {
  constexpr std::size_t kPeriod = 4096;
  std::mt19937_64 generator(static_cast<uint64_t>(seed));
  T* array = static_cast<T*>(memory);
  const auto count = static_cast<std::size_t>(len);
  for (std::size_t i = 0; i < std::min(count, kPeriod); ++i) {
    if constexpr (std::is_floating_point_v<T>) {
      array[i] = static_cast<T>(static_cast<int32_t>(generator() >> 32)) / T{1 << 21};
    } else {
      array[i] = static_cast<T>(generator());
    }
  }
  for (std::size_t done = kPeriod; done < count; done += kPeriod) {
    std::memcpy(array + done, array, std::min(kPeriod, count - done) * sizeof(T));
  }
}

}  // namespace bench

#endif
