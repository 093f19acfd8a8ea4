// Linear ramps, which accumulate.
//
// Whole blocks of B elements have B accumulators, one for each place in a block, which take a step of B slopes from
// block to block. The elements behind them, the tail, are accumulated one by one, from a start of their own.
//
// Accumulators make a chain of roundings, and its additions wait for one another. Most of them need not: for as long as
// sums are exact (count_exact_steps()), or rounded by the same amount every time (count_equal_steps()), an accumulator
// some blocks ahead is known at once.
#include <zivks/generators.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

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
  static constexpr int kDigits = std::numeric_limits<F>::digits;
  static constexpr F kLargest = std::numeric_limits<F>::max();
  using Block = Lanes<F, kBlock>;

  F offset, slope, step;

  InFullPrecision(F given_offset, F given_slope)
      : offset(given_offset), slope(given_slope), step(F{kBlock} * slope) {}

  Block seed() const {
    return fused_multiply_add(kPlacesBeforeStart<F, kBlock>.lanes(), broadcast(slope),
                              broadcast_lanes<F, kBlock>(offset));
  }
  ZIVKS_INLINE static Block sum(Block a, Block b) { return a + b; }
};

// In float16, by lanes of float32. A sum of two float16 numbers that is rounded to float32 and then to float16 is the
// sum rounded once, since float32 has two more than twice the digits.
struct InHalfPrecision {
  using Working = float;
  static constexpr size_t kBlock = 16;
  static constexpr int kDigits = 11;
  static constexpr float kLargest = 65504;
  using Block = Lanes<float, kBlock>;

  float offset, slope, step;

  InHalfPrecision(float given_offset, float given_slope)
      : offset(narrowed(given_offset)),
        slope(narrowed(given_slope)),
        step(narrowed(float{kBlock} * given_slope)) {}

  // The products have more digits than float16, so that two roundings could differ from one. In float64 product and sum
  // are exact: all their bits lie between 2^-24 and 2^21. On the way to float32 they are then rounded to odd, which
  // leaves the next rounding what it would make of the exact sum.
  Block seed() const {
    const auto exact =
        kPlacesBeforeStart<double, kBlock>.lanes() * broadcast(double{slope}) + broadcast(double{offset});
    return round(convert<float>(lift<double>([](auto x) { return round_to_odd(x); }, exact)));
  }
  ZIVKS_INLINE static Block sum(Block a, Block b) { return round(a + b); }

 private:
  ZIVKS_INLINE static Block round(Block a) {
    return lift<float>([](auto x) { return round_to_half(x); }, a);
  }
  static float narrowed(float value) { return round_to_half(broadcast(value))[0]; }

  // To the 24 digits of float32: truncated, and the last bit is set if anything was lost.
  static F64 round_to_odd(F64 a) {
    const U64 lower = broadcast((uint64_t{1} << (53 - 24)) - 1);
    const U64 bits = U64(a);
    return F64((bits | ((bits & lower) + lower)) & ~lower);
  }
};

// --- Equal steps -----------------------------------------------------------------------------------

template <class F>
inline constexpr F kForever = 0x1p62F;

// The bits of the mantissa.
template <class F>
inline constexpr auto kMantissa = (UnsignedOf<sizeof(F)>{1} << (std::numeric_limits<F>::digits - 1)) - 1;

// The weight of the lowest bit that is set; 0 for subnormal numbers, with which no step counts as exact.
template <class F>
F lowest_bit(F value) {
  using Bits = UnsignedOf<sizeof(F)>;
  const Bits bits = read<Bits>(&value) & (std::numeric_limits<Bits>::max() >> 1),
             power_bits = bits & ~kMantissa<F>;
  const Bits lowest = bits & (~bits + 1) & kMantissa<F>;
  const F power = read<F>(&power_bits);
  return lowest == 0 ? power : power * static_cast<F>(lowest) / F{kMantissa<F> + 1};
}

