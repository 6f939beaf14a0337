// How much of a library's file the loader maps. What follows, debug information for example, may be missing.
#pragma once

#include <elf.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

namespace quill::test {

// The end of the last loaded segment. needs: an intact 64-bit ELF file.
inline uintmax_t loadedSize(const std::string& library) {
    std::ifstream file(library, std::ios::binary);
    Elf64_Ehdr header{};
    file.read(reinterpret_cast<char*>(&header), sizeof(header));
    std::vector<Elf64_Phdr> segments(header.e_phnum);
    file.seekg(static_cast<std::streamoff>(header.e_phoff));
    file.read(reinterpret_cast<char*>(segments.data()),
              static_cast<std::streamsize>(segments.size() * sizeof(Elf64_Phdr)));
    uintmax_t end = 0;
    for (const Elf64_Phdr& segment : segments) {
        if (segment.p_type == PT_LOAD) end = std::max<uintmax_t>(end, segment.p_offset + segment.p_filesz);
    }
    return end;
}

}  // namespace quill::test
