// Prints one digest a function, of its results on fixed data, and their total. Every build for every
// processor must print the same.
#include <cinttypes>
#include <cstdio>

#include "generic/call.h"

namespace zivks_test {
namespace {

class Digest {
 public:
  void add(const unsigned char* bytes, size_t count) {  // FNV-1a
    for (size_t i = 0; i < count; ++i) value_ = (value_ ^ bytes[i]) * 0x100000001B3;
  }
  uint64_t value() const { return value_; }

 private:
  uint64_t value_ = 0xCBF29CE484222325;
};

bool digest_function(const Function& function, Digest& digest) {
  for (int32_t length : shape_lengths(function)) {
    for (size_t variant = 0; variant < count_variants(function); ++variant) {
      for (Flavour flavour : {Flavour::kFinite, Flavour::kFewSpecial, Flavour::kManySpecial}) {
        const Operands operands = random_operands(function, length, variant, flavour);
        Call call(function, operands);
        if (!call.succeeds()) return false;
        for (size_t i = 0; i < function.arguments.size(); ++i) {
          const Argument& argument = function.arguments[i];
          if (!argument.is_written() || argument.role == Role::kNewHandle) continue;
          const Bytes contents = what_is_specified(*argument.element, function.results, call.array(i));
          digest.add(contents.data(), contents.size());
        }
      }
    }
  }
  return true;
}

int print_digests() {
  Digest total;
  for (const Function* function : array_functions()) {
    Digest digest;
    if (!digest_function(*function, digest)) {
      std::fprintf(stderr, "%s failed\n", function->name.c_str());
      return 1;
    }
    const uint64_t value = digest.value();
    std::printf("%s %016" PRIx64 "\n", function->name.c_str(), value);
    total.add(reinterpret_cast<const unsigned char*>(&value), sizeof value);
  }
  std::printf("total %016" PRIx64 "\n", total.value());
  return 0;
}

}  // namespace
}  // namespace zivks_test

int main() { return zivks_test::print_digests(); }
