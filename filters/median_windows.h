// Medians of all the windows of an array, a register of windows at a time: dst[k], for k below `count`, is the median of
// samples[k] ... samples[k + mask - 1].
//
// Neighbouring windows have most of their samples in common, and so do their networks. For windows longer than seven
// samples the common part is computed once: a table holds runs, which are sorted stretches of the array. Column k of
// its rows is the run of the samples from number k on. Two runs that follow each other merge into one, for all columns
// at a time. The median of a window is found without merging the last two runs, each about half of the window.
#ifndef ZIVKS_FILTERS_MEDIAN_WINDOWS_H
#define ZIVKS_FILTERS_MEDIAN_WINDOWS_H

#include <algorithm>
#include <cstring>
#include <utility>

#include "core/loops.h"
#include "filters/median_networks.h"

namespace zivks {

// The stack that a table takes. With half of it masks up to 33 would take up to a tenth longer, of float64 a third, and
// longer masks another, slower method.
inline constexpr size_t kTableBytes = 16 << 10;

template <class T>
constexpr size_t whole_registers_up(size_t elements) {
  return (elements + kRegisterElements<T> - 1) / kRegisterElements<T> * kRegisterElements<T>;
}

// Rows of a table: all of them, or every so many.
template <class T>
struct Rows {
  T* first;
  size_t pitch;

  ZIVKS_INLINE T* operator[](size_t i) const { return first + i * pitch; }
  Rows even() const { return {first, 2 * pitch}; }
  Rows odd() const { return {first + pitch, 2 * pitch}; }

  template <size_t... I>
  ZIVKS_INLINE Column<Register<std::remove_const_t<T>>, sizeof...(I)> load_over(std::index_sequence<I...>,
                                                                                size_t k) const {
    return {{load((*this)[I] + k)...}};
  }
  template <size_t n>
  ZIVKS_INLINE auto load_column(size_t k) const {
    return load_over(std::make_index_sequence<n>(), k);
  }
  template <size_t... I>
  ZIVKS_INLINE void store_over(std::index_sequence<I...>, size_t k,
                               const Column<Register<T>, sizeof...(I)>& column) const {
    (store((*this)[I] + k, column.at[I]), ...);
  }
  template <size_t n>
  ZIVKS_INLINE void store_column(size_t k, const Column<Register<T>, n>& column) const {
    store_over(std::make_index_sequence<n>(), k, column);
  }
};

// Copies fewer than 2 * most elements.
template <size_t most, class T>
ZIVKS_INLINE void copy_few(T* to, const T* from, size_t count) {
  const size_t here = count & most;
  if (here > 0) std::memcpy(to, from, most * sizeof(T));
  if constexpr (most > 1) copy_few<most / 2>(to + here, from + here, count);
}

// dst[k] = find(k) for k below `count`, of which find(k) gives a register of neighbours. It may be called for up to a
// register beyond. The last register ends where the array ends and may share elements with the one before.
template <class T, class Find>
ZIVKS_INLINE void store_found(T* dst, size_t count, Find find) {
  constexpr size_t N = kRegisterElements<T>;
  if (count < N) {
    T found[N];
    store(found, find(0));
    copy_few<N / 2>(dst, found, count);
  } else {
#pragma GCC unroll 2
    for (size_t k = 0; k < count - N; k += N) store(dst + k, find(k));
    store(dst + count - N, find(count - N));
  }
}

// --- Runs ------------------------------------------------------------------------------

// Runs of `run` samples, in the first rows.
template <class Order, size_t run, class T>
void sort_runs(const T* samples, size_t columns, Rows<T> rows) {
  const Rows<const T> shifted = {samples, 1};
#pragma GCC unroll 2
  for (size_t k = 0; k < columns; k += kRegisterElements<T>) {
    rows.store_column(k, sorted<Order>(shifted.template load_column<run>(k)));
  }
}

// Runs twice as long of runs in the same rows. Nothing is stored over what later columns need.
template <size_t run, class T>
void merge_few_rows(Rows<T> rows, size_t distance, size_t columns) {
  for (size_t k = 0; k < columns; k += kRegisterElements<T>) {
    rows.store_column(k, merge<PlainValues>(rows.template load_column<run>(k),
                                            rows.template load_column<run>(k + distance)));
  }
}

// The last step of an odd-even merge of two runs. If their length is odd, there is one more row of even than of odd number,
// so that the last of 2 * run rows lies in the place behind its own: with runs of 9 it is number 18, and moves to 17.
template <class T>
void interleave_rows(Rows<T> rows, size_t run, size_t columns) {
  for (size_t i = 1; i < 2 * run - 2; i += 2) {
    for (size_t k = 0; k < columns; k += kRegisterElements<T>) {
      const Register<T> a = load(rows[i] + k), b = load(rows[i + 1] + k);
      store(rows[i] + k, PlainValues::lower(a, b));
      store(rows[i + 1] + k, PlainValues::upper(a, b));
    }
  }
  if (run % 2 == 1) std::memcpy(rows[2 * run - 1], rows[2 * run], columns * sizeof(T));
}

// Rows that merges use beyond those of their result, until the last row is where it belongs: at most as many for runs of up
// to 32, as with runs of 17, whose halves of 9 have rows of their own in every second row.
inline constexpr size_t kSpareRows = 3;

template <class T>
void merge_rows(Rows<T> rows, size_t run, size_t distance, size_t columns) {
  switch (run) {
    case 4: return merge_few_rows<4>(rows, distance, columns);
    case 5: return merge_few_rows<5>(rows, distance, columns);
    case 6: return merge_few_rows<6>(rows, distance, columns);
    case 7: return merge_few_rows<7>(rows, distance, columns);
    case 8: return merge_few_rows<8>(rows, distance, columns);
    default:
      merge_rows(rows.even(), (run + 1) / 2, distance, columns);
      merge_rows(rows.odd(), run / 2, distance, columns);
      return interleave_rows(rows, run, columns);
  }
}

// Runs longer by the sample that follows.
template <class T>
void lengthen_runs(Rows<T> rows, size_t run, const T* samples, size_t columns) {
  for (size_t k = 0; k < columns; k += kRegisterElements<T>) {
    const Register<T> sample = load(samples + run + k);
    Register<T> a = load(rows[run - 1] + k);
    store(rows[run] + k, PlainValues::upper(a, sample));
    for (size_t i = run - 1; i > 0; --i) {
      const Register<T> below = load(rows[i - 1] + k);
      store(rows[i] + k, PlainValues::upper(below, PlainValues::lower(a, sample)));
      a = below;
    }
    store(rows[0] + k, PlainValues::lower(a, sample));
  }
}

// How the medians of a mask come from a table.
//
// A window of 2 * run + 1 samples is two runs and a sample. One of 2 * run - 1 samples is two runs that share one, the
// middle sample of the window. The run is even. Its binary digits say how it is made: the first three are the length of
// a first run, and each one behind them doubles the length and adds a sample if it is 1.
template <class T>
struct Halves {
  size_t run, first_run, mask;

