// Reversal of the order of elements and of the bytes within them.
#include <algorithm>

#include "reference/reference.h"

namespace zivks_test {
namespace {

// A reference from a function that changes an array of elements of `element_bytes`.
Reference changing(std::function<void(Bytes& array, size_t element_bytes)> change) {
  return [change](const Function& function, const Operands& operands) {
    const size_t source = inputs_of(function).at(0);
    std::vector<Bytes> result(function.arguments.size());
    for (size_t i = 0; i < result.size(); ++i) {
      if (!function.arguments[i].is_written()) continue;
      result[i] = operands.arrays[source];
      change(result[i], function.arguments[i].array_element_bytes());
    }
    return result;
  };
}

void swap_bytes(Bytes& array, size_t element_bytes) {
  for (auto element = array.begin(); element != array.end();
       element += static_cast<ptrdiff_t>(element_bytes)) {
    std::reverse(element, element + static_cast<ptrdiff_t>(element_bytes));
  }
}

void reverse_elements(Bytes& array, size_t element_bytes) {
  std::reverse(array.begin(), array.end());
  swap_bytes(array, element_bytes);
}

// The narrow in-place forms are defined by these steps, which do not reverse arrays of every length.
template <class T, size_t W>
void exchange_blocks(Bytes& array, size_t) {
  const size_t len = array.size() / sizeof(T), h = len / 2, r = len % W;
  std::vector<T> element(len);
  std::memcpy(element.data(), array.data(), array.size());
  const size_t single = len < W ? h : r;
  for (size_t i = 0; i < single; ++i) std::swap(element[i], element[len - 1 - i]);
  if (len >= W && r < h) {
    size_t p = r;
    for (size_t round = 0; round < (h - 1 - r) / W + 1; ++round, p += W) {
      const size_t q = len - W - p;
      T at_p[W], at_q[W];
      std::copy_n(&element[p], W, at_p);
      std::copy_n(&element[q], W, at_q);
      std::reverse_copy(at_p, at_p + W, &element[q]);
      std::reverse_copy(at_q, at_q + W, &element[p]);
    }
  }
  std::memcpy(array.data(), element.data(), array.size());
}

}  // namespace

References element_order_references() {
  References references = {{"ZIVKS_Flip_8u_I", changing(exchange_blocks<uint8_t, 8>)},
                           {"ZIVKS_Flip_16u_I", changing(exchange_blocks<uint16_t, 4>)}};
  for (const char* type : {"8u", "16u", "32f", "64f", "32fc", "64fc"}) {
    references[std::string("ZIVKS_Flip_") + type] = changing(reverse_elements);
  }
  for (const char* type : {"16u", "24u", "32u", "64u"}) {
    references[std::string("ZIVKS_SwapBytes_") + type] = changing(swap_bytes);
  }
  return references;
}

}  // namespace zivks_test
