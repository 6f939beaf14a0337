// What a symbol's address may be used for: what its library says that it is, and what the memory allows.
#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "common/dynlib.h"

namespace quill {
namespace {

// The memory from an address on, as the segments of the library have it.
struct Memory {
    uintptr_t address;
    size_t size;
    bool executable = false;
    bool writable = false;
};

bool isInside(const Memory& memory, uintptr_t begin, uintptr_t end) {
    return memory.address >= begin && memory.address <= end && memory.size <= end - memory.address;
}

// What the loader makes read-only after it has relocated it: whole pages.
bool isSealed(const Memory& memory, uintptr_t begin, uintptr_t end) {
    const auto page = static_cast<uintptr_t>(::sysconf(_SC_PAGESIZE));
    return memory.address + memory.size > begin / page * page && memory.address < end / page * page;
}

int findSegment(dl_phdr_info* library, size_t /*size*/, void* argument) {
    Memory& memory = *static_cast<Memory*>(argument);
    bool is_here = false;
    bool sealed = false;
    for (int i = 0; i < library->dlpi_phnum; ++i) {
        const ElfW(Phdr)& segment = library->dlpi_phdr[i];
        const uintptr_t begin = library->dlpi_addr + segment.p_vaddr;
        const uintptr_t end = begin + segment.p_memsz;
        if (segment.p_type == PT_LOAD && isInside(memory, begin, end)) {
            is_here = true;
            memory.executable = (segment.p_flags & PF_X) != 0;
            memory.writable = (segment.p_flags & PF_W) != 0;
        } else if (segment.p_type == PT_GNU_RELRO) {
            sealed = isSealed(memory, begin, end);
        }
    }
    if (sealed) memory.writable = false;
    return is_here ? 1 : 0;
}

Memory memoryAt(const void* address, size_t size) {
    Memory memory{reinterpret_cast<uintptr_t>(address), size};
    ::dl_iterate_phdr(findSegment, &memory);
    return memory;
}

// Null when the library states nothing about this address, as for a function that it chooses at load time.
const ElfW(Sym) * symbolAt(const void* address) {
    Dl_info info;
    const ElfW(Sym)* symbol = nullptr;
    const int found =
        ::dladdr1(address, &info, reinterpret_cast<void**>(const_cast<ElfW(Sym)**>(&symbol)), RTLD_DL_SYMENT);
    return found != 0 && info.dli_saddr == address ? symbol : nullptr;
}

bool isStatedAs(const ElfW(Sym) * symbol, int type) {
    return symbol != nullptr && ELF64_ST_TYPE(symbol->st_info) == type;
}

}  // namespace

std::string whyNotFunction(const void* address) {
    if (isStatedAs(symbolAt(address), STT_OBJECT) || !memoryAt(address, 1).executable)
        return "is data, not a function";
    return {};
}

std::string whyNotVariable(const void* address, size_t size) {
    const ElfW(Sym)* const symbol = symbolAt(address);
    if (isStatedAs(symbol, STT_FUNC) || memoryAt(address, 1).executable)
        return "is a function, not a variable";
    if (!memoryAt(address, 1).writable) return "is a constant, not a variable";
    const bool has_size = isStatedAs(symbol, STT_OBJECT);
    if ((has_size && symbol->st_size < size) || !memoryAt(address, size).writable)
        return "is smaller than the " + std::to_string(size) + " bytes of the variable that is expected";
    return {};
}

}  // namespace quill
