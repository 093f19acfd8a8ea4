#include "bench/row_checks.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

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

// The in-place forms whose definition is a single call of another function. Reads the sources of the library.
std::set<std::string> in_place_forms_that_call_their_twin() {
  const std::regex definition(R"((ZIVKS_\w+_IS?)\([^()]*\)\s*\{\s*return ZIVKS_\w+\([^()]*\);\s*\})");
  std::set<std::string> names;
  for (const char* subsystem : {"movement", "logic", "arithmetic", "convert", "statistics"}) {
    for (const auto& file :
         std::filesystem::directory_iterator(BENCH_SOURCE_DIR + std::string("/") + subsystem)) {
      std::ifstream stream(file.path());
      const std::string text{std::istreambuf_iterator<char>(stream), {}};
      for (std::sregex_iterator match(text.begin(), text.end(), definition), end; match != end; ++match) {
        names.insert((*match)[1]);
      }
    }
  }
  return names;
}

}  // namespace

std::string_view family_of(std::string_view function) {
  for (const ExportedFunction& exported : kExportedFunctions) {
    if (exported.name == function) return exported.family;
  }
  return "";
}

bool every_function_has_a_row() {
  std::set<std::string> covered = in_place_forms_that_call_their_twin();
  for (const Row& row : rows()) covered.insert(row.function);
  bool complete = true;
  for (const ExportedFunction& function : kExportedFunctions) {
    const std::string name(function.name);
    if (function.family == "Memory" || function.family == "Handle" || covered.count(name) != 0) continue;
    std::fprintf(stderr, "%s has no row in bench/rows\n", name.c_str());
    complete = false;
  }
  return complete;
}

bool calls_agree(const std::vector<Row>& rows) {
  constexpr int32_t kOddLength = kCacheResident + 3;
  constexpr std::size_t kMostBytesEach = 100;  // of an element, which may be a text
  const Arrays arrays(kOddLength * kMostBytesEach);
  const auto written_by = [&](const Row& row, Call call) {
    arrays.clear();
    row.fill(arrays, kOddLength);
    if (row.prepare != nullptr) row.prepare(arrays, kOddLength);
    call(arrays, kOddLength);
    return arrays.contents();
  };
  bool agree = true;
  for (const Row& row : rows) {
    if (*row.remark != '\0' || written_by(row, row.zivks) == written_by(row, row.other)) continue;
    std::fprintf(stderr, "%s: what it is measured against gives another result\n", row.name().c_str());
    agree = false;
  }
  return agree;
}

}  // namespace bench
