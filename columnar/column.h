// Columns: null vectors, which have one byte for each row, not zero where the row is null; and offsets of texts.
#ifndef ZIVKS_COLUMNAR_COLUMN_H
#define ZIVKS_COLUMNAR_COLUMN_H

#include "core/operands.h"

namespace zivks {

// Rows of a block. In some aggregates blocks and single rows differ.
inline constexpr size_t kBlockRows = 8;

// --- Null vectors ----------------------------------------------------------------------

// Whether none of the rows of a block is null.
ZIVKS_INLINE bool is_clean(const int8_t* nulls) { return read<uint64_t>(nulls) == 0; }

// The flags of the rows from number k on. A null pointer, which means that no row is null, stays one.
ZIVKS_INLINE const int8_t* flags_from(const int8_t* nulls, size_t k) {
  return nulls == nullptr ? nullptr : nulls + k;
}
// The flags of a block, a null pointer if none is set.
ZIVKS_INLINE const int8_t* flags_unless_clean(const int8_t* nulls) {
  return nulls == nullptr || is_clean(nulls) ? nullptr : nulls;
}

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

// Stores the value of a row, or of as many rows as a register has lanes; what stands in `dst` for a null row stays.
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

// --- Offsets ---------------------------------------------------------------------------

// The length of a text that begins at offsets[0]; less than 0 where offsets fall.
ZIVKS_INLINE int32_t text_length(const int32_t* offsets) {
  return static_cast<int32_t>(static_cast<uint32_t>(offsets[1]) - static_cast<uint32_t>(offsets[0]));
}
// The lengths of as many texts as a register has lanes.
ZIVKS_INLINE I32 text_lengths(const int32_t* offsets) {
  return I32(U32(load(offsets + 1)) - U32(load(offsets)));
}

}  // namespace zivks

#endif
