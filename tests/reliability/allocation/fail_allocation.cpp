// Preloaded before the C library: lets one allocation of the process fail. Which one, and where the count is left, is
// in the environment:
//   FAIL_ALLOCATION        the number of the allocation, from 1 on; 0: none fails
//   FAIL_ALLOCATION_COUNT  a file of 8 bytes that receives the largest number of allocations of a process
// A program may call fail_allocation_from_here(), from which the count begins again; with a number behind an "m"
// ("m17") nothing fails before that.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
}

#define PRELOADED extern "C" __attribute__((visibility("default")))

namespace {

std::atomic<uint64_t> g_count{0};
uint64_t g_failing = 0;
bool g_waits_for_mark = false;
std::atomic<uint64_t>* g_most = nullptr;  // shared by the processes of a run

__attribute__((constructor)) void prepare() {
    if (const char* const file = std::getenv("FAIL_ALLOCATION_COUNT")) {
        const int descriptor = ::open(file, O_RDWR | O_CLOEXEC);
        void* const map = ::mmap(nullptr, 8, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
        if (map != MAP_FAILED) g_most = static_cast<std::atomic<uint64_t>*>(map);
        ::close(descriptor);
    }
    const char* number = std::getenv("FAIL_ALLOCATION");
    if (number == nullptr) return;
    g_waits_for_mark = *number == 'm';
    if (g_waits_for_mark) ++number;
    g_failing = std::strtoull(number, nullptr, 10);
}

// Whether this allocation is the one that fails.
bool fails() {
    const uint64_t number = ++g_count;
    if (g_waits_for_mark) return false;
    if (g_most != nullptr && g_most->load() < number) g_most->store(number);
    if (number != g_failing) return false;
    errno = ENOMEM;
    return true;
}

}  // namespace

PRELOADED void fail_allocation_from_here() {
    g_count = 0;
    g_waits_for_mark = false;
}

PRELOADED void* malloc(size_t size) {
    return fails() ? nullptr : __libc_malloc(size);
}
PRELOADED void* calloc(size_t count, size_t size) {
    return fails() ? nullptr : __libc_calloc(count, size);
}
PRELOADED void* realloc(void* block, size_t size) {
    return fails() ? nullptr : __libc_realloc(block, size);
}
PRELOADED void* memalign(size_t alignment, size_t size) {
    return fails() ? nullptr : __libc_memalign(alignment, size);
}
PRELOADED void* aligned_alloc(size_t alignment, size_t size) {
    return fails() ? nullptr : __libc_memalign(alignment, size);
}
PRELOADED int posix_memalign(void** block, size_t alignment, size_t size) {
    if (fails()) return ENOMEM;
    *block = __libc_memalign(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}
