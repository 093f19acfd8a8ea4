// The largest and the smallest number of a column, null rows left out.
//
// Integers and decimals may be looked at in any order, and a null row stands for a value that never wins. So do the
// floats of a stretch without NaN. What the order of rows decides, NaN and the sign of zeros, is settled apart.
#include <zivks/columnar.h>
#include <zivks/statistics.h>

#include <algorithm>
#include <limits>

#include "columnar/column.h"
#include "core/checks.h"
#include "core/reduce.h"

using namespace zivks;

namespace {

// Which end of the column is asked for. A search begins with start<T>(). A null row stands for least<T>(), which beats
// nothing.
struct Largest {
  template <class T>
  static constexpr T start() {
    return std::numeric_limits<T>::lowest();
  }
  template <class T>
  static constexpr T least() {
    return std::is_floating_point_v<T> ? -std::numeric_limits<T>::infinity() : start<T>();
  }
  static constexpr ZIVKDecimal128 kDecimalStart = {0x098A223FFFFFFFFF, 0xCB3B4CA85A86C47A};  // -(10^38 - 1)

  template <class T>
  static bool beats(T a, T b) {
    return a > b;
  }
  template <class R>
  static R of(R a, R b) {
    return maximum(a, b);
  }
  template <class R>
  static ElementOf<R> reduce(R all) {
    return reduce_maximum(all);
  }
};
struct Smallest {
  template <class T>
  static constexpr T start() {
    return std::numeric_limits<T>::max();
  }
  template <class T>
  static constexpr T least() {
    return std::is_floating_point_v<T> ? std::numeric_limits<T>::infinity() : start<T>();
  }
  static constexpr ZIVKDecimal128 kDecimalStart = {0x098A223FFFFFFFFF, 0x4B3B4CA85A86C47A};  // 10^38 - 1

  template <class T>
  static bool beats(T a, T b) {
    return a < b;
  }
  template <class R>
  static R of(R a, R b) {
    return minimum(a, b);
  }
  template <class R>
  static ElementOf<R> reduce(R all) {
    return reduce_minimum(all);
  }
};

template <class Order>
inline constexpr auto combine = [](auto a, auto b) ZIVKS_INLINE_LAMBDA { return Order::of(a, b); };

// --- Rows in registers -----------------------------------------------------------------

// Rows of a turn, for which one branch asks whether there are nulls.
inline constexpr size_t kTurnRows = 4 * kRegisterElements<int8_t>;

ZIVKS_INLINE bool any_null(const int8_t* nulls) {
  constexpr size_t N = kRegisterElements<int8_t>;
  const I8 flags = (load(nulls) | load(nulls + N)) | (load(nulls + 2 * N) | load(nulls + 3 * N));
  return any_true(I8(flags != 0));
}

// The rows from `src` on, as many as a register has, with values that never win for null ones.
template <class Order, class T>
ZIVKS_INLINE Register<T> load_values(const T* src, const int8_t* nulls) {
  constexpr size_t N = kRegisterElements<T>;
  const Lanes<T, N> rows = {{load(src)}}, least = {{broadcast(Order::template least<T>())}};
  return value_or(Array<const int8_t>{nulls}.template load<N>(0), rows, least).part[0];
}

// The extreme of the rows that are not null, of at least a register. Rows may be met twice. `is_long` says that they
// are of an array that the caches do not hold.
template <class Order, size_t distance, class T>
ZIVKS_INLINE T extreme_of_values(const T* src, size_t len, const int8_t* nulls, bool is_long) {
  constexpr size_t N = kRegisterElements<T>;
  const Register<T> least = broadcast(Order::template least<T>());
  FourStates<Register<T>> states = {least, least, least, least};
  const auto add = [](Register<T>& state, Register<T> rows)
                       ZIVKS_INLINE_LAMBDA { state = Order::of(state, rows); };
  const auto add_turn = [&](size_t first, auto rows_at) ZIVKS_INLINE_LAMBDA {
    for (size_t k = first; k < first + kTurnRows; k += 4 * N) {
      add(states.first, rows_at(k));
      add(states.second, rows_at(k + N));
      add(states.third, rows_at(k + 2 * N));
      add(states.fourth, rows_at(k + 3 * N));
    }
  };
  const auto values_at = [=](size_t k) ZIVKS_INLINE_LAMBDA { return load_values<Order>(src + k, nulls + k); };
  const auto rows_at = [=](size_t k) ZIVKS_INLINE_LAMBDA { return load(src + k); };
  size_t i = 0;
  for (; i + kTurnRows <= len; i += kTurnRows) {
    prefetch_ahead<distance, kTurnRows * sizeof(T)>(src + i);
    if (is_long) read_ahead<kTurnRows * sizeof(T)>(src + i);
    if (any_null(nulls + i)) {
      add_turn(i, values_at);
    } else {
      add_turn(i, rows_at);
    }
  }
  for (; i + N <= len; i += N) add(states.first, values_at(i));
  if (i < len) add(states.second, values_at(len - N));
  return Order::reduce(states.combined(combine<Order>));
}

// --- Integers --------------------------------------------------------------------------

template <class Order, size_t distance, class T>
[[gnu::flatten]] ZIVKStatus find_integer(const T* src, int32_t len, const int8_t* nulls, T* dst) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  constexpr size_t N = kRegisterElements<T>;
  const auto rows = static_cast<size_t>(len);
  T found = Order::template start<T>();
  if (rows >= N) {
    found = extreme_of_values<Order, distance>(src, rows, nulls, reads_ahead(rows * sizeof(T)));
  } else {
    for (size_t i = 0; i < rows; ++i) {
      if (nulls[i] == 0 && Order::beats(src[i], found)) found = src[i];
    }
  }
  *dst = found;
  leave_registers();
  return ZIVK_STS_NO_ERR;
}

