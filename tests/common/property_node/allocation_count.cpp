// Replaces malloc. A sanitizer has its own malloc; there this file installs a hook instead.
#include "tests/common/property_node/allocation_count.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define SE_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define SE_SANITIZED 1
#endif
#endif

namespace {
thread_local size_t g_allocations = 0;
thread_local size_t g_releases = 0;
}  // namespace

namespace quill::test {
size_t allocationCount() {
    return g_allocations;
}
size_t releaseCount() {
    return g_releases;
}
}  // namespace quill::test

#ifdef SE_SANITIZED

extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*on_malloc)(const volatile void*, size_t),
                                                         void (*on_free)(const volatile void*));

namespace {
const int g_installed = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void*, size_t) { ++g_allocations; }, [](const volatile void*) { ++g_releases; });
}

#else

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void __libc_free(void* block);

// Every library of the process finds these before those of the C library.
__attribute__((visibility("default"))) void* malloc(size_t size) {
    ++g_allocations;
    return __libc_malloc(size);
}
__attribute__((visibility("default"))) void* calloc(size_t count, size_t size) {
    ++g_allocations;
    return __libc_calloc(count, size);
}
__attribute__((visibility("default"))) void* realloc(void* block, size_t size) {
    ++g_allocations;
    return __libc_realloc(block, size);
}
__attribute__((visibility("default"))) void free(void* block) {
    if (block != nullptr) ++g_releases;
    __libc_free(block);
}
}

#endif
