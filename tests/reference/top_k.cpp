// Selection of the largest keys.
#include <algorithm>

#include "generic/services.h"
#include "reference/entries.h"

namespace zivks_test {
namespace {

constexpr int32_t kQuick = 1, kRadix = 2;

int32_t method_of(const Function& function, const Operands& operands) {
  const int32_t method = value_of("method", function, operands), len = operands.length;
  if (method != 0) return method;
  return std::min(len, value_of("k", function, operands)) > 32 && len >= 2049 && len <= 0x7FFFFFF ? kRadix
                                                                                                  : kQuick;
}

// Keys that begin within the first 4 `len` bytes.
template <class T>
Entries<T> gather(const Function& function, const Operands& operands) {
  const int64_t stride = value_of("srcStride", function, operands), span = int64_t{operands.length} * 4;
  Entries<T> entries;
  for (int32_t i = 0; i < operands.length && i * stride < span; ++i) {
    T key;
    std::memcpy(&key, &operands.arrays[0][static_cast<size_t>(i * stride)], sizeof key);
    entries.push_back({key, i});
  }
  return entries;
}

// Moves keys that are not finite to the end, in ways that disturb the order of others, and leaves them out but
// for the first infinity of each sign.
void leave_out(Entries<int32_t>&) {}
void leave_out(Entries<float>& entries) {
  size_t out = 0;
  for (Entry<float>& entry : entries) {
    if (!std::isfinite(entry.key)) std::swap(entry, entries[out++]);
  }
  const size_t first = entries.size() - out;
  for (size_t i = out; i-- > 0;) std::swap(entries[i], entries[first + i]);
  size_t kept = first;
  for (size_t i = first; i < entries.size(); ++i) {
    const float key = entries[i].key;
    if (!std::isinf(key) || (kept > first && entries[first].key == key) || kept == first + 2) continue;
    std::swap(entries[i], entries[kept++]);
  }
  entries.resize(kept);
}

// In falling order up to place `last`, or a bit less: greater ones stay as they are ahead of equal ones that
// hold that place.
template <class T>
void select_at_random(Entries<T>& entries, size_t low, size_t high, size_t last) {
  while (low < high) {
    const auto [equal, end] = partition_at_random(entries, low, high, [](T a, T b) { return a > b; });
    if (equal >= last) {
      high = equal;
    } else if (last < end) {
      return;
    } else {
      select_at_random(entries, low, equal, last);
      low = end;
    }
  }
}

template <class T>
std::vector<Bytes> top_k(const Function& function, const Operands& operands) {
  const int32_t method = method_of(function, operands), offset = value_of("offset", function, operands);
  Entries<T> entries = gather<T>(function, operands);
  const size_t gathered = entries.size(), k = static_cast<size_t>(value_of("k", function, operands));
  leave_out(entries);
  if (method == kQuick) {
    std::srand(static_cast<unsigned>(kClock));
    if (!entries.empty()) select_at_random(entries, 0, entries.size() - 1, std::min(k, gathered) - 1);
  } else {
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto& a, const auto& b) { return rank_of(a.key) > rank_of(b.key); });
  }
  // Keys that are not there count as zeros.
  if (gathered < static_cast<size_t>(operands.length)) {
    const auto is_behind_zeros = [method](const Entry<T>& entry) {
      return method == kRadix ? rank_of(entry.key) < 0 : entry.key < 0;
    };
    Entries<T> zeros;
    for (auto i = static_cast<int32_t>(gathered); i < operands.length; ++i) zeros.push_back({T{0}, i});
    entries.insert(std::find_if(entries.begin(), entries.end(), is_behind_zeros), zeros.begin(), zeros.end());
  }
  Outputs outputs(function, operands);
  for (size_t i = 0; i < std::min(k, entries.size()); ++i) {
    outputs.set(0, i, entries[i].key);
    outputs.set(1, i, entries[i].position + offset);
  }
  return outputs.take();
}

template <class T>
Reference top_k_handle(T preset, int32_t counters) {
  return [=](const Function& function, const Operands& operands) {
    const int32_t bytes =
        method_of(function, operands) == kQuick ? operands.length * 8 : operands.length * 16 + counters * 4;
    Outputs outputs(function, operands);
    for (size_t i = 0; i < static_cast<size_t>(value_of("k", function, operands)); ++i) {
      outputs.set(0, i, preset);
      outputs.set(1, i, int32_t{-1});
    }
    outputs.set(2, 0, reinterpret_cast<uint64_t>(memory_of((bytes + 15) / 16 * 16)));
    return outputs.take();
  };
}

}  // namespace

References top_k_references() {
  return {{"ZIVKS_TopK_32s", top_k<int32_t>},
          {"ZIVKS_TopK_32f", top_k<float>},
          {"ZIVKS_TopKInit_32s", top_k_handle(std::numeric_limits<int32_t>::min(), 256)},
          {"ZIVKS_TopKInit_32f", top_k_handle(-std::numeric_limits<float>::max(), 512)}};
}

}  // namespace zivks_test