template <class Order, class T>
[[gnu::flatten]] ZIVKStatus find_integer_of_all(const T* src, int32_t len, T* dst) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  constexpr size_t N = kRegisterElements<T>;
  const auto rows = static_cast<size_t>(len);
  *dst = Order::reduce(rows < N ? load_repeatedly<N / 2>(src, rows)
                                : reduce_array<2048>(src, rows, load(src), combine<Order>, combine<Order>));
  leave_registers();
  return ZIVK_STS_NO_ERR;
}

// --- Floats ----------------------------------------------------------------------------

// `found` stays if it beats `x`: not against a NaN, and neither if it is one.
template <class Order>
ZIVKS_INLINE double fold(double found, double x) {
  return Order::beats(found, x) ? found : x;
}

// The extreme of a block, in which a NaN wins and -0 is below +0.
template <class Order>
ZIVKS_INLINE double extreme_of_block(const double* src) {
  constexpr size_t N = kRegisterElements<double>;
  F64 extreme = load(src);
  for (size_t k = N; k < kBlockRows; k += N) extreme = Order::of(extreme, load(src + k));
  const double value = Order::reduce(extreme);
  // Which NaN the processor makes of one differs.
  return value == value ? value : std::numeric_limits<double>::quiet_NaN();
}

// What is found after the rows from `first` up to `last`, a multiple of a block if there are rows behind: rows are
// folded in turn, a block without nulls as one value.
template <class Order>
[[gnu::noinline]] double fold_rows(double found, const double* src, const int8_t* nulls, size_t first,
                                   size_t last) {
  for (size_t i = first; i < last;) {
    if (i + kBlockRows <= last && is_clean(nulls + i)) {
      found = fold<Order>(found, extreme_of_block<Order>(src + i));
      i += kBlockRows;
    } else {
      const size_t end = std::min(i + kBlockRows, last);
      for (; i < end; ++i) {
        if (nulls[i] == 0) found = fold<Order>(found, src[i]);
      }
    }
  }
  return found;
}