// How many blocks there are at least whose accumulators are exact: they are multiples of the lowest bit of the
// arguments, and not larger than all digits from that bit on can express. That limit may overflow to infinity, where
// the largest number takes its place.
//
// The quotient is at most 2 to the number of digits, since a step is no smaller than the lowest bit. So its roundings
// add less than 3.
template <class Arithmetic, class F = typename Arithmetic::Working>
size_t count_exact_steps(const Arithmetic& ramp) {
  F lowest = Arithmetic::kLargest;
  for (F value : {ramp.offset, ramp.slope, ramp.step}) {
    if (value != 0) lowest = std::min(lowest, lowest_bit(value));
  }
  const F limit = std::min(lowest * static_cast<F>(uint64_t{1} << Arithmetic::kDigits), Arithmetic::kLargest);
  const F count = (limit - std::fabs(ramp.offset)) / std::fabs(ramp.step) - 3;
  return count > 0 ? static_cast<size_t>(std::min(count, kForever<F>)) : 0;
}

// How many steps that are as long as the one from `b` to `c` follow that one, for accumulators which went from `a` to
// `b` to `c`; less one, since a quotient may be rounded up. What is not sure counts as none.
//
// Numbers with one sign and exponent have one distance from neighbour to neighbour, and are multiples of it. A sum that
// is among them, too, is rounded to such a multiple, and its first operand is one. So by how much it is rounded depends
// on the second operand alone, with one exception: if that lies halfway between two multiples, the sum goes to the even
// one. But then `b` is even already, and all further sums are, too.
//
// What does not move, because its step is too small or it is infinite or a NaN, stays forever.
//
// Half precision is counted as if its numbers had float32's digits. That is safe in its highest range, where 65504 is the
// last number but the count reaches to below 65536: the distance is 32, and a step that leads beyond 65504 leads to
// 65536 at least. And it is safe among its subnormal numbers, which all have one distance.
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

// How elements are made of the lanes of blocks.
struct Unchanged {
  template <class T, size_t N>
  ZIVKS_INLINE static Lanes<T, N> elements(Lanes<T, N> a) {
    return a;
  }
};
struct Clamped {
  template <class T, class F, size_t N>
  ZIVKS_INLINE static Lanes<T, N> elements(Lanes<F, N> a) {
    return round_saturating<T, ZIVK_RND_NEAR>(a);
  }
};
// For use where the processor's own mode is to nearest. All values must be within the range of int32, but for uint32.
struct Directly {
  template <class T, class F, size_t N>
  ZIVKS_INLINE static Lanes<T, N> elements(Lanes<F, N> a) {
    if constexpr (std::is_same_v<T, uint32_t>) {
      return round_saturating<T, kCurrentMode>(a);
    } else if constexpr (sizeof(T) == sizeof(int32_t)) {
      return round_unclamped<kCurrentMode>(a);
    } else {
      return narrow_saturating<T>(round_unclamped<kCurrentMode>(a));
    }
  }
};

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

// Of two blocks that follow on one another, the one that begins with element `first` of the first.
template <class F, size_t B>
ZIVKS_INLINE Lanes<F, B> block_between(Lanes<F, B> first_block, Lanes<F, B> second_block, size_t first) {
  F elements[2 * B];
  const Array<F> array = {elements};
  array.template store<B>(0, first_block);
  array.template store<B>(B, second_block);
  return array.template load<B>(first);
}

// Writes the blocks that follow on the seed, which is the block before the first one.
template <class Arithmetic, class Conversion, class T>
class Filler {
 public:
  using Block = typename Arithmetic::Block;
  using F = typename Arithmetic::Working;

  Filler(Block seed, F step, T* dst, bool streams)
      : before_(seed),
        last_but_one_(seed),
        last_(seed),
        step_(broadcast_lanes<F, B>(step)),
        dst_(dst),
        streams_(streams) {}

  ZIVKS_INLINE void fill(size_t blocks, const Arithmetic& arithmetic) {
    size_t equal = blocks < kFewBlocks ? 0 : std::min(blocks, count_exact_steps(arithmetic));
    Block equal_step = step_;
    for (;;) {
      if (equal >= kTurn) {
        take_equal_steps(equal, equal_step);
        blocks -= equal;
        if (blocks == 0) return;
      }
      const size_t single = blocks < kFewBlocks ? blocks : kSingleSteps;
      take_rounded_steps(single);
      blocks -= single;
      if (blocks == 0) return;
      equal = std::min(blocks, count_equal_steps(before_, last_but_one_, last_));
      const auto clear_nan = [](auto x) { return select(x == x, x, decltype(x){}); };
      equal_step = lift<F>(clear_nan, last_ - last_but_one_);
    }
  }

