#include "bench/completeness.h"

#include <cstdio>
#include <set>
#include <string_view>

#include "bench/row.h"

namespace bench {
namespace {

struct ExportedFunction {
  std::string_view name;
  std::string_view family;
};

constexpr ExportedFunction kExportedFunctions[] = {
#define ZIVKS_FUNCTION(name, family, ...) {#name, #family},
#include "tests/functions.def"
#undef ZIVKS_FUNCTION
};

}  // namespace

bool rows_are_complete() {
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

}  // namespace bench
