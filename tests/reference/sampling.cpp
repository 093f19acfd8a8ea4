// Sampling up and down, of elements as their bytes.
#include "reference/reference.h"

namespace zivks_test {
namespace {

constexpr size_t kSrc = 0, kDst = 2, kDstLen = 3, kPhase = 5;

int64_t phase_of(const Operands& operands) {
  int32_t phase;
  std::memcpy(&phase, operands.arrays[kPhase].data(), sizeof phase);
  return phase;
}

Bytes bytes_of(int64_t value) {
  const auto number = static_cast<int32_t>(value);
  Bytes bytes(sizeof number);
  std::memcpy(bytes.data(), &number, sizeof number);
  return bytes;
}

void copy_element(const Function& function, const Bytes& from, int64_t source, Bytes& to, int64_t target) {
  const auto bytes = static_cast<int64_t>(function.arguments[kSrc].array_element_bytes());
  std::copy_n(from.begin() + source * bytes, bytes, to.begin() + target * bytes);
}

std::vector<Bytes> up(const Function& function, const Operands& operands) {
  std::vector<Bytes> results(function.arguments.size());
  const int64_t factor = value_of("factor", function, operands), len = operands.length;
  results[kDst].assign(operands.arrays[kDst].size(), 0);
  for (int64_t i = 0; i < len; ++i) {
    copy_element(function, operands.arrays[kSrc], i, results[kDst], phase_of(operands) + i * factor);
  }
  results[kDstLen] = bytes_of(len * factor);
  return results;
}

std::vector<Bytes> down(const Function& function, const Operands& operands) {
  std::vector<Bytes> results(function.arguments.size());
  const int64_t factor = value_of("factor", function, operands), len = operands.length;
  results[kDst] = operands.arrays[kDst];
  int64_t count = 0, position = phase_of(operands);
  for (; position < len; position += factor) {
    copy_element(function, operands.arrays[kSrc], position, results[kDst], count++);
  }
  results[kDstLen] = bytes_of(count);
  results[kPhase] = bytes_of(position - len);
  return results;
}

}  // namespace

References sampling_references() {
  References references;
  for (const char* type : {"16s", "32f", "64f", "16sc", "32fc", "64fc"}) {
    references[std::string("ZIVKS_SampleUp_") + type] = up;
    references[std::string("ZIVKS_SampleDown_") + type] = down;
  }
  return references;
}

}  // namespace zivks_test
