#include "reference/median.h"

#include "generic/services.h"
#include "reference/reference.h"

namespace zivks_test {
namespace {

// Whether an optional delay line is there.
bool has_line(const Operands& operands, size_t argument) {
  return operands.slots[argument].as<Line>() == Line::kPresent;
}

template <class T>
std::vector<Bytes> filter_by_median(const Function& function, const Operands& operands) {
  const auto length = static_cast<size_t>(operands.length);
  const auto mask = static_cast<size_t>((value_of("maskLen", function, operands) - 1) / 2 * 2 + 1);
  const size_t count = function.arguments.size(), incoming = count - 3, outgoing = count - 2;
  std::vector<T> samples;
  for (size_t i = 0; i + 1 < mask; ++i) {
    const bool is_there = has_line(operands, incoming);
    samples.push_back(is_there ? input_element<T>(function, operands, incoming, i)
                               : input_element<T>(function, operands, 0, 0));
  }
  for (size_t i = 0; i < length; ++i) samples.push_back(input_element<T>(function, operands, 0, i));

  const std::vector<T> medians = reference_medians(samples, mask);
  Outputs outputs(function, operands);
  for (size_t i = 0; i < length; ++i) outputs.set(0, i, medians[i]);
  for (size_t i = 0; i + 1 < mask && has_line(operands, outgoing); ++i)
    outputs.set(1, i, samples[length + i]);
  return outputs.take();
}

std::vector<Bytes> new_handle(const Function& function, const Operands& operands) {
  int32_t bytes = 0;
  switch (value_of("dataType", function, operands)) {
    case ZIVK_DT_8U: bytes = 1; break;
    case ZIVK_DT_16S: bytes = 2; break;
    case ZIVK_DT_64F: bytes = 8; break;
    default: bytes = 4; break;
  }
  const int32_t mask = (value_of("maskLen", function, operands) - 1) / 2 * 2 + 1;
  Outputs outputs(function, operands);
  outputs.set(0, 0, reinterpret_cast<uint64_t>(memory_of((mask * bytes + 15) / 16 * 16)));
  return outputs.take();
}

std::vector<Bytes> nothing(const Function& function, const Operands&) {
  return std::vector<Bytes>(function.arguments.size());
}

}  // namespace

References median_references() {
  return {{"ZIVKS_FilterMedianInit", new_handle},
          {"ZIVKS_FilterMedianRelease", nothing},
          {"ZIVKS_FilterMedian_8u", filter_by_median<uint8_t>},
          {"ZIVKS_FilterMedian_16s", filter_by_median<int16_t>},
          {"ZIVKS_FilterMedian_32s", filter_by_median<int32_t>},
          {"ZIVKS_FilterMedian_32f", filter_by_median<float>},
          {"ZIVKS_FilterMedian_64f", filter_by_median<double>}};
}

}  // namespace zivks_test
