#include "elf_file.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

template <typename T>
T ElfFile::read(Elf64_Off offset) const {
  T value;
  if (offset > bytes_.size() || bytes_.size() - offset < sizeof value)
    throw std::runtime_error("ELF file too short");
  std::memcpy(&value, bytes_.data() + offset, sizeof value);
  return value;
}

template <typename T>
std::vector<T> ElfFile::read_array(Elf64_Off offset, std::size_t count) const {
  std::vector<T> values(count);
  for (std::size_t i = 0; i < count; ++i) values[i] = read<T>(offset + i * sizeof(T));
  return values;
}

std::string ElfFile::text(Elf64_Off offset) const {
  std::string result;
  for (char c; (c = read<char>(offset)) != '\0'; ++offset) result += c;
  return result;
}

const Elf64_Shdr* ElfFile::section(Elf64_Word type) const {
  const auto found = std::find_if(sections_.begin(), sections_.end(),
                                  [type](const Elf64_Shdr& s) { return s.sh_type == type; });
  return found == sections_.end() ? nullptr : &*found;
}

template <typename T>
std::vector<T> ElfFile::section_entries(Elf64_Word type) const {
  const Elf64_Shdr* const header = section(type);
  return header == nullptr ? std::vector<T>() : read_array<T>(header->sh_offset, header->sh_size / sizeof(T));
}

ElfFile::ElfFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  bytes_.assign(std::istreambuf_iterator<char>(stream), {});
  const auto header = read<Elf64_Ehdr>(0);
  if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != ELFCLASS64 ||
      header.e_ident[EI_DATA] != ELFDATA2LSB || header.e_type != ET_DYN) {
    throw std::runtime_error(path + " is no 64-bit little-endian shared object");
  }
  segments_ = read_array<Elf64_Phdr>(header.e_phoff, header.e_phnum);
  sections_ = read_array<Elf64_Shdr>(header.e_shoff, header.e_shnum);
  section_names_ = sections_.at(header.e_shstrndx).sh_offset;
  dynamic_entries_ = section_entries<Elf64_Dyn>(SHT_DYNAMIC);
  if (dynamic_entries_.empty()) throw std::runtime_error(path + " is not dynamic");
  dynamic_texts_ = sections_.at(section(SHT_DYNAMIC)->sh_link).sh_offset;
}

std::vector<ElfFile::Symbol> ElfFile::dynamic_symbols() const {
  struct Version {
    std::string name, library;
  };
  std::map<int, Version> versions;
  if (const Elf64_Shdr* const defined = section(SHT_GNU_verdef)) {
    Elf64_Off offset = defined->sh_offset;
    for (Elf64_Word i = 0; i < defined->sh_info; ++i) {
      const auto definition = read<Elf64_Verdef>(offset);
      const auto name = read<Elf64_Verdaux>(offset + definition.vd_aux);
      if ((definition.vd_flags & VER_FLG_BASE) == 0) {
        versions[definition.vd_ndx] = {text(dynamic_texts_ + name.vda_name), ""};
      }
      offset += definition.vd_next;
    }
  }
  if (const Elf64_Shdr* const needed = section(SHT_GNU_verneed)) {
    Elf64_Off offset = needed->sh_offset;
    for (Elf64_Word i = 0; i < needed->sh_info; ++i) {
      const auto need = read<Elf64_Verneed>(offset);
      Elf64_Off name_offset = offset + need.vn_aux;
      for (int j = 0; j < need.vn_cnt; ++j) {
        const auto name = read<Elf64_Vernaux>(name_offset);
        versions[name.vna_other] = {text(dynamic_texts_ + name.vna_name),
                                    text(dynamic_texts_ + need.vn_file)};
        name_offset += name.vna_next;
      }
      offset += need.vn_next;
    }
  }

  const auto entries = section_entries<Elf64_Sym>(SHT_DYNSYM);
  const auto version_indices = section_entries<Elf64_Versym>(SHT_GNU_versym);
  if (version_indices.size() != entries.size()) throw std::runtime_error("dynamic symbols without versions");
  std::vector<Symbol> symbols;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (ELF64_ST_BIND(entries[i].st_info) == STB_LOCAL) continue;
    const std::string name = text(dynamic_texts_ + entries[i].st_name);
    const Version& version = versions[version_indices[i] & 0x7fff];
    if (entries[i].st_shndx == SHN_ABS && name == version.name) continue;
    symbols.push_back({name, entries[i].st_shndx != SHN_UNDEF, version.name, version.library});
  }
  return symbols;
}

std::vector<std::string> ElfFile::dynamic_texts(Elf64_Sxword tag) const {
  std::vector<std::string> result;
  for (const Elf64_Dyn& entry : dynamic_entries_) {
    if (entry.d_tag == tag) result.push_back(text(dynamic_texts_ + entry.d_un.d_val));
  }
  return result;
}

std::optional<Elf64_Xword> ElfFile::dynamic_value(Elf64_Sxword tag) const {
  for (const Elf64_Dyn& entry : dynamic_entries_) {
    if (entry.d_tag == tag) return entry.d_un.d_val;
  }
  return std::nullopt;
}

Elf64_Xword ElfFile::section_size(const std::string& name) const {
  for (const Elf64_Shdr& section : sections_) {
    if (text(section_names_ + section.sh_name) == name) return section.sh_size;
  }
  return 0;
}

Elf64_Xword ElfFile::writable_bytes() const {
  Elf64_Xword writable = 0;
  for (const Elf64_Phdr& load : segments_) {
    if (load.p_type != PT_LOAD || (load.p_flags & PF_W) == 0) continue;
    Elf64_Xword sealed = 0;
    for (const Elf64_Phdr& relro : segments_) {
      if (relro.p_type != PT_GNU_RELRO) continue;
      const Elf64_Addr begin = std::max(load.p_vaddr, relro.p_vaddr);
      const Elf64_Addr end = std::min(load.p_vaddr + load.p_memsz, relro.p_vaddr + relro.p_memsz);
      if (begin < end) sealed += end - begin;
    }
    writable += load.p_memsz - sealed;
  }
  return writable;
}
