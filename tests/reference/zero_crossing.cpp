#include "reference/zero_crossing.h"

#include "reference/reference.h"

namespace zivks_test {
namespace {

float crossings_32f(const std::vector<float>& samples, int32_t kind) {
  return reference_crossings(samples.size(), kind, [&](size_t i) { return samples[i]; });
}
float crossings_16s(const std::vector<int16_t>& samples, int32_t kind) {
  return reference_crossings(samples.size(), kind, [&](size_t i) { return samples[i]; });
}

}  // namespace

References zero_crossing_references() {
  return {{"ZIVKS_ZeroCrossing_32f", reduction(crossings_32f)},
          {"ZIVKS_ZeroCrossing_16s32f", reduction(crossings_16s)}};
}

}  // namespace zivks_test
