#include <algorithm>
#include <cmath>
#include <limits>

#include "generic/services.h"
#include "reference/reference.h"

namespace zivks_test {
namespace {

// The congruential generator behind drand48.
class Draws {
 public:
  explicit Draws(uint32_t seed) : state_((uint64_t{seed} << 16) + 0x330E) {}
  double next() {
    state_ = (state_ * 0x5DEECE66D + 0xB) % (uint64_t{1} << 48);
    return std::ldexp(static_cast<double>(state_), -48);
  }

 private:
  uint64_t state_;
};

// Truncated toward zero, then clamped.
template <class T>
T clamp_truncated(double value) {
  const double low = std::numeric_limits<T>::min(), high = std::numeric_limits<T>::max();
  return static_cast<T>(std::min(std::max(std::trunc(value), low), high));
}

template <class T, class Record>
T element_in_block(double draw, const Record& record) {
  const auto width = static_cast<float>(record.high - record.low), low = static_cast<float>(record.low);
  const float value = std::fma(width, static_cast<float>(draw), low);
  if constexpr (std::is_integral_v<T>) return clamp_truncated<T>(double{value});
  return static_cast<T>(value);
}
template <class T, class Record>
T element_in_tail(double draw, const Record& record) {
  const auto width = static_cast<double>(record.high - record.low), low = static_cast<double>(record.low);
  const double value = std::fma(width, draw, low);
  if constexpr (std::is_integral_v<T>) return static_cast<T>(static_cast<int64_t>(value) & 0xFFFF);
  return static_cast<T>(value);
}

template <class T, class Record>
Reference noise(bool block_in_float32) {
  return [block_in_float32](const Function& function, const Operands& operands) {
    Record record;
    std::memcpy(&record, operands.arrays[2].data(), sizeof record);
    Outputs outputs(function, operands);
    Draws draws(record.seed);
    const auto length = static_cast<size_t>(operands.length);
    for (size_t i = 0; i < length; ++i) {
      const bool in_block = block_in_float32 && i < length / 8 * 8;
      const double draw = draws.next();
      outputs.set(0, i, in_block ? element_in_block<T>(draw, record) : element_in_tail<T>(draw, record));
    }
    return outputs.take();
  };
}

template <class Record>
std::vector<Bytes> new_record(const Function& function, const Operands& operands) {
  Outputs outputs(function, operands);
  outputs.set(0, 0, reinterpret_cast<uint64_t>(memory_of(sizeof(Record))));
  return outputs.take();
}

std::vector<Bytes> nothing(const Function& function, const Operands&) {
  return std::vector<Bytes>(function.arguments.size());
}

}  // namespace

References uniform_noise_references() {
  return {{"ZIVKS_RandUniformInit_8u", new_record<ZIVKRandUniformState_8u>},
          {"ZIVKS_RandUniformInit_16s", new_record<ZIVKRandUniformState_16s>},
          {"ZIVKS_RandUniformInit_32f", new_record<ZIVKRandUniformState_32f>},
          {"ZIVKS_RandUniformInit_64f", new_record<ZIVKRandUniformState_64f>},
          {"ZIVKS_RandUniformRelease_8u", nothing},
          {"ZIVKS_RandUniformRelease_16s", nothing},
          {"ZIVKS_RandUniformRelease_32f", nothing},
          {"ZIVKS_RandUniformRelease_64f", nothing},
          {"ZIVKS_RandUniform_8u", noise<uint8_t, ZIVKRandUniformState_8u>(true)},
          {"ZIVKS_RandUniform_16s", noise<int16_t, ZIVKRandUniformState_16s>(true)},
          {"ZIVKS_RandUniform_32f", noise<float, ZIVKRandUniformState_32f>(true)},
          {"ZIVKS_RandUniform_64f", noise<double, ZIVKRandUniformState_64f>(false)}};
}

}  // namespace zivks_test
