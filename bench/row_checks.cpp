#include "bench/row_checks.h"

#include <cstdio>
#include <set>
#include <string_view>
#include <vector>

#include "bench/row.h"

namespace bench {
namespace {

struct ExportedFunction {
  std::string_view name;
  std::string_view family;
};

constexpr ExportedFunction kExportedFunctions[] = {
#define ZIVKS_FUNCTION(name, family, ...) {#name, #family},
#include "core/functions.def"
#undef ZIVKS_FUNCTION
};

bool every_function_has_a_row() {
  std::set<std::string_view> measured;
  for (const Section& section : sections()) {
    for (const Row& row : section.rows) measured.insert(row.function);
  }
  bool complete = true;
  for (const ExportedFunction& function : kExportedFunctions) {
    if (function.family == "Memory" || measured.count(function.name) != 0) continue;
    std::fprintf(stderr, "%.*s has no row in bench/rows\n", static_cast<int>(function.name.size()),
                 function.name.data());
    complete = false;
  }
  return complete;
}

bool calls_agree() {
  constexpr int32_t kLen = 4099;
  const Arrays arrays(std::size_t{kLen} * sizeof(ZIVK64fc));
  const auto written_by = [&](const Row& row, Call call) {
    arrays.clear();
    row.fill(arrays, kLen);
    call(arrays, kLen);
    return arrays.contents();
  };
  bool agree = true;
  for (const Section& section : sections()) {
    for (const Row& row : section.rows) {
      const std::vector<std::byte> expected = written_by(row, row.zivks);
      for (const Call call : {row.plain, row.standard}) {
        if (call == nullptr || written_by(row, call) == expected) continue;
        std::fprintf(stderr, "%s: the %s gives another result\n", row.name().c_str(),
                     call == row.plain ? "plain loop" : row.standard_name);
        agree = false;
      }
    }
  }
  return agree;
}

}  // namespace

bool rows_are_sound() {
  const bool complete = every_function_has_a_row();
  return calls_agree() && complete;
}

}  // namespace bench