  explicit Halves(size_t mask_length) : run((mask_length + 1) / 4 * 2), first_run(run), mask(mask_length) {
    while (first_run > 7) first_run /= 2;
  }
  bool overlap() const { return mask < 2 * run; }
  size_t distance() const { return mask / 2; }

  // Columns of first runs that `count` medians take.
  size_t columns(size_t count) const {
    size_t columns = whole_registers_up<T>(whole_registers_up<T>(count) + distance());
    for (size_t part = run / 2; part >= first_run; part /= 2) columns = whole_registers_up<T>(columns + part);
    return columns;
  }
  // Samples that they take, some of them for nothing.
  size_t samples(size_t count) const { return columns(count) + 2 * first_run; }

  size_t rows() const { return run + (run > 16 ? kSpareRows : 0) + 1; }
  size_t pitch() const {
    constexpr size_t N = kRegisterElements<T>;
    return kTableBytes / sizeof(T) / rows() / N * N;
  }
  // Medians that a table is large enough for.
  size_t most() const {
    const size_t least = samples(0);
    return pitch() < least ? 0 : (pitch() - least) / kRegisterElements<T> * kRegisterElements<T>;
  }
};

template <class T>
void make_runs(const Halves<T>& halves, const T* samples, size_t columns, Rows<T> rows) {
  switch (halves.first_run) {
    case 4: sort_runs<PlainValues, 4>(samples, columns, rows); break;
    case 5: sort_runs<PlainValues, 5>(samples, columns, rows); break;
    case 6: sort_runs<PlainValues, 6>(samples, columns, rows); break;
    default: sort_runs<PlainValues, 7>(samples, columns, rows); break;
  }
  size_t digit = 1, run = halves.first_run;
  while (run * 2 * digit <= halves.run) digit *= 2;
  for (digit /= 2; digit > 0; digit /= 2) {
    columns = (columns - run) / kRegisterElements<T> * kRegisterElements<T>;
    merge_rows(rows, run, run, columns);
    run *= 2;
    if (halves.run / digit % 2 == 1) lengthen_runs(rows, run++, samples, columns);
  }
}

// The two in the middle of two runs, in either order. They are what the last step of an odd-even merge would sort, and
// each is found by itself: one among the even rows and one among the odd ones.
template <class T>
ZIVKS_INLINE Column<Register<T>, 2> middle_of_two_runs(Rows<T> rows, size_t run, size_t k, size_t distance) {
  const T *a = rows[0] + k, *b = rows[run - 2] + k + distance;
  const size_t pitch = rows.pitch;
  Register<T> even = PlainValues::upper(load(a), load(b)),
              odd = PlainValues::lower(load(a + pitch), load(b + pitch));
  for (size_t i = 2; i < run; i += 2) {
    a += 2 * pitch;
    b -= 2 * pitch;
    even = PlainValues::lower(even, PlainValues::upper(load(a), load(b)));
    odd = PlainValues::upper(odd, PlainValues::lower(load(a + pitch), load(b + pitch)));
  }
  return {{even, odd}};
}

template <class T>
void select_medians(const Halves<T>& halves, const T* samples, size_t count, Rows<T> rows, T* dst) {
  const size_t run = halves.run, distance = halves.distance();
  if (halves.overlap()) {
    // The shared sample is in the middle twice. Without one of the two the other neighbour is the median.
    store_found(dst, count, [=](size_t k) ZIVKS_INLINE_LAMBDA {
      const auto middle = middle_of_two_runs(rows, run, k, distance);
      const Register<T> low = PlainValues::lower(middle.at[0], middle.at[1]);
      const Register<T> high = PlainValues::upper(middle.at[0], middle.at[1]);
      return select(load(samples + k + distance) > low, low, high);
    });
  } else {
    store_found(dst, count, [=](size_t k) ZIVKS_INLINE_LAMBDA {
      const auto middle = middle_of_two_runs(rows, run, k, distance);
      return median_of_3<PlainValues>(middle.at[0], middle.at[1], load(samples + k + 2 * run));
    });
  }
}

// The samples from number `first` on, at least `count`: where they are or, if there are fewer, in a copy in which the
// last one is repeated.
template <class T>
const T* samples_or_copy(const T* samples, size_t len, size_t first, size_t count, T* copy) {
  if (first + count <= len) return samples + first;
  std::memcpy(copy, samples + first, (len - first) * sizeof(T));
  std::fill(copy + (len - first), copy + count, samples[len - 1]);
  return copy;
}

template <class T>
[[gnu::noinline]] void find_medians_of_halves(const T* samples, size_t count, size_t mask, T* dst) {
  const Halves<T> halves(mask);
  alignas(kRegisterBytes) T table[kTableBytes / sizeof(T)];
  const Rows<T> rows = {table, halves.pitch()};
  const size_t most = halves.most();
  for (size_t k = 0; k < count; k += most) {
    const size_t here = std::min(most, count - k);
    const T* const from =
        samples_or_copy(samples, count + mask - 1, k, halves.samples(here), rows[halves.rows() - 1]);
    make_runs(halves, from, halves.columns(here), rows);
    select_medians(halves, from, here, rows, dst + k);
  }
}

// Whether it is worth while: a table would hold too little for longer masks.
template <class T>
bool has_halves(size_t mask) {
  const Halves<T> halves(mask);
  return halves.run <= 64 && halves.most() >= halves.run;
}

// --- Short masks -----------------------------------------------------------------------

template <class Order, class T>
void find_medians_of_3(const T* samples, size_t count, T* dst) {
  const auto median = [](auto... a) ZIVKS_INLINE_LAMBDA { return median_of_3<Order>(a...); };
  map_registers<T>(dst, count, median, samples, samples + 1, samples + 2);
}
template <class Order, class T>
void find_medians_of_5(const T* samples, size_t count, T* dst) {
  const auto median = [](auto... a) ZIVKS_INLINE_LAMBDA { return median_of_5<Order>(a...); };
  map_registers<T>(dst, count, median, samples, samples + 1, samples + 2, samples + 3, samples + 4);
}
template <class Order, class T>
void find_medians_of_7(const T* samples, size_t count, T* dst) {
  const auto median = [](auto... a) ZIVKS_INLINE_LAMBDA { return median_of_7<Order>(a...); };
  map_registers<T>(dst, count, median, samples, samples + 1, samples + 2, samples + 3, samples + 4,
                   samples + 5, samples + 6);
}

// Windows of nine samples are three sorted runs.
template <class Order, class T>
[[gnu::noinline]] void find_medians_of_9(const T* samples, size_t count, T* dst) {
  constexpr size_t N = kRegisterElements<T>, kPitch = kTableBytes / 4 / kRegisterBytes * N - N, kRun = 3;
  constexpr size_t kMost = kPitch - whole_registers_up<T>(2 * kRun);
  alignas(kRegisterBytes) T table[4 * kPitch + kRun];
  const Rows<T> rows = {table, kPitch};
  for (size_t first = 0; first < count; first += kMost) {
    const size_t here = std::min(kMost, count - first), columns = whole_registers_up<T>(here + 2 * kRun);
    const T* const from = samples_or_copy(samples, count + 8, first, columns + kRun, rows[kRun]);
    sort_runs<Order, kRun>(from, columns, rows);
    store_found(dst + first, here, [=](size_t k) ZIVKS_INLINE_LAMBDA {
      const auto a = rows.template load_column<kRun>(k), b = rows.template load_column<kRun>(k + kRun),
                 c = rows.template load_column<kRun>(k + 2 * kRun);
      return median_of_3<Order>(Order::upper(Order::upper(a.at[0], b.at[0]), c.at[0]),
                                median_of_3<Order>(a.at[1], b.at[1], c.at[1]),
                                Order::lower(Order::lower(a.at[2], b.at[2]), c.at[2]));
    });
  }
}

}  // namespace zivks

#endif
