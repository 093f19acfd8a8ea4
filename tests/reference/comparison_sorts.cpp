// Sorts by comparison, sorts with positions, and selection of the largest keys.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "generic/services.h"
#include "reference/reference.h"

namespace zivks_test {
namespace {

size_t argument_called(const char* name, const Function& function) {
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    if (function.arguments[i].name == name) return i;
  }
  throw std::logic_error(function.name + " has no argument " + name);
}

template <class T>
void write(Bytes& array, size_t index, T value) {
  if ((index + 1) * sizeof value > array.size()) throw std::out_of_range("behind the end of an array");
  std::memcpy(&array[index * sizeof value], &value, sizeof value);
}

template <class T>
std::vector<T> elements(const Bytes& array) {
  std::vector<T> all(array.size() / sizeof(T));
  std::memcpy(all.data(), array.data(), all.size() * sizeof(T));
  return all;
}

template <class T>
Reference sorted(bool ascending) {
  return [ascending](const Function& function, const Operands& operands) {
    std::vector<T> keys = elements<T>(operands.arrays[0]);
    if (std::none_of(keys.begin(), keys.end(), [](T key) { return key != key; })) {
      std::sort(keys.begin(), keys.end(), [=](T a, T b) { return ascending ? a < b : a > b; });
    }
    std::vector<Bytes> results(function.arguments.size());
    results[0] = operands.arrays[0];
    for (size_t i = 0; i < keys.size(); ++i) write(results[0], i, keys[i]);
    return results;
  };
}

template <class T>
struct Entry {
  T key;
  int32_t position;
};

// What a partition has made of the entries from `low` to `high`: places of the first and behind the last that
// equal the pivot.
struct EqualRun {
  int64_t begin, end;
};

template <class T>
EqualRun partition(std::vector<Entry<T>>& entries, int64_t low, int64_t high, bool ascending) {
  const auto exchange = [&](int64_t i, int64_t j) {
    std::swap(entries[static_cast<size_t>(i)], entries[static_cast<size_t>(j)]);
  };
  exchange(low, low + std::rand() % (high - low));
  const T pivot = entries[static_cast<size_t>(low)].key;
  int64_t last_before = low, next = low + 1, behind = high + 1;
  while (next < behind) {
    const T key = entries[static_cast<size_t>(next)].key;
    const bool less = key<pivot, greater = key> pivot;
    if (ascending ? less : greater) {
      exchange(++last_before, next++);
    } else if (less || greater) {
      exchange(next, --behind);
    } else {
      ++next;
    }
  }
  exchange(low, last_before);
  return {last_before, behind};
}

template <class T>
void quicksort(std::vector<Entry<T>>& entries, int64_t low, int64_t high, bool ascending) {
  if (high <= low) return;
  const EqualRun equal = partition(entries, low, high, ascending);
  quicksort(entries, low, equal.begin, ascending);
  quicksort(entries, equal.end, high, ascending);
}

template <class T>
Reference sorted_with_positions(bool ascending) {
  return [ascending](const Function& function, const Operands& operands) {
    std::vector<Entry<T>> entries;
    for (T key : elements<T>(operands.arrays[0]))
      entries.push_back({key, static_cast<int32_t>(entries.size())});
    std::srand(kClock);
    quicksort(entries, 0, operands.length - 1, ascending);
    std::vector<Bytes> results(function.arguments.size());
    results[0] = operands.arrays[0];
    results[1] = operands.arrays[1];
    for (size_t i = 0; i < entries.size(); ++i) {
      write(results[0], i, entries[i].key);
      write(results[1], i, entries[i].position);
    }
    return results;
  };
}

// --- Selection -------------------------------------------------------------------------

bool takes_radix_selection(int32_t method, int32_t len, int32_t k) {
  return method == 2 || (method == 0 && std::min(len, k) > 32 && len >= 2049 && len <= 134217727);
}

template <class T>
std::vector<Entry<T>> gathered(const Bytes& source, int32_t len, int32_t stride) {
  std::vector<Entry<T>> entries;
  const int64_t span = int64_t{len} * 4;
  for (int64_t i = 0; i < len && (i == 0 || i * stride < span); ++i) {
    T key;
    std::memcpy(&key, &source.at(static_cast<size_t>(i * stride)), sizeof key);
    entries.push_back({key, static_cast<int32_t>(i)});
  }
  return entries;
}

// Moves keys that are not finite to the end, takes the first infinity of each sign in again, drops the rest.
void drop_most_non_finite([[maybe_unused]] std::vector<Entry<int32_t>>& entries) {}
void drop_most_non_finite(std::vector<Entry<float>>& entries) {
  size_t count = 0;
  for (size_t i = 0; i < entries.size(); ++i) {
    if (!std::isfinite(entries[i].key)) std::swap(entries[i], entries[count++]);
  }
  size_t kept = entries.size() - count;
  for (size_t i = count; i > 0; --i) std::swap(entries[i - 1], entries[kept + i - 1]);
  bool has[2] = {false, false};
  for (size_t i = kept; i < entries.size(); ++i) {
    const float key = entries[i].key;
    if (!std::isinf(key) || has[key > 0]) continue;
    has[key > 0] = true;
    std::swap(entries[kept++], entries[i]);
  }
  entries.resize(kept);
}

// Sorts as much of the range as it takes to have the right entries up to place `target`.
template <class T>
void select(std::vector<Entry<T>>& entries, int64_t low, int64_t high, int64_t target) {
  if (high <= low) return;
  const EqualRun equal = partition(entries, low, high, false);
  if (equal.begin >= target) {
    select(entries, low, equal.begin, target);
  } else if (target >= equal.end) {
    select(entries, low, equal.begin, target);
    select(entries, equal.end, high, target);
  }
}

bool is_negative(int32_t key, bool) { return key < 0; }
bool is_negative(float key, bool zeros_too) { return zeros_too ? std::signbit(key) : key < 0; }

template <class T>
bool is_greater(const Entry<T>& a, const Entry<T>& b) {
  if (a.key == b.key) return is_negative(a.key, true) < is_negative(b.key, true);  // zeros
  return a.key > b.key;
}

template <class T>
std::vector<Bytes> largest(const Function& function, const Operands& operands) {
  const auto value = [&](const char* name) { return value_of(name, function, operands); };
  const int32_t len = operands.length, k = value("k"), offset = value("offset");
  const bool by_radix = takes_radix_selection(value("method"), len, k);
  std::vector<Entry<T>> entries = gathered<T>(operands.arrays[0], len, value("srcStride"));
  const auto count = static_cast<int32_t>(entries.size());
  drop_most_non_finite(entries);
  if (by_radix) {
    std::stable_sort(entries.begin(), entries.end(), is_greater<T>);
  } else {
    std::srand(kClock);
    select(entries, 0, static_cast<int64_t>(entries.size()) - 1, std::min(k, count) - 1);
  }
  const auto first_negative =
      std::find_if(entries.begin(), entries.end(), [&](auto& e) { return is_negative(e.key, by_radix); });
  std::vector<Entry<T>> zeros;
  for (int32_t i = count; i < len; ++i) zeros.push_back({T{0}, i});
  entries.insert(first_negative, zeros.begin(), zeros.end());

  std::vector<Bytes> results(function.arguments.size());
  const size_t values = argument_called("dstVal", function), positions = argument_called("dstIdx", function);
  for (size_t i : {values, positions}) results[i] = operands.arrays[i];
  for (size_t i = 0; i < entries.size() && i < static_cast<size_t>(k); ++i) {
    write(results[values], i, entries[i].key);
    write(results[positions], i, entries[i].position + offset);
  }
  return results;
}

template <class T>
Reference new_handle(T least, int32_t counters) {
  return [=](const Function& function, const Operands& operands) {
    const auto value = [&](const char* name) { return value_of(name, function, operands); };
    const bool by_radix = takes_radix_selection(value("method"), operands.length, value("k"));
    const int32_t bytes = by_radix ? 16 * operands.length + 4 * counters : 8 * operands.length;
    std::vector<Bytes> results = operands.arrays;
    for (size_t i = 0; i < static_cast<size_t>(value("k")); ++i) {
      write(results[argument_called("dstVal", function)], i, least);
      write(results[argument_called("dstIdx", function)], i, int32_t{-1});
    }
    write(results[argument_called("policy", function)], 0, memory_of((bytes + 15) / 16 * 16));
    return results;
  };
}

std::vector<Bytes> nothing(const Function& function, const Operands&) {
  return std::vector<Bytes>(function.arguments.size());
}

}  // namespace

References comparison_sort_references() {
  References references = {{"ZIVKS_TopK_32s", largest<int32_t>},
                           {"ZIVKS_TopK_32f", largest<float>},
                           {"ZIVKS_TopKInit_32s", new_handle(INT32_MIN, 256)},
                           {"ZIVKS_TopKInit_32f", new_handle(-0x1.FFFFFEp+127F, 512)},
                           {"ZIVKS_TopKRelease", nothing}};
  for (bool ascending : {true, false}) {
    const std::string direction = ascending ? "Ascend_" : "Descend_";
    const auto add = [&](auto element, const std::string& type) {
      using T = decltype(element);
      references["ZIVKS_Sort" + direction + type + "_I"] = sorted<T>(ascending);
      references["ZIVKS_SortIndex" + direction + type + "_I"] = sorted_with_positions<T>(ascending);
    };
    add(uint8_t(), "8u");
    add(uint16_t(), "16u");
    add(int16_t(), "16s");
    add(int32_t(), "32s");
    add(float(), "32f");
    add(double(), "64f");
  }
  return references;
}

}  // namespace zivks_test