// Rows go in stretches, of which the extreme is folded. A stretch with a NaN, or behind one, is folded row by row.
//
// If the result is a zero, the last value that is one decides about its sign. The stretch with it is folded row by
// row then.
template <class Order, size_t distance>
[[gnu::flatten]] ZIVKStatus find_float(const double* src, int32_t len, const int8_t* nulls, double* dst) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  constexpr size_t kStretch = 1024;
  const auto rows = static_cast<size_t>(len);
  const bool is_long = reads_ahead(rows * sizeof(double));
  constexpr double kStart = Order::template start<double>();
  double found = kStart;
  size_t stretch_with_zero = rows;
  const auto settle_zero = [&]() ZIVKS_INLINE_LAMBDA {
    if (found == 0 && stretch_with_zero < rows) {
      const size_t last = std::min(stretch_with_zero + kStretch, rows);
      found = fold_rows<Order>(kStart, src, nulls, stretch_with_zero, last);
    }
    stretch_with_zero = rows;
  };
  for (size_t first = 0; first < rows; first += kStretch) {
    const size_t last = std::min(first + kStretch, rows);
    double extreme = std::numeric_limits<double>::quiet_NaN();
    if (found == found && last - first >= kRegisterElements<double>) {
      extreme = extreme_of_values<Order, distance>(src + first, last - first, nulls + first, is_long);
    }
    if (extreme == extreme) {
      found = fold<Order>(found, extreme);
      if (extreme == 0) stretch_with_zero = first;
    } else {
      settle_zero();
      found = fold_rows<Order>(found, src, nulls, first, last);
    }
  }
  settle_zero();
  *dst = found;
  leave_registers();
  return ZIVK_STS_NO_ERR;
}

// --- Decimals --------------------------------------------------------------------------

// A decimal, or as many as a register has, as two signed integers that are ordered as the decimals are, the upper one
// first. Those of a negative number have all bits but the sign turned. Negative zero comes just below zero; to_decimal()
// makes a zero of both.
template <class Value>
struct OrderedDecimal {
  Value hi, lo;
};

inline constexpr int64_t kSign = INT64_MIN;

// Of the words of a decimal, and back.
template <class Value>
ZIVKS_INLINE OrderedDecimal<Value> turn_negative(Value hi, Value lo, Value is_negative) {
  return {hi ^ (is_negative & INT64_MAX), lo ^ is_negative ^ kSign};
}
ZIVKS_INLINE OrderedDecimal<int64_t> ordered(ZIVKDecimal128 decimal) {
  const auto hi = static_cast<int64_t>(decimal.hi);
  return turn_negative(hi, static_cast<int64_t>(decimal.lo), hi >> 63);
}
ZIVKS_INLINE OrderedDecimal<I64> load_ordered(const ZIVKDecimal128* src) {
  const auto [lo, hi] = load_deinterleaved(&src->lo);
  return turn_negative(I64(hi), I64(lo), I64(I64(hi) < 0));
}
ZIVKS_INLINE ZIVKDecimal128 to_decimal(OrderedDecimal<int64_t> number) {
  const auto words = turn_negative(number.hi, number.lo, number.hi >> 63);
  const bool is_negative_zero = words.hi == kSign && words.lo == 0;
  return {static_cast<uint64_t>(words.lo), is_negative_zero ? 0 : static_cast<uint64_t>(words.hi)};
}

// All ones where `a` wins.
template <class Order, class Value>
ZIVKS_INLINE Value beats(OrderedDecimal<Value> a, OrderedDecimal<Value> b) {
  if constexpr (std::is_same_v<Order, Largest>)
    return Value(a.hi > b.hi) | (Value(a.hi == b.hi) & Value(a.lo > b.lo));
  if constexpr (std::is_same_v<Order, Smallest>)
    return Value(a.hi < b.hi) | (Value(a.hi == b.hi) & Value(a.lo < b.lo));
}

