// Linear ramps, which accumulate.
//
// Whole blocks of B elements have B accumulators, one for each place in a block, which take a step of B slopes from
// block to block. The elements behind them, the tail, are accumulated one by one, from a start of their own.
//
// Accumulators make a chain of roundings, and its additions wait for one another. Most of them need not: see
// count_equal_steps().
#include <zivks/generators.h>

#include <algorithm>
#include <cmath>

#include "core/checks.h"
#include "core/rounding.h"

using namespace zivks;

namespace {

// --- The arithmetic of blocks ----------------------------------------------------------------------

// The numbers from -B to -1.
template <class F, size_t B>
struct PlacesBeforeStart {
  F place[B];
  constexpr PlacesBeforeStart() : place() {
    for (size_t k = 0; k < B; ++k) place[k] = static_cast<F>(k) - static_cast<F>(B);
  }
  Lanes<F, B> lanes() const { return Array<const F>{place}.template load<B>(0); }
};
template <class F, size_t B>
constexpr PlacesBeforeStart<F, B> kPlacesBeforeStart;

template <class F, size_t N, size_t... I>
Lanes<F, N> broadcast_lanes(F value, std::index_sequence<I...>) {
  return {{(static_cast<void>(I), broadcast(value))...}};
}
template <class F, size_t N>
Lanes<F, N> broadcast_lanes(F value) {
  return broadcast_lanes<F, N>(value, std::make_index_sequence<Lanes<F, N>::kParts>());
}

// In the precision of the arguments.
template <class F>
struct InFullPrecision {
  using Working = F;
  static constexpr size_t kBlock = 32 / sizeof(F);
  using Block = Lanes<F, kBlock>;

  static Block seed(F offset, F slope) {
    return fused_multiply_add(kPlacesBeforeStart<F, kBlock>.lanes(), broadcast(slope),
                              broadcast_lanes<F, kBlock>(offset));
  }
  static Block step(F slope) { return broadcast_lanes<F, kBlock>(F{kBlock} * slope); }
  ZIVKS_INLINE static Block sum(Block a, Block b) { return a + b; }
};

// In float16, by lanes of float32. A sum of two float16 numbers that is rounded to float32 and then to float16 is the
// sum rounded once, since float32 has more than twice the digits.
struct InHalfPrecision {
  using Working = float;
  static constexpr size_t kBlock = 16;
  using Block = Lanes<float, kBlock>;

  ZIVKS_INLINE static Block round(Block a) {
    return lift<float>([](auto x) { return round_to_half(x); }, a);
  }
  static double narrowed(float value) { return double{round_to_half(broadcast(value))[0]}; }

  // The products have more digits than float16, so that two roundings could differ from one. In float64 product and sum
  // are exact: all their bits lie between 2^-24 and 2^21. On the way to float32 they are then rounded to odd, which
  // leaves the next rounding what it would make of the exact sum.
  static Block seed(float offset, float slope) {
    const auto exact =
        kPlacesBeforeStart<double, kBlock>.lanes() * broadcast(narrowed(slope)) + broadcast(narrowed(offset));
    return round(convert<float>(lift<double>([](auto x) { return round_to_odd(x); }, exact)));
  }
  static Block step(float slope) { return round(broadcast_lanes<float, kBlock>(float{kBlock} * slope)); }
  ZIVKS_INLINE static Block sum(Block a, Block b) { return round(a + b); }

