// What the tests ask of a 64-bit, little-endian shared object.
#ifndef ZIVKS_TESTS_PACKAGE_ELF_FILE_H
#define ZIVKS_TESTS_PACKAGE_ELF_FILE_H

#include <elf.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class ElfFile {
 public:
  struct Symbol {
    std::string name;
    bool defined;
    std::string version;  // empty if it has none
    std::string library;  // that an undefined symbol is bound to, empty if to none
  };

  // Throws std::runtime_error if the file cannot be read or is none of that kind.
  explicit ElfFile(const std::string& path);

  const std::vector<Elf64_Phdr>& segments() const { return segments_; }
  const std::vector<Elf64_Dyn>& dynamic_entries() const { return dynamic_entries_; }

  // Dynamic symbols, without local ones and without those that only name a version.
  std::vector<Symbol> dynamic_symbols() const;
  // The texts of all dynamic entries of a tag such as DT_NEEDED.
  std::vector<std::string> dynamic_texts(Elf64_Sxword tag) const;
  std::optional<Elf64_Xword> dynamic_value(Elf64_Sxword tag) const;
  // 0 if there is no such section.
  Elf64_Xword section_size(const std::string& name) const;
  // Bytes of memory that stay writable once the loader is done, the stack apart.
  Elf64_Xword writable_bytes() const;

 private:
  template <typename T>
  T read(Elf64_Off offset) const;
  template <typename T>
  std::vector<T> read_array(Elf64_Off offset, std::size_t count) const;
  std::string text(Elf64_Off offset) const;
  const Elf64_Shdr* section(Elf64_Word type) const;
  template <typename T>
  std::vector<T> section_entries(Elf64_Word type) const;

  std::vector<char> bytes_;
  std::vector<Elf64_Phdr> segments_;
  std::vector<Elf64_Shdr> sections_;
  std::vector<Elf64_Dyn> dynamic_entries_;
  Elf64_Off section_names_ = 0;
  Elf64_Off dynamic_texts_ = 0;
};

#endif