template <class Order>
[[gnu::flatten]] ZIVKStatus find_decimal(const ZIVKDecimal128* src, int32_t len, const int8_t* nulls,
                                         ZIVKDecimal128* dst) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  constexpr size_t N = kRegisterElements<int64_t>;
  const auto rows = static_cast<size_t>(len);
  OrderedDecimal<int64_t> found = ordered(nulls == nullptr ? src[0] : Order::kDecimalStart);
  const auto add = [&](OrderedDecimal<int64_t> row) ZIVKS_INLINE_LAMBDA {
    if (beats<Order>(row, found) != 0) found = row;
  };
  if (rows < N) {
    for (size_t i = 0; i < rows; ++i) {
      if (nulls == nullptr || nulls[i] == 0) add(ordered(src[i]));
    }
  } else {
    OrderedDecimal<I64> even = {broadcast(found.hi), broadcast(found.lo)}, odd = even;
    const auto add_rows = [&](OrderedDecimal<I64>& best, size_t i) ZIVKS_INLINE_LAMBDA {
      const OrderedDecimal<I64> row = load_ordered(src + i);
      I64 wins = beats<Order>(row, best);
      if (nulls != nullptr)
        wins &= has_value<int64_t>(Array<const int8_t>{nulls + i}.template load<N>(0)).part[0];
      best = {select(wins, row.hi, best.hi), select(wins, row.lo, best.lo)};
    };
    const bool is_long = reads_ahead(rows * sizeof *src);
    size_t i = 0;
    for (; i + kBlockRows <= rows; i += kBlockRows) {
      prefetch_ahead<2048, kBlockRows * sizeof *src>(src + i);
      if (is_long) read_ahead<kBlockRows * sizeof *src>(src + i);
      for (size_t k = i; k < i + kBlockRows; k += 2 * N) {
        add_rows(even, k);
        add_rows(odd, k + N);
      }
    }
    for (; i + N <= rows; i += N) add_rows(even, i);
    if (i < rows) add_rows(odd, rows - N);
    for (size_t k = 0; k < N; ++k) {
      add({even.hi[k], even.lo[k]});
      add({odd.hi[k], odd.lo[k]});
    }
  }
  *dst = to_decimal(found);
  leave_registers();
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_AggMax_16s(const int16_t* src, int32_t len, const int8_t* nulls, int16_t* dst) {
  if (nulls == nullptr) return ZIVKS_Max_16s(src, len, dst);
  return find_integer<Largest, 512>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_AggMax_32s(const int32_t* src, int32_t len, const int8_t* nulls, int32_t* dst) {
  if (nulls == nullptr) return ZIVKS_Max_32s(src, len, dst);
  return find_integer<Largest, 1024>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_AggMax_64s(const int64_t* src, int32_t len, const int8_t* nulls, int64_t* dst) {
  if (nulls == nullptr) return find_integer_of_all<Largest>(src, len, dst);
  return find_integer<Largest, 2048>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_AggMax_64f(const double* src, int32_t len, const int8_t* nulls, double* dst) {
  if (nulls == nullptr) return ZIVKS_Max_64f(src, len, dst);
  return find_float<Largest, 2048>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_AggMax_decimal128(const ZIVKDecimal128* src, int32_t len, const int8_t* nulls,
                                   ZIVKDecimal128* dst) {
  return find_decimal<Largest>(src, len, nulls, dst);
}

ZIVKStatus ZIVKS_AggMin_16s(const int16_t* src, int32_t len, const int8_t* nulls, int16_t* dst) {
  if (nulls == nullptr) return ZIVKS_Min_16s(src, len, dst);
  return find_integer<Smallest, 512>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_AggMin_32s(const int32_t* src, int32_t len, const int8_t* nulls, int32_t* dst) {
  if (nulls == nullptr) return ZIVKS_Min_32s(src, len, dst);
  return find_integer<Smallest, 1024>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_AggMin_64s(const int64_t* src, int32_t len, const int8_t* nulls, int64_t* dst) {
  if (nulls == nullptr) return find_integer_of_all<Smallest>(src, len, dst);
  return find_integer<Smallest, 2048>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_AggMin_64f(const double* src, int32_t len, const int8_t* nulls, double* dst) {
  if (nulls == nullptr) return ZIVKS_Min_64f(src, len, dst);
  return find_float<Smallest, 2048>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_AggMin_decimal128(const ZIVKDecimal128* src, int32_t len, const int8_t* nulls,
                                   ZIVKDecimal128* dst) {
  return find_decimal<Smallest>(src, len, nulls, dst);
}