 private:
  // To the 24 digits of float32: truncated, and the last bit is set if anything was lost.
  static F64 round_to_odd(F64 a) {
    const U64 lower = broadcast((uint64_t{1} << (53 - 24)) - 1);
    const U64 bits = U64(a);
    return F64((bits | ((bits & lower) + lower)) & ~lower);
  }
};

// --- Steps that are all alike ----------------------------------------------------------------------

// The bits of the mantissa.
template <class F>
inline constexpr auto kMantissa = (UnsignedOf<sizeof(F)>{1} << (std::numeric_limits<F>::digits - 1)) - 1;

template <class F>
inline constexpr F kForever = 0x1p62F;

// How many steps that are as long as the one from `b` to `c` follow that one, for accumulators which went from `a` to
// `b` to `c`; less one, since a quotient may be rounded up. What is not sure counts as none.
//
// Numbers with one sign and exponent have one distance from neighbour to neighbour, their quantum. A sum that is among
// them, too, is rounded to a multiple of the quantum, to which the accumulator contributes a multiple. So the rounded
// step does not depend on the accumulator, with one exception: if the step lies halfway between two multiples, the sum
// goes to the even one. But then `b` is even already, and all further sums are, too.
//
// What does not move, for its step is too small or it is infinite or a NaN, stays forever.
template <class R>
ZIVKS_INLINE R count_equal_steps(R a, R b, R c) {
  using F = ElementOf<R>;
  using Bits = Register<UnsignedOf<sizeof(F)>>;
  const Bits mantissa = broadcast(UnsignedOf<sizeof(F)>{kMantissa<F>});
  const R step = c - b;
  const auto moves = absolute(step) > R{};
  const auto grows = Register<SignedOf<F>>(Bits(step) ^ Bits(c)) >= 0;
  const R limit = R(select(grows, Bits(c) | mantissa, Bits(c) & ~mantissa));
  const R count = absolute(limit - c) / absolute(step) - broadcast(F{1});
  const auto stays_in_range = (((Bits(a) ^ Bits(b)) | (Bits(b) ^ Bits(c))) & ~mantissa) == Bits{};
  return R(Bits(select(moves, count, broadcast(kForever<F>))) & Bits(stays_in_range));
}

template <class F, size_t N>
ZIVKS_INLINE size_t count_equal_steps(Lanes<F, N> a, Lanes<F, N> b, Lanes<F, N> c) {
  const auto counts = lift<F>([](auto x, auto y, auto z) { return count_equal_steps(x, y, z); }, a, b, c);
  F least = kForever<F>;
  for (const auto& part : counts.part) least = std::min(least, reduce_minimum(part));
  return least > 0 ? static_cast<size_t>(least) : 0;
}

// --- Blocks ----------------------------------------------------------------------------------------

template <size_t count>
inline constexpr auto kNumbersTo = std::make_index_sequence<count>();

// Several blocks, one behind the other.
template <size_t count, class F, size_t B, size_t... I>
ZIVKS_INLINE Lanes<F, count * B> join(const Lanes<F, B> (&block)[count], std::index_sequence<I...>) {
  constexpr size_t kParts = Lanes<F, B>::kParts;
  return {{block[I / kParts].part[I % kParts]...}};
}

// The blocks that follow on `last`, which moves to the last one of them.
template <class Block, class Next, size_t... I>
ZIVKS_INLINE auto next_blocks(Block& last, Next next, std::index_sequence<I...>) {
  const Block block[] = {(static_cast<void>(I), last = next(last))...};
  return join(block, kNumbersTo<sizeof...(I) * Block::kParts>);
}

template <class F, size_t N, size_t B, size_t... I>
ZIVKS_INLINE Lanes<F, N> add_to_each_block(Lanes<F, N> blocks, Lanes<F, B> addend,
                                           std::index_sequence<I...>) {
  return {{(blocks.part[I] + addend.part[I % Lanes<F, B>::kParts])...}};
}

template <class Arithmetic, class T, ZIVKRoundMode mode>
class Filler {
 public:
  using Block = typename Arithmetic::Block;

  Filler(Block seed, Block step, T* dst) : latest_{seed, seed, seed}, step_(step), dst_(dst) {}

  void fill(size_t blocks) {
    while (blocks > 0) {
      const size_t single = std::min(blocks, kSingleSteps);
      take_single_steps(single);
      blocks -= single;
      if (blocks < kTurn) continue;
      const size_t equal = count_equal_steps(latest_[0], latest_[1], latest_[2]);
      const size_t turns = std::min(blocks, equal) / kTurn;
      if (turns == 0) continue;
      take_equal_steps(turns);
      blocks -= turns * kTurn;
    }
  }

 private:
  using F = typename Arithmetic::Working;
  static constexpr size_t B = Arithmetic::kBlock;

  // Blocks that fill a register of the destination.
  static constexpr size_t kTogether = std::max<size_t>(1, kRegisterElements<T> / B);

  // Blocks in a turn of the loop over equal steps: as many accumulators as additions take cycles, and as can be under
  // way at once.
  static constexpr size_t kTurn = 8 / Block::kParts;

  // After so many steps it is tried whether those that follow are equal.
  static constexpr size_t kSingleSteps = 8;

  template <size_t N>
  ZIVKS_INLINE void store_next(Lanes<F, N> blocks) {
    if constexpr (std::is_floating_point_v<T>) {
      as_operand(dst_).template store<N>(0, blocks);
    } else {
      as_operand(dst_).template store<N>(0, round_saturating<T, mode>(blocks));
    }
    dst_ += N;
  }

  ZIVKS_INLINE Block next(Block a) {
    latest_[0] = latest_[1];
    latest_[1] = a;
    return Arithmetic::sum(a, step_);
  }

  ZIVKS_INLINE void take_single_steps(size_t count) {
    for (; count >= kTogether; count -= kTogether) {
      store_next(next_blocks(
          latest_[2], [this](Block a) ZIVKS_INLINE_LAMBDA { return next(a); }, kNumbersTo<kTogether>));
    }
    if constexpr (kTogether == 2) {
      if (count == 0) return;
      latest_[2] = next(latest_[2]);
      const Block twice[] = {latest_[2], latest_[2]};
      const auto elements = round_saturating<T, mode>(join(twice, kNumbersTo<2 * Block::kParts>));
      store_bottom_half(dst_, U64(elements.part[0]));
    }
  }

