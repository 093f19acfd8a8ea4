// The least and the greatest of many values: the state of a walk that looks for either or for both. What a
// walk does not ask for in the end costs nothing, since the compiler drops it.
#ifndef ZIVKS_STATISTICS_RANGE_H
#define ZIVKS_STATISTICS_RANGE_H

#include <limits>

#include "core/vector/register.h"

namespace zivks {

// Which NaN arithmetic passes on depends on the processor; this is the same on all.
template <class T>
ZIVKS_INLINE T with_canonical_nan(T value) {
  return value == value ? value : std::numeric_limits<T>::quiet_NaN();
}

// minima() and maxima() are those of each lane: some NaN, both of them, with a NaN among the lane's values.
// minimum() and maximum() are those of all lanes: the canonical quiet NaN with a NaN among all values.
template <class T, class = void>
struct Range {
  Register<T> least, greatest;

  ZIVKS_INLINE static Range of(Register<T> x) { return {x, x}; }
  ZIVKS_INLINE Range with(Register<T> x) const {
    return {zivks::minimum(least, x), zivks::maximum(greatest, x)};
  }
  ZIVKS_INLINE Range with(Range other) const {
    return {zivks::minimum(least, other.least), zivks::maximum(greatest, other.greatest)};
  }
  ZIVKS_INLINE Register<T> minima() const { return least; }
  ZIVKS_INLINE Register<T> maxima() const { return greatest; }
  ZIVKS_INLINE T minimum() const { return with_canonical_nan<T>(reduce_minimum(least)); }
  ZIVKS_INLINE T maximum() const { return with_canonical_nan<T>(reduce_maximum(greatest)); }
};

// Where exact extremes of floats take several instructions, there are cheaper forms.
//
// The bits of float32 values, taken as integers, need one instruction for an extreme. Signed, the greatest
// are those of the greatest value unless all values are negative, and then the least unsigned ones are. The
// greatest unsigned bits are those of the least value if any value is negative, and else the least unsigned
// ones are. NaNs lie beyond the infinities: positive ones above all signed bits, negative ones above all
// unsigned bits.
template <class T>
struct Range<T, std::enable_if_t<kExactFloatExtremesAreCostly && std::is_same_v<T, float>>> {
  U32 least, greatest;
  I32 greatest_signed;

  ZIVKS_INLINE static Range of(F32 x) { return {U32(x), U32(x), I32(x)}; }
  ZIVKS_INLINE Range with(F32 x) const { return with(of(x)); }
  ZIVKS_INLINE Range with(Range other) const {
    return {zivks::minimum(least, other.least), zivks::maximum(greatest, other.greatest),
            zivks::maximum(greatest_signed, other.greatest_signed)};
  }
  ZIVKS_INLINE F32 minima() const { return nan_or(select(I32(greatest) < 0, greatest, least)); }
  ZIVKS_INLINE F32 maxima() const { return nan_or(select(greatest_signed < 0, least, U32(greatest_signed))); }
  ZIVKS_INLINE float minimum() const {
    const uint32_t most = reduce_maximum(greatest);
    return has_nan(most) ? std::numeric_limits<float>::quiet_NaN()
                         : value_of(most >= kSign ? most : reduce_minimum(least));
  }
  ZIVKS_INLINE float maximum() const {
    const int32_t most = reduce_maximum(greatest_signed);
    if (has_nan(reduce_maximum(greatest))) return std::numeric_limits<float>::quiet_NaN();
    return value_of(most >= 0 ? static_cast<uint32_t>(most) : reduce_minimum(least));
  }

 private:
  static constexpr uint32_t kSign = 0x80000000, kInfinity = 0x7F800000;

  ZIVKS_INLINE F32 nan_or(U32 value) const {
    const F32 unsigned_end = F32(greatest), signed_end = F32(greatest_signed);
    return F32(value | U32(unsigned_end != unsigned_end) | U32(signed_end != signed_end));
  }
  ZIVKS_INLINE bool has_nan(uint32_t most) const {
    return most > (kSign | kInfinity) || reduce_maximum(greatest_signed) > static_cast<int32_t>(kInfinity);
  }
  ZIVKS_INLINE static float value_of(uint32_t bits) { return read<float>(&bits); }
};

// float64 values change sign for the maximum, once on their way in and once on the way out.
template <class T>
struct Range<T, std::enable_if_t<kExactFloatExtremesAreCostly && std::is_same_v<T, double>>> {
  F64 least, greatest_negated;

  ZIVKS_INLINE static Range of(F64 x) { return {x, -x}; }
  ZIVKS_INLINE Range with(F64 x) const { return with(of(x)); }
  ZIVKS_INLINE Range with(Range other) const {
    return {zivks::minimum(least, other.least), zivks::minimum(greatest_negated, other.greatest_negated)};
  }
  ZIVKS_INLINE F64 minima() const { return least; }
  ZIVKS_INLINE F64 maxima() const { return -greatest_negated; }
  ZIVKS_INLINE double minimum() const { return with_canonical_nan<double>(reduce_minimum(least)); }
  ZIVKS_INLINE double maximum() const {
    return with_canonical_nan<double>(-reduce_minimum(greatest_negated));
  }
};

}  // namespace zivks

#endif
