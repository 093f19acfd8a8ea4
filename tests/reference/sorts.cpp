// Sorts of arrays and of positions.
#include <algorithm>

#include "generic/services.h"
#include "reference/entries.h"

namespace zivks_test {
namespace {

enum class Direction { kAscend, kDescend };

template <class T>
using IsInFront = bool (*)(T a, T b);

template <class T>
IsInFront<T> by_value(Direction direction) {
  if (direction == Direction::kAscend) return [](T a, T b) { return a < b; };
  return [](T a, T b) { return a > b; };
}

template <class T>
IsInFront<T> by_rank(Direction direction) {
  if (direction == Direction::kAscend) return [](T a, T b) { return rank_of(a) < rank_of(b); };
  return [](T a, T b) { return rank_of(a) > rank_of(b); };
}

template <class T>
std::vector<T> elements_of(const Function& function, const Operands& operands) {
  std::vector<T> elements;
  for (size_t i = 0; i < operands.arrays[0].size() / sizeof(T); ++i) {
    elements.push_back(input_element<T>(function, operands, 0, i));
  }
  return elements;
}

template <class T>
std::vector<Bytes> outputs_of(const Function& function, const Operands& operands,
                              const std::vector<T>& elements) {
  Outputs outputs(function, operands);
  for (size_t i = 0; i < elements.size(); ++i) outputs.set(0, i, elements[i]);
  return outputs.take();
}

// Only a permutation if there is a NaN.
template <class T>
Reference sort_by_value(Direction direction) {
  return [direction](const Function& function, const Operands& operands) {
    std::vector<T> elements = elements_of<T>(function, operands);
    if (std::none_of(elements.begin(), elements.end(), [](T element) { return element != element; })) {
      std::sort(elements.begin(), elements.end(), by_value<T>(direction));
    }
    return outputs_of(function, operands, elements);
  };
}

// Sorts floats as the integers of the same bits, then reverses what it finds negative from one end on.
template <class T>
std::vector<T> sorted_as_integers(std::vector<T> words, size_t length, Direction direction) {
  using Integer = std::make_signed_t<BitsOf<T>>;
  // Of a falling order, the mirror image is looked at.
  if (direction == Direction::kDescend) std::reverse(words.begin(), words.end());
  const auto end = words.begin() + static_cast<ptrdiff_t>(length);
  std::sort(words.begin(), end, [](T a, T b) { return bit_cast<Integer>(a) < bit_cast<Integer>(b); });
  auto place = words.begin();
  while (place != end && *place < 0) ++place;
  const auto pattern = bit_cast<Integer>(-std::numeric_limits<T>::infinity());
  const auto has_pattern = [&](T word) { return (bit_cast<Integer>(word) & pattern) == pattern; };
  while (place != words.end() && has_pattern(*place)) ++place;
  std::reverse(words.begin(), place);
  if (direction == Direction::kDescend) std::reverse(words.begin(), words.end());
  return words;
}

template <class T>
Reference radix_sort(Direction direction) {
  if constexpr (std::is_floating_point_v<T>) {
    return [direction](const Function& function, const Operands& operands) {
      const auto length = static_cast<size_t>(operands.length);
      return outputs_of(function, operands,
                        sorted_as_integers(elements_of<T>(function, operands), length, direction));
    };
  } else {
    return sort_by_value<T>(direction);
  }
}

template <class T>
Reference radix_sort_index(Direction direction) {
  return [direction](const Function& function, const Operands& operands) {
    Entries<T> entries(static_cast<size_t>(operands.length));
    const auto stride = static_cast<size_t>(value_of("srcStride", function, operands));
    for (size_t i = 0; i < entries.size(); ++i) {
      std::memcpy(&entries[i].key, &operands.arrays[0][i * stride], sizeof(T));
      entries[i].position = static_cast<int32_t>(i);
    }
    std::stable_sort(entries.begin(), entries.end(), [is_in_front = by_rank<T>(direction)](auto& a, auto& b) {
      return is_in_front(a.key, b.key);
    });
    Outputs outputs(function, operands);
    for (size_t i = 0; i < entries.size(); ++i) outputs.set(0, i, entries[i].position);
    return outputs.take();
  };
}

template <class T>
void quicksort(Entries<T>& entries, size_t low, size_t high, IsInFront<T> is_in_front) {
  if (low >= high) return;
  const auto [equal, end] = partition_at_random(entries, low, high, is_in_front);
  quicksort(entries, low, equal, is_in_front);
  quicksort(entries, end, high, is_in_front);
}

template <class T>
Reference sort_index(Direction direction) {
  return [direction](const Function& function, const Operands& operands) {
    Entries<T> entries;
    for (T element : elements_of<T>(function, operands)) {
      entries.push_back({element, static_cast<int32_t>(entries.size())});
    }
    std::srand(static_cast<unsigned>(kClock));
    quicksort(entries, 0, entries.size() - 1, by_value<T>(direction));
    Outputs outputs(function, operands);
    for (size_t i = 0; i < entries.size(); ++i) {
      outputs.set(0, i, entries[i].key);
      outputs.set(1, i, entries[i].position);
    }
    return outputs.take();
  };
}

template <class T>
void add_sorts(References& references, const std::string& type) {
  for (Direction direction : {Direction::kAscend, Direction::kDescend}) {
    const std::string suffix = (direction == Direction::kAscend ? "Ascend_" : "Descend_") + type;
    references["ZIVKS_Sort" + suffix + "_I"] = sort_by_value<T>(direction);
    references["ZIVKS_SortIndex" + suffix + "_I"] = sort_index<T>(direction);
    references["ZIVKS_SortRadix" + suffix + "_I"] = radix_sort<T>(direction);
    references["ZIVKS_SortRadixIndex" + suffix] = radix_sort_index<T>(direction);
  }
}

// The bytes that each of `length` keys takes in a handle, by the width of a key; narrow keys have a counter for
// every value.
Reference handle_for_keys(int32_t per_key_of_4, int32_t per_key_of_8) {
  return [=](const Function& function, const Operands& operands) {
    int32_t bytes = 0;
    switch (value_of("dataType", function, operands)) {
      case ZIVK_DT_8U: bytes = 256 * 4; break;
      case ZIVK_DT_16U:
      case ZIVK_DT_16S: bytes = 65536 * 4; break;
      case ZIVK_DT_32U:
      case ZIVK_DT_32S:
      case ZIVK_DT_32F: bytes = operands.length * per_key_of_4; break;
      default: bytes = operands.length * per_key_of_8; break;
    }
    return outputs_of(function, operands, std::vector{reinterpret_cast<uint64_t>(memory_of(bytes))});
  };
}

std::vector<Bytes> nothing(const Function& function, const Operands& operands) {
  return Outputs(function, operands).take();
}

}  // namespace

References sort_references() {
  References references = {{"ZIVKS_SortRadixInit", handle_for_keys(4, 8)},
                           {"ZIVKS_SortRadixIndexInit", handle_for_keys(12, 24)}};
  for (const char* family : {"SortRadix", "SortRadixIndex", "TopK"}) {
    references["ZIVKS_" + std::string(family) + "Release"] = nothing;
  }
  add_sorts<uint8_t>(references, "8u");
  add_sorts<uint16_t>(references, "16u");
  add_sorts<int16_t>(references, "16s");
  add_sorts<uint32_t>(references, "32u");
  add_sorts<int32_t>(references, "32s");
  add_sorts<float>(references, "32f");
  add_sorts<uint64_t>(references, "64u");
  add_sorts<int64_t>(references, "64s");
  add_sorts<double>(references, "64f");
  return references;
}

}  // namespace zivks_test