  ZIVKS_INLINE void take_equal_steps(size_t turns) {
    const auto clear_nan = [](auto x) { return select(x == x, x, decltype(x){}); };
    const Block step = lift<F>(clear_nan, latest_[2] - latest_[1]);
    const Block step_of_turn = step * broadcast(F{kTurn});
    Block last = latest_[2];
    auto blocks = next_blocks(
        last, [step](Block a) ZIVKS_INLINE_LAMBDA { return a + step; }, kNumbersTo<kTurn>);
    for (size_t i = 0; i < turns; ++i) {
      store_next(blocks);
      blocks = add_to_each_block(blocks, step_of_turn, kNumbersTo<kTurn * Block::kParts>);
    }
    latest_[2] = fused_multiply_add(step_of_turn, broadcast(static_cast<F>(turns)), latest_[2]);
  }

  Block latest_[3];  // the last one comes last
  Block step_;
  T* dst_;
};

template <class Arithmetic, class T, class F>
void fill_blocks(T* dst, size_t blocks, F offset, F slope) {
  const auto seed = Arithmetic::seed(offset, slope), step = Arithmetic::step(slope);
  if constexpr (std::is_floating_point_v<T>) {
    Filler<Arithmetic, T, ZIVK_RND_NEAR>(seed, step, dst).fill(blocks);
  } else {
    with_rounding_mode_of_floats(
        ZIVK_RND_NEAR, [&](auto mode) { Filler<Arithmetic, T, mode>(seed, step, dst).fill(blocks); });
  }
  leave_registers();
}

// --- The tail --------------------------------------------------------------------------------------

// From element `begin` on, in the precision of the arguments.
template <class T, class F>
void fill_tail(T* dst, size_t begin, size_t len, F offset, F slope) {
  F value = std::fma(static_cast<F>(static_cast<int32_t>(begin) - 1), slope, offset);
  for (size_t i = begin; i < len; ++i) {
    value += slope;
    if constexpr (std::is_floating_point_v<T>) dst[i] = value;
    if constexpr (!std::is_floating_point_v<T>) dst[i] = round_nearest_in_tail<T>(double{value});
  }
}

template <class Arithmetic, class T, class F>
ZIVKStatus fill_ramp(T* dst, int32_t len, F offset, F slope) {
  if (ZIVKStatus status = check_arrays(len, dst)) return status;
  const auto count = static_cast<size_t>(len);
  const size_t blocks = count / Arithmetic::kBlock, tail = blocks * Arithmetic::kBlock;
  if (blocks > 0) fill_blocks<Arithmetic>(dst, blocks, offset, slope);
  fill_tail(dst, tail, count, offset, slope);
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_VectorSlope_8u(uint8_t* dst, int32_t len, float offset, float slope) {
  return fill_ramp<InHalfPrecision>(dst, len, offset, slope);
}
ZIVKStatus ZIVKS_VectorSlope_16u(uint16_t* dst, int32_t len, float offset, float slope) {
  return fill_ramp<InFullPrecision<float>>(dst, len, offset, slope);
}
ZIVKStatus ZIVKS_VectorSlope_16s(int16_t* dst, int32_t len, float offset, float slope) {
  return fill_ramp<InFullPrecision<float>>(dst, len, offset, slope);
}
ZIVKStatus ZIVKS_VectorSlope_32u(uint32_t* dst, int32_t len, double offset, double slope) {
  return fill_ramp<InFullPrecision<double>>(dst, len, offset, slope);
}
ZIVKStatus ZIVKS_VectorSlope_32s(int32_t* dst, int32_t len, double offset, double slope) {
  return fill_ramp<InFullPrecision<double>>(dst, len, offset, slope);
}
ZIVKStatus ZIVKS_VectorSlope_32f(float* dst, int32_t len, float offset, float slope) {
  return fill_ramp<InFullPrecision<float>>(dst, len, offset, slope);
}

// Whole pairs count as blocks, but blocks are of four: the last one may reach beyond the end.
ZIVKStatus ZIVKS_VectorSlope_64f(double* dst, int32_t len, double offset, double slope) {
  if (ZIVKStatus status = check_arrays(len, dst)) return status;
  using Arithmetic = InFullPrecision<double>;
  const auto count = static_cast<size_t>(len);
  const size_t tail = count / 2 * 2, blocks = (tail + Arithmetic::kBlock - 1) / Arithmetic::kBlock;
  if (blocks > 0) fill_blocks<Arithmetic>(dst, blocks, offset, slope);
  fill_tail(dst, tail, count, offset, slope);
  return ZIVK_STS_NO_ERR;
}
