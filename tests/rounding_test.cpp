// Scaled values around ties and bounds, in blocks and in tails, at the scales that bring them there.
#include <algorithm>
#include <cmath>

#include "reference/against_reference.h"
#include "reference/scale.h"

namespace zivks_test {
namespace {

bool reads_floats(const Function& function) {
  const std::type_info& type = *function.arguments[inputs_of(function)[0]].element->type;
  return type == typeid(float) || type == typeid(double);
}

// Sums, differences and conversions that are scaled and rounded to integers.
std::vector<const Function*> rounding_functions(bool of_floats) {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    const std::string& family = function->family;
    const bool rounds = family == "ScaledArithmetic" || family == "FloatToInteger" ||
                        family == "NarrowingConversion" || family == "PackedSamples";
    const bool is_scaled = function->arguments.back().role == Role::kScale;
    if (rounds && is_scaled && reads_floats(*function) == of_floats) list.push_back(function);
  }
  return list;
}

class ScaledIntegers : public AgainstReference {
 protected:
  void aim_at_ties(Operands& operands, int shift, Random& random) const;
};

// Changes the first operand so that the integer to be scaled is a tie of 2^shift or next to one. That integer
// is the operand itself or, by chance, its sum with the second one or a difference of the two.
void ScaledIntegers::aim_at_ties(Operands& operands, int shift, Random& random) const {
  const std::vector<size_t> inputs = inputs_of(function());
  const Argument& second = function().arguments[inputs[1]];
  const bool has_second = second.is_array() || second.role == Role::kConstant;
  const unsigned char* const others =
      second.is_array() ? operands.arrays[inputs[1]].data() : operands.slots[inputs[1]].bytes;
  const ElementType& element = *function().arguments[inputs[0]].element;
  const size_t size = element.part_bytes();
  Bytes& array = operands.arrays[inputs[0]];
  for (size_t offset = 0; offset < array.size(); offset += size) {
    uint64_t b = 0;  // both processors store the lowest byte first
    if (has_second) std::memcpy(&b, others + (second.is_array() ? offset : offset % element.bytes), size);
    const uint64_t whole = shift >= 0 && shift < 64 ? (random.next() >> random.below(64)) << shift : 0;
    const uint64_t half = shift >= 1 && shift <= 64 ? uint64_t{1} << (shift - 1) : 0;
    const uint64_t target = whole + half + random.below(3) - 1;
    const uint64_t choices[] = {target, target - b, target + b, b - target};
    std::memcpy(&array[offset], &choices[has_second ? 1 + random.below(3) : 0], size);
  }
}

TEST_P(ScaledIntegers, AreExactAroundTies) {
  const size_t block = function().block;
  Random random(1);
  for (int shift = -8; shift <= 66; ++shift) {
    for (size_t length : {size_t{511}, block + 1, std::max<size_t>(1, block - 1)}) {
      for (size_t variant = 0; variant < count_variants(function()); ++variant) {
        Operands operands =
            random_operands(function(), static_cast<int32_t>(length), variant, Flavour::kManySpecial);
        operands.slots.back() = Slot::of(std::ldexp(1.0, shift));
        aim_at_ties(operands, shift, random);
        ASSERT_EQ(difference_from_reference(operands), "")
            << "shift " << shift << ", length " << length << ", variant " << variant;
      }
    }
  }
}

ZIVKS_FOR_FUNCTIONS(ScaledIntegers, rounding_functions(false));

template <class T>
Bytes floats_around_ties(double factor) {
  std::vector<T> values = values_around_ties<T>();
  for (T& value : values) value *= static_cast<T>(factor);
  Bytes bytes(values.size() * sizeof(T));
  std::memcpy(bytes.data(), values.data(), bytes.size());
  return bytes;
}

class ScaledFloats : public AgainstReference {
 protected:
  // All samples in arrays of `length`, so that each stands in a block in one call and in a tail in another.
  void expect_agreement(const Bytes& samples, size_t length, size_t variant, double scale) const {
    Operands operands = random_operands(function(), static_cast<int32_t>(length), variant, Flavour::kFinite);
    operands.slots.back() = Slot::of(scale);
    const size_t bytes = operands.arrays[0].size();
    for (size_t start = 0; start < samples.size(); start += bytes) {
      const size_t first = std::min(start, samples.size() - bytes);
      std::memcpy(operands.arrays[0].data(), &samples[first], bytes);
      ASSERT_EQ(difference_from_reference(operands), "")
          << "length " << length << ", mode " << variant << ", scale " << scale << ", first byte " << first;
    }
  }
};

TEST_P(ScaledFloats, AreExactAroundBoundsAndTies) {
  const ElementType& element = *function().arguments[0].element;
  const size_t block = function().block;
  for (int exponent = -70; exponent <= 70; ++exponent) {
    const double scale = std::ldexp(1.0, exponent);
    const Bytes samples =
        *element.type == typeid(float) ? floats_around_ties<float>(scale) : floats_around_ties<double>(scale);
    for (size_t variant = 0; variant < count_variants(function(), false); ++variant) {
      expect_agreement(samples, samples.size() / element.bytes, variant, scale);
      if (std::abs(exponent) > 3) continue;
      for (size_t length : {size_t{1}, block - 1, block + 1, 2 * block + 3}) {
        expect_agreement(samples, length, variant, scale);
      }
    }
  }
}

ZIVKS_FOR_FUNCTIONS(ScaledFloats, rounding_functions(true));

// From scale 512 on.
TEST(AddC8u, ClearsWithoutALookAtTheSource) {
  const GuardedMemory memory;
  for (int32_t length : {1, 15, 16, 100}) {
    std::vector<uint8_t> result(static_cast<size_t>(length), 9), zeros(result.size());
    ASSERT_EQ(ZIVKS_AddC_8u_S(memory.end(), 255, result.data(), length, 512), ZIVK_STS_NO_ERR);
    EXPECT_EQ(result, zeros);
  }
}

}  // namespace
}  // namespace zivks_test
