// Scaled addition and subtraction in integers of 128 bits, which hold every sum exactly.
#include "reference/exact.h"
#include "reference/reference.h"
#include "reference/scale.h"

namespace zivks_test {
namespace {

Exact sum(Exact a, Exact b) { return a + b; }
Exact first_minus_second(Exact a, Exact b) { return a - b; }
Exact second_minus_first(Exact a, Exact b) { return b - a; }

// The value that blocks shift, and its rounding, when the count has wrapped into a shift to the right.
enum class Shifted { kNothing, kExactHalfUp, kSaturatedHalfUp, kSaturatedDown };

// Every member multiplies by a power of two, rounds to nearest even and saturates, with these exceptions.
struct Rules {
  // Elements in a block that shifts where the scale is below 1; 1 if there is no tail or the tail shifts too.
  size_t shifting_block = 1;
  Shifted shifted = Shifted::kNothing;
  // Whole blocks of so many elements narrow the second four of every eight products to 16 bits by truncation.
  size_t truncating_block = 0;
  int clearing_shift = std::numeric_limits<int>::max();  // all results are 0 from this scale shift on
};

bool is_in_block(size_t index, size_t length, size_t block) { return index < length / block * block; }

template <class T>
T shifted_in_block(Exact value, int count, Shifted shifted) {
  if (shifted != Shifted::kExactHalfUp) value = saturated<T>(value);
  const Rounding rounding = shifted == Shifted::kSaturatedDown ? Rounding::kDown : Rounding::kTiesUp;
  return saturated<T>(shifted_by_low_byte(value, count, rounding));
}

// exact * 2^-shift, for element `index` of `length`.
template <class T>
T scaled(Exact value, int shift, const Rules& rules, Rounding rounding, size_t index, size_t length) {
  if (shift >= rules.clearing_shift) return 0;
  if (shift >= 0) return saturated<T>(divided_by_power_of_two(value, shift, rounding));
  if (rules.shifted != Shifted::kNothing && is_in_block(index, length, rules.shifting_block)) {
    return shifted_in_block<T>(value, -shift, rules.shifted);
  }
  const Exact product = times_power_of_two(value, -shift);
  if (rules.truncating_block != 0 && is_in_block(index, length, rules.truncating_block) && index % 8 >= 4) {
    return saturated<T>(Exact{saturated<uint32_t>(product)} % 65536);
  }
  return saturated<T>(product);
}

// With the constant INT64_MIN, blocks of two take ties down.
template <class Part>
bool rounds_ties_down(Exact constant, int shift, size_t index, size_t length) {
  return std::is_same_v<Part, int64_t> && constant == std::numeric_limits<int64_t>::min() && shift <= 64 &&
         is_in_block(index, length, 2);
}

// A function of two arrays, or of an array and a constant.
template <class T>
Reference member(Exact (*operation)(Exact, Exact), Rules rules = {}) {
  using Part = PartOf<T>;
  struct Element {
    Part parts[ElementParts<T>::kCount];
  };
  return [=](const Function& function, const Operands& operands) {
    const std::vector<size_t> inputs = inputs_of(function);
    const int shift = -reference_scale_exponent(operands.slots.back().as<double>());
    Rounding rounding = Rounding::kTiesToEven;
    for (size_t i : inputs) {
      if (function.arguments[i].role != Role::kRoundMode) continue;
      const auto mode = operands.slots[i].as<int32_t>();
      if (mode != 1) rounding = mode == 0 ? Rounding::kToZero : Rounding::kTiesUp;
    }
    Outputs outputs(function, operands);
    const auto length = static_cast<size_t>(operands.length);
    for (size_t i = 0; i < length; ++i) {
      const auto a = bit_cast<Element>(input_element<T>(function, operands, inputs[0], i));
      const auto b = bit_cast<Element>(input_element<T>(function, operands, inputs[1], i));
      Element result;
      for (size_t part = 0; part < ElementParts<T>::kCount; ++part) {
        const bool ties_down =
            rounding == Rounding::kTiesUp && rounds_ties_down<Part>(b.parts[part], shift, i, length);
        result.parts[part] = scaled<Part>(operation(a.parts[part], b.parts[part]), shift, rules,
                                          ties_down ? Rounding::kTiesDown : rounding, i, length);
      }
      outputs.set(0, i, bit_cast<T>(result));
    }
    return outputs.take();
  };
}

constexpr Rules shifting(size_t block, Shifted shifted) { return {block, shifted}; }

}  // namespace

References scaled_arithmetic_references() {
  constexpr Shifted kExact = Shifted::kExactHalfUp, kSaturated = Shifted::kSaturatedHalfUp,
                    kDown = Shifted::kSaturatedDown;
  Rules truncating;
  truncating.truncating_block = 64;
  Rules clearing = shifting(32, kDown);
  clearing.clearing_shift = 9;
  return {
      {"ZIVKS_Add_8u_S", member<uint8_t>(sum, shifting(8, kExact))},
      {"ZIVKS_Add_16u_S", member<uint16_t>(sum, shifting(4, kExact))},
      {"ZIVKS_Add_16s_S", member<int16_t>(sum)},
      {"ZIVKS_Add_32s_S", member<int32_t>(sum)},
      {"ZIVKS_Add_16sc_S", member<ZIVK16sc>(sum, shifting(8, kExact))},
      {"ZIVKS_Add_32sc_S", member<ZIVK32sc>(sum, shifting(2, kExact))},
      {"ZIVKS_Add_64s_S", member<int64_t>(sum, shifting(1, kSaturated))},

      {"ZIVKS_Sub_8u_S", member<uint8_t>(second_minus_first, truncating)},
      {"ZIVKS_Sub_16u_S", member<uint16_t>(second_minus_first, shifting(32, kSaturated))},
      {"ZIVKS_Sub_16s_S", member<int16_t>(second_minus_first)},
      {"ZIVKS_Sub_32s_S", member<int32_t>(second_minus_first)},
      {"ZIVKS_Sub_16sc_S", member<ZIVK16sc>(second_minus_first)},
      {"ZIVKS_Sub_32sc_S", member<ZIVK32sc>(second_minus_first)},

      {"ZIVKS_AddC_8u_S", member<uint8_t>(sum, clearing)},
      {"ZIVKS_AddC_16u_S", member<uint16_t>(sum, shifting(32, kDown))},
      {"ZIVKS_AddC_16s_S", member<int16_t>(sum)},
      {"ZIVKS_AddC_32s_S", member<int32_t>(sum, shifting(8, kDown))},
      {"ZIVKS_AddC_16sc_S", member<ZIVK16sc>(sum, shifting(16, kDown))},
      {"ZIVKS_AddC_32sc_S", member<ZIVK32sc>(sum, shifting(8, kDown))},
      {"ZIVKS_AddC_64s_S", member<int64_t>(sum, shifting(1, kSaturated))},
      {"ZIVKS_AddC_64u_S", member<uint64_t>(sum, shifting(1, kSaturated))},

      {"ZIVKS_SubC_8u_S", member<uint8_t>(first_minus_second, shifting(16, kSaturated))},
      {"ZIVKS_SubC_16u_S", member<uint16_t>(first_minus_second, shifting(32, kSaturated))},
      {"ZIVKS_SubC_16s_S", member<int16_t>(first_minus_second)},
      {"ZIVKS_SubC_32s_S", member<int32_t>(first_minus_second)},
      {"ZIVKS_SubC_16sc_S", member<ZIVK16sc>(first_minus_second)},
      {"ZIVKS_SubC_32sc_S", member<ZIVK32sc>(first_minus_second, shifting(1, kSaturated))},

      {"ZIVKS_SubCRev_8u_S", member<uint8_t>(second_minus_first, shifting(16, kSaturated))},
      {"ZIVKS_SubCRev_16u_S", member<uint16_t>(second_minus_first, shifting(32, kSaturated))},
      {"ZIVKS_SubCRev_16s_S", member<int16_t>(second_minus_first)},
      {"ZIVKS_SubCRev_32s_S", member<int32_t>(second_minus_first)},
      {"ZIVKS_SubCRev_16sc_S", member<ZIVK16sc>(second_minus_first)},
      {"ZIVKS_SubCRev_32sc_S", member<ZIVK32sc>(second_minus_first, shifting(1, kSaturated))},
  };
}

}  // namespace zivks_test
