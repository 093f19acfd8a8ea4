// Null vectors: one byte for each row, not zero where the row is null.
#ifndef ZIVKS_COLUMNAR_NULLS_H
#define ZIVKS_COLUMNAR_NULLS_H

#include "core/operands.h"

namespace zivks {

// Rows whose flags are looked at together. Results of some aggregates depend on it.
inline constexpr size_t kBlockRows = 8;

// Whether none of the rows of a block is null.
ZIVKS_INLINE bool is_clean(const int8_t* nulls) { return read<uint64_t>(nulls) == 0; }

// All ones in the lanes of rows that are not null.
template <class T, size_t N>
ZIVKS_INLINE Lanes<SignedOf<T>, N> has_value(Lanes<int8_t, N> nulls) {
  const auto valid = lift<int8_t>([](I8 flags) { return I8(flags == 0); }, nulls);
  if constexpr (sizeof(T) == 1) return valid;
  if constexpr (sizeof(T) > 1) return widen<SignedOf<T>>(valid);
}

// `value` in the lanes of rows that are not null, else `other`.
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> value_or(Lanes<int8_t, N> nulls, Lanes<T, N> value, Lanes<T, N> other) {
  return lift<T>([](auto valid, auto a, auto b) { return select(valid, a, b); }, has_value<T>(nulls), value,
                 other);
}
ZIVKS_INLINE uint64_t value_or(int8_t null, uint64_t value, uint64_t other) {
  value = kept_in_integer_unit(value);  // without which the compiler would branch around what makes it
  return null == 0 ? value : other;
}

// Stores the value of a row, or of as many as a register has, unless it is null. No row is if `nulls` is null.
ZIVKS_INLINE void store_value(uint64_t value, const int8_t* nulls, uint64_t* dst) {
  *dst = nulls == nullptr ? value : value_or(*nulls, value, *dst);
}
ZIVKS_INLINE void store_values(U64 values, const int8_t* nulls, uint64_t* dst) {
  if (nulls != nullptr) {
    constexpr size_t N = kRegisterElements<uint64_t>;
    const Lanes<uint64_t, N> lanes = {{values}}, old = {{load(dst)}};
    values = value_or(Array<const int8_t>{nulls}.template load<N>(0), lanes, old).part[0];
  }
  store(dst, values);
}

}  // namespace zivks

#endif
