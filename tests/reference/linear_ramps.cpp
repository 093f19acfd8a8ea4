// Linear ramps, accumulated step by step.
#include "reference/exact.h"
#include "reference/reference.h"

namespace zivks_test {
namespace {

template <class F>
struct Full {
  using Argument = F;
  static F narrow(F value) { return value; }
  static F fused(F a, F b, F c) { return std::fma(a, b, c); }
  static F sum(F a, F b) { return a + b; }
};

// Sums and products of float16 numbers are exact in float64.
struct Half {
  using Argument = float;
  static double narrow(double value) { return rounded_to_format(value, 11, -24, 65520); }
  static double fused(double a, double b, double c) { return narrow(a * b + c); }
  static double sum(double a, double b) { return narrow(a + b); }
};

template <class T>
T element_in_block(double value) {
  if constexpr (std::is_integral_v<T>) return saturated<T>(rounded_to_integer(value, Rounding::kTiesToEven));
  return static_cast<T>(value);
}

template <class T>
T element_in_tail(double value) {
  using Limits = std::numeric_limits<T>;
  if (!std::is_integral_v<T>) return static_cast<T>(value);
  if (std::isnan(value)) return 0;
  if (value >= static_cast<double>(Limits::max())) return Limits::max();
  if (value <= static_cast<double>(Limits::lowest())) return Limits::lowest();
  double whole;
  if (std::fabs(std::modf(value, &whole)) == 0.5 && std::fmod(whole, 2) == 0) return static_cast<T>(whole);
  return static_cast<T>(value < 0 ? value - 0.5 : value + 0.5);
}

// `whole` elements count as those of blocks, which are of B elements.
template <class T, class Arithmetic, int32_t B>
void ramp(Outputs& outputs, int32_t length, int32_t whole, typename Arithmetic::Argument offset,
          typename Arithmetic::Argument slope) {
  using Argument = typename Arithmetic::Argument;
  const auto start = Arithmetic::narrow(offset), unit = Arithmetic::narrow(slope),
             step = Arithmetic::narrow(Argument{B} * slope);
  for (int32_t lane = 0; lane < B; ++lane) {
    auto value = Arithmetic::fused(static_cast<Argument>(lane - B), unit, start);
    for (int32_t block = 0; block < whole; block += B) {
      value = Arithmetic::sum(value, step);
      outputs.set(0, static_cast<size_t>(block + lane), element_in_block<T>(value));
    }
  }
  Argument value = whole > 0 ? std::fma(static_cast<Argument>(whole - 1), slope, offset)
                             : std::fma(slope, Argument{-1}, offset);
  for (int32_t i = whole; i < length; ++i) {
    value += slope;
    outputs.set(0, static_cast<size_t>(i), element_in_tail<T>(value));
  }
}

template <class T, class Arithmetic, int32_t B, int32_t whole = B>
std::vector<Bytes> reference(const Function& function, const Operands& operands) {
  using Argument = typename Arithmetic::Argument;
  Outputs outputs(function, operands);
  const std::vector<size_t> inputs = inputs_of(function);
  ramp<T, Arithmetic, B>(outputs, operands.length, operands.length / whole * whole,
                         input_element<Argument>(function, operands, inputs.at(0), 0),
                         input_element<Argument>(function, operands, inputs.at(1), 0));
  return outputs.take();
}

}  // namespace

References linear_ramp_references() {
  return {
      {"ZIVKS_VectorSlope_8u", reference<uint8_t, Half, 16>},
      {"ZIVKS_VectorSlope_16u", reference<uint16_t, Full<float>, 8>},
      {"ZIVKS_VectorSlope_16s", reference<int16_t, Full<float>, 8>},
      {"ZIVKS_VectorSlope_32u", reference<uint32_t, Full<double>, 4>},
      {"ZIVKS_VectorSlope_32s", reference<int32_t, Full<double>, 4>},
      {"ZIVKS_VectorSlope_32f", reference<float, Full<float>, 8>},
      {"ZIVKS_VectorSlope_64f", reference<double, Full<double>, 4, 2>},
  };
}

}  // namespace zivks_test
