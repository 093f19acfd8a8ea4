// Radix sorts, of arrays and of positions.
#include <algorithm>
#include <numeric>

#include "generic/services.h"
#include "reference/reference.h"

namespace zivks_test {
namespace {

// The bits of a float, or an integer itself.
template <class T>
auto integer_of(T key) {
  if constexpr (std::is_floating_point_v<T>) {
    return bit_cast<std::make_signed_t<BitsOf<T>>>(key);
  } else {
    return key;
  }
}

// Orders floats by sign and magnitude, NaNs included, and integers by value.
template <class T>
auto rank_of(T key) {
  auto integer = integer_of(key);
  using Integer = decltype(integer);
  if (std::is_floating_point_v<T> && integer < 0) integer ^= std::numeric_limits<Integer>::max();
  return integer;
}

// Reverses the negative elements at the front, which stand by rising magnitude behind any -0, as the scan for
// their end finds them: it goes on behind the last element.
template <class T>
void reverse_negative(std::vector<T>& words, size_t length) {
  size_t end = 0;
  while (end < length && words[end] < 0) ++end;
  const auto pattern = integer_of(-std::numeric_limits<T>::infinity());
  while (end < words.size() && (integer_of(words[end]) & pattern) == pattern) ++end;
  std::reverse(words.begin(), words.begin() + static_cast<ptrdiff_t>(end));
}

// A falling order is the mirror image of a rising one, words next to the array included.
template <class T>
Reference radix_sort(bool ascending) {
  return [ascending](const Function& function, const Operands& operands) {
    std::vector<T> words;
    for (size_t i = 0; i < operands.arrays[0].size() / sizeof(T); ++i) {
      words.push_back(input_element<T>(function, operands, 0, i));
    }
    if (!ascending) std::reverse(words.begin(), words.end());
    std::sort(words.begin(), words.begin() + operands.length,
              [](T a, T b) { return integer_of(a) < integer_of(b); });
    if constexpr (std::is_floating_point_v<T>) {
      reverse_negative(words, static_cast<size_t>(operands.length));
    }
    if (!ascending) std::reverse(words.begin(), words.end());
    Outputs outputs(function, operands);
    for (size_t i = 0; i < words.size(); ++i) outputs.set(0, i, words[i]);
    return outputs.take();
  };
}

template <class T>
Reference radix_sort_index(bool ascending) {
  return [ascending](const Function& function, const Operands& operands) {
    const auto rank_at = [&](int32_t position) {
      T key;
      const int64_t stride = value_of("srcStride", function, operands);
      std::memcpy(&key, &operands.arrays[0][static_cast<size_t>(position * stride)], sizeof key);
      return rank_of(key);
    };
    std::vector<int32_t> positions(static_cast<size_t>(operands.length));
    std::iota(positions.begin(), positions.end(), 0);
    std::stable_sort(positions.begin(), positions.end(), [&](int32_t a, int32_t b) {
      return ascending ? rank_at(a) < rank_at(b) : rank_at(a) > rank_at(b);
    });
    Outputs outputs(function, operands);
    for (size_t i = 0; i < positions.size(); ++i) outputs.set(0, i, positions[i]);
    return outputs.take();
  };
}

template <class T>
void add_sorts(References& references, const std::string& type) {
  for (bool ascending : {true, false}) {
    const std::string suffix = (ascending ? "Ascend_" : "Descend_") + type;
    references["ZIVKS_SortRadix" + suffix + "_I"] = radix_sort<T>(ascending);
    references["ZIVKS_SortRadixIndex" + suffix] = radix_sort_index<T>(ascending);
  }
}

// Narrow keys have a counter for every value; wider ones take this many bytes each.
Reference new_handle(int32_t per_key_of_4, int32_t per_key_of_8) {
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
    Outputs outputs(function, operands);
    outputs.set(0, 0, reinterpret_cast<uint64_t>(memory_of(bytes)));
    return outputs.take();
  };
}

std::vector<Bytes> nothing(const Function& function, const Operands&) {
  return std::vector<Bytes>(function.arguments.size());
}

}  // namespace

References radix_sort_references() {
  References references = {{"ZIVKS_SortRadixInit", new_handle(4, 8)},
                           {"ZIVKS_SortRadixIndexInit", new_handle(12, 24)},
                           {"ZIVKS_SortRadixRelease", nothing},
                           {"ZIVKS_SortRadixIndexRelease", nothing}};
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