 private:
  static constexpr size_t B = Arithmetic::kBlock;

  // Blocks that fill a register of the destination.
  static constexpr size_t kTogether = std::max<size_t>(1, kRegisterElements<T> / B);

  // Blocks in a turn of the loop over equal steps, whose additions are all under way at the same time.
  static constexpr size_t kTurn = 8 / Block::kParts;

  // For so few it does not pay to look for equal steps.
  static constexpr size_t kFewBlocks = 16;

  // For so few turns it does not pay to align their stores.
  static constexpr size_t kFewTurns = 6;

  // After so many steps it is tried whether those that follow are equal. Two lead all lanes from where equal steps ended
  // to another exponent, and three are looked at; an even number keeps blocks together that share a register.
  static constexpr size_t kSingleSteps = 6;

  template <bool streams = false, size_t N>
  ZIVKS_INLINE void store_next(Lanes<F, N> blocks) {
    const auto elements = Conversion::template elements<T>(blocks);
    if constexpr (streams) as_operand(dst_).template stream<N>(0, elements);
    if constexpr (!streams) as_operand(dst_).template store<N>(0, elements);
    dst_ += N;
  }

  template <class Next>
  ZIVKS_INLINE void take_steps(size_t count, Next next) {
    for (; count >= kTogether; count -= kTogether) {
      store_next(next_blocks(last_, next, kNumbersTo<kTogether>));
    }
    if constexpr (kTogether == 2) {
      if (count == 0) return;
      last_ = next(last_);
      const Block twice[] = {last_, last_};
      const auto elements = Conversion::template elements<T>(join(twice, kNumbersTo<2 * Block::kParts>));
      store_bottom_half(dst_, U64(elements.part[0]));
      dst_ += B;
    }
  }

  ZIVKS_INLINE void take_rounded_steps(size_t count) {
    take_steps(count, [this](Block last) ZIVKS_INLINE_LAMBDA {
      before_ = last_but_one_;
      last_but_one_ = last;
      return Arithmetic::sum(last, step_);
    });
  }

  ZIVKS_INLINE void take_equal_steps(size_t count, Block step) {
    const auto next = [step](Block a) ZIVKS_INLINE_LAMBDA { return a + step; };
    if (count > kTurn) {
      if (kTogether > 1 && kAligns && bytes_unaligned(dst_) == B * sizeof(T)) {
        take_steps(1, next);
        --count;
      }
      const size_t turns = (count - 1) / kTurn;
      take_turns(turns, step);
      count -= turns * kTurn;
    }
    take_steps(count, next);
  }

  // Turns of equal steps. If `dst_` is not aligned, the loop begins where it is, some elements further on, with blocks
  // that are each put together of two. It then writes as many elements beyond the last turn. So at least one block has
  // to follow, which overwrites them.
  ZIVKS_INLINE void take_turns(size_t turns, Block step) {
    T* const first = dst_;
    Block last = last_, step_of_block = step;
    if constexpr (kAligns && kTogether == 1) {
      const size_t skipped = bytes_unaligned(dst_) / sizeof(T);
      if (skipped > 0 && turns >= kFewTurns) {
        const Block next = last + step;
        store_next(next);
        dst_ = first + skipped;
        last = block_between(last, next, skipped);
        step_of_block = block_between(step, step, skipped);
      }
    }
    const Block step_of_turn = step_of_block * broadcast(F{kTurn});
    const auto blocks = next_blocks(
        last, [step_of_block](Block a) ZIVKS_INLINE_LAMBDA { return a + step_of_block; }, kNumbersTo<kTurn>);
    if (kHasStreams && streams_ && bytes_unaligned(dst_) == 0) {
      store_turns<true>(turns, blocks, step_of_turn);
      order_streams();
    } else {
      store_turns<false>(turns, blocks, step_of_turn);
    }
    dst_ = first + turns * kTurn * B;
    last_ = fused_multiply_add(step * broadcast(F{kTurn}), broadcast(static_cast<F>(turns)), last_);
  }

