// Finding the greatest keys of an array in one walk that reads it in registers and keeps candidates only.
#ifndef ZIVKS_SORT_TOPK_SCAN_H
#define ZIVKS_SORT_TOPK_SCAN_H

#include "core/prefetch.h"
#include "sort/topk_entries.h"

namespace zivks {

// Keys that are compared before any is looked at more closely.
inline constexpr size_t kScanTurn = 32;

// How many candidates are collected before they are narrowed down. A key costs the more the more often that
// happens, and narrowing leaves a little more than what is wanted: with four times as many, keys in rising
// order, all of which become candidates, cost less than to sort them in by their bytes.
ZIVKS_INLINE size_t scan_candidates(size_t wanted) { return std::max(4 * wanted, size_t{1024}); }
ZIVKS_INLINE size_t scan_surplus(size_t wanted) { return wanted + wanted / 4 + 16; }

// The entries that a scan may write. It is worth while from twice as many keys on.
ZIVKS_INLINE size_t scan_entries(size_t wanted) { return scan_candidates(wanted) + 2 * kScanTurn; }

template <class T>
class ThresholdScan {
 public:
  ThresholdScan(const T* keys, size_t len, size_t wanted, Entry* entries)
      : keys_(keys), len_(len), wanted_(wanted), found_{entries, 0} {}

  // Leaves entries among which are the `wanted` greatest. Returns false if it has met a key that isn't finite;
  // such keys may also stand at the front of the result. There must be at least scan_entries() keys.
  bool run() {
    // The first candidates are whatever comes first, up to where the scan is aligned.
    const size_t first = scan_candidates(wanted_);
    size_t i = first + bytes_unaligned(keys_ + first) / sizeof(T);
    for (size_t k = 0; k < i; ++k) found_.entries[k] = make_entry(rank_at(k), k);
    found_.count = i;
    if (!narrow()) return false;

    least_ = limit_;
    const bool ahead = reads_ahead(len_ * sizeof(T));
    for (; i + kScanTurn <= len_; i += kScanTurn) {
      if (ahead) read_ahead<kScanTurn * sizeof(T)>(keys_ + i);
      if (any_greater(i, kRegisters)) {
        append(i, kScanTurn);
        if (found_.count >= first && !narrow()) return false;
      }
    }
    any_greater(len_ - kScanTurn, kRegisters);
    append(i, len_ - i);
    return Rank<T>::is_finite(static_cast<uint32_t>(reduce_minimum(least_)) ^ kSignBit);
  }

  Candidates found() const { return found_; }

 private:
  static constexpr auto kRegisters = std::make_index_sequence<kScanTurn / kRegisterElements<T>>();

  ZIVKS_INLINE uint32_t rank_at(size_t i) const { return Rank<T>::of(read<uint32_t>(keys_ + i)); }

  // Whether a key of the turn is greater than the limit. The least one is kept in mind: it tells of negative
  // keys that are not finite, whereas positive ones become candidates.
  template <size_t... K>
  ZIVKS_INLINE bool any_greater(size_t i, std::index_sequence<K...>) {
    const I32 ranks[] = {Rank<T>::signed_ranks(I32(load(keys_ + i + K * kRegisterElements<T>)))...};
    if constexpr (Rank<T>::kHasNonFinite) ((least_ = minimum(least_, ranks[K])), ...);
    return any_true((I32(ranks[K] > limit_) | ...));
  }

  // Without a branch, since which keys are greater cannot be foreseen.
  void append(size_t i, size_t count) {
    const int32_t limit = limit_[0];
    size_t kept = found_.count;
    for (size_t end = i + count; i < end; ++i) {
      const uint32_t rank = rank_at(i);
      found_.entries[kept] = make_entry(rank, i);
      kept += static_cast<int32_t>(rank ^ kSignBit) > limit;
    }
    found_.count = kept;
  }

  bool narrow() {
    const KeyRange range = KeyRange::of(found_.entries, found_.count);
    if (!Rank<T>::is_finite(range.least) || !Rank<T>::is_finite(range.greatest)) return false;
    limit_ = broadcast(static_cast<int32_t>(found_.narrow(range, wanted_, scan_surplus(wanted_)) ^ kSignBit));
    return true;
  }

  const T* keys_;
  size_t len_, wanted_;
  Candidates found_;
  I32 limit_ = {}, least_ = {};  // of the keys as signed ranks
};

}  // namespace zivks

#endif
