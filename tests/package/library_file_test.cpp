// Proves on the built file what the library promises to those who load it.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "elf_file.h"

namespace {

using Names = std::set<std::string>;

const Names kFunctions = {
#define ZIVKS_FUNCTION(name, ...) #name,
#include "functions.def"
#undef ZIVKS_FUNCTION
};
const Names kServices = {"ZIVK_Malloc", "ZIVK_Free", "ZIVK_GetLibVersion", "ZIVK_GetStatusString"};
const Names kSystemLibraries = {"libc.so.6", "libm.so.6"};

class LibraryFile : public testing::Test {
 protected:
  const ElfFile library_{ZIVKS_LIBRARY_FILE};
};

TEST_F(LibraryFile, ExportsTheTableOfFunctionsWithVersions) {
  Names exported;
  for (const ElfFile::Symbol& symbol : library_.dynamic_symbols()) {
    if (!symbol.defined) continue;
    exported.insert(symbol.name);
    EXPECT_EQ(symbol.version, "ZIVKS_1") << symbol.name;
  }
  EXPECT_EQ(exported, kFunctions);
}

TEST_F(LibraryFile, ImportsTheServicesFromNobodyAndTheRestFromTheSystem) {
  Names services;
  for (const ElfFile::Symbol& symbol : library_.dynamic_symbols()) {
    if (symbol.defined) continue;
    if (symbol.library.empty()) {
      services.insert(symbol.name);
      EXPECT_EQ(symbol.version, "") << symbol.name;
    } else {
      EXPECT_EQ(kSystemLibraries.count(symbol.library), 1u) << symbol.name << " of " << symbol.library;
    }
  }
  EXPECT_EQ(services, kServices);
}

TEST_F(LibraryFile, NeedsNothingButTheSystemLibraries) {
  EXPECT_EQ(library_.dynamic_texts(DT_SONAME), std::vector<std::string>{"libzivks_base.so.1"});
  for (const std::string& needed : library_.dynamic_texts(DT_NEEDED)) {
    EXPECT_EQ(kSystemLibraries.count(needed), 1u) << needed;
  }
  EXPECT_FALSE(library_.dynamic_value(DT_RPATH));
  EXPECT_FALSE(library_.dynamic_value(DT_RUNPATH));
}

TEST_F(LibraryFile, HasNoWritableStaticData) {
  EXPECT_EQ(library_.writable_bytes(), 0u);
  // Without binding at load time the loader could not seal the table of imported functions.
  EXPECT_TRUE(library_.dynamic_value(DT_FLAGS).value_or(0) & DF_BIND_NOW);
  for (const char* section : {".data", ".bss", ".tdata", ".tbss"}) {
    EXPECT_EQ(library_.section_size(section), 0u) << section;
  }
}

TEST_F(LibraryFile, RunsNothingWhenItIsLoaded) {
  for (const Elf64_Sxword tag : {DT_INIT, DT_FINI, DT_INIT_ARRAY, DT_FINI_ARRAY}) {
    EXPECT_FALSE(library_.dynamic_value(tag)) << "tag " << tag;
  }
}

TEST_F(LibraryFile, KeepsCodeAndStackSeparate) {
  EXPECT_FALSE(library_.dynamic_value(DT_TEXTREL));
  EXPECT_FALSE(library_.dynamic_value(DT_FLAGS).value_or(0) & DF_TEXTREL);
  bool has_stack_flags = false;
  for (const Elf64_Phdr& segment : library_.segments()) {
    EXPECT_FALSE((segment.p_flags & PF_W) && (segment.p_flags & PF_X));
    has_stack_flags |= segment.p_type == PT_GNU_STACK;
  }
  EXPECT_TRUE(has_stack_flags);
}

TEST(CoreLibraryFile, ExportsTheServicesAndNothingElse) {
  Names exported;
  for (const ElfFile::Symbol& symbol : ElfFile(ZIVK_CORE_LIBRARY_FILE).dynamic_symbols()) {
    if (symbol.defined) exported.insert(symbol.name);
  }
  EXPECT_EQ(exported, kServices);
}

// An ordinary program has all that the library must not have: the checks above are able to fail.
TEST(ElfFile, SeesInAProgramWhatTheLibraryLacks) {
  const ElfFile program("/proc/self/exe");
  EXPECT_GT(program.writable_bytes(), 0u);
  EXPECT_GT(program.section_size(".bss"), 0u);
  EXPECT_TRUE(program.dynamic_value(DT_INIT_ARRAY));
  const auto needed = program.dynamic_texts(DT_NEEDED);
  EXPECT_EQ(std::count(needed.begin(), needed.end(), "libstdc++.so.6"), 1);
  const auto symbols = program.dynamic_symbols();
  EXPECT_TRUE(std::any_of(symbols.begin(), symbols.end(), [](const ElfFile::Symbol& symbol) {
    return !symbol.defined && symbol.library == "libstdc++.so.6" && !symbol.version.empty();
  }));
}

}  // namespace