  template <bool streams, size_t N>
  ZIVKS_INLINE void store_turns(size_t turns, Lanes<F, N> blocks, Block step_of_turn) {
    for (size_t i = 0; i < turns; ++i) {
      store_next<streams>(blocks);
      blocks = add_to_each_block(blocks, step_of_turn, kNumbersTo<kTurn * Block::kParts>);
    }
  }

  Block before_, last_but_one_, last_;
  Block step_;
  T* dst_;
  bool streams_;
};

template <class Conversion, class Arithmetic, class T>
[[gnu::flatten]] void fill_blocks(const Arithmetic& arithmetic, T* dst, size_t blocks) {
  Filler<Arithmetic, Conversion, T>(arithmetic.seed(), arithmetic.step, dst,
                                    streams(blocks * Arithmetic::kBlock * sizeof(T)))
      .fill(blocks, arithmetic);
  leave_registers();
}

// Whether all accumulators are within the range of int32, for which none of them may overflow. A rounded step is none or
// at most twice the step, and the sums here are rounded, too.
template <class Arithmetic>
bool is_within_int32(const Arithmetic& arithmetic, size_t blocks) {
  using F = typename Arithmetic::Working;
  const F largest = std::fabs(arithmetic.offset) + std::fabs(arithmetic.step) * static_cast<F>(blocks + 1);
  return 3 * largest < std::min<F>(0x1p31F, Arithmetic::kLargest);
}

template <class Arithmetic, class T, class F>
void fill_blocks(T* dst, size_t blocks, F offset, F slope) {
  const Arithmetic arithmetic(offset, slope);
  if constexpr (std::is_floating_point_v<T>) {
    fill_blocks<Unchanged>(arithmetic, dst, blocks);
  } else {
    if constexpr (kRoundsFasterInCurrentMode) {
      if (rounds_to_nearest() && (std::is_same_v<T, uint32_t> || is_within_int32(arithmetic, blocks)))
        return fill_blocks<Directly>(arithmetic, dst, blocks);
    }
    fill_blocks<Clamped>(arithmetic, dst, blocks);
  }
}

// --- The tail --------------------------------------------------------------------------------------

// From element `begin` on, each from the one before, in the precision of the arguments.
template <class T, class F, class Convert>
ZIVKS_INLINE void accumulate(T* dst, size_t begin, size_t len, F offset, F slope, Convert convert) {
  F value = std::fma(static_cast<F>(static_cast<int32_t>(begin) - 1), slope, offset);
  for (size_t i = begin; i < len; ++i) {
    value += slope;
    dst[i - begin] = convert(value);
  }
}

// Rounding of float64 in the tail differs from that in blocks. That of float32 does not.
template <class Arithmetic, class T, class F>
void fill_tail(T* dst, size_t begin, size_t len, F offset, F slope) {
  if constexpr (std::is_same_v<T, F>) {
    accumulate(dst + begin, begin, len, offset, slope, unchanged);
  } else if constexpr (std::is_same_v<F, double>) {
    accumulate(dst + begin, begin, len, offset, slope, round_nearest_in_tail<T>);
  } else if (begin < len) {
    constexpr size_t kMost = kRegisterElements<T>;
    static_assert(kMost >= Arithmetic::kBlock);
    F values[kMost];
    accumulate(values, begin, len, offset, slope, unchanged);
    const auto round = [](auto a) { return round_saturating<T, ZIVK_RND_NEAR>(a); };
    map_short<kMost>(as_operand(dst + begin), len - begin, round, as_operand(values));
  }
}

template <class Arithmetic, class T, class F>
ZIVKStatus fill_ramp(T* dst, int32_t len, F offset, F slope) {
  if (ZIVKStatus status = check_arrays(len, dst)) return status;
  const auto count = static_cast<size_t>(len);
  const size_t blocks = count / Arithmetic::kBlock, tail = blocks * Arithmetic::kBlock;
  if (blocks > 0) fill_blocks<Arithmetic>(dst, blocks, offset, slope);
  fill_tail<Arithmetic>(dst, tail, count, offset, slope);
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
  fill_tail<Arithmetic>(dst, tail, count, offset, slope);
  return ZIVK_STS_NO_ERR;
}
