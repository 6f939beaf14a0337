// Replaces the functions that it counts: those of the program come before those of the C library.
#include "tests/reliability/audio_path/calls.h"

#include <dlfcn.h>
#include <pthread.h>
#include <semaphore.h>

#include <cstddef>

namespace {

thread_local reliability::Calls g_calls{};

// Looked up at its first use, which may come before any constructor runs.
template <class Function>
Function* nextOne(Function*& next, const char* name) {
    if (next == nullptr) next = reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
    return next;
}

}  // namespace

reliability::Calls reliability::callsOfThisThread() {
    return g_calls;
}

#define REPLACED extern "C" __attribute__((visibility("default")))

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* block);
}

REPLACED void* malloc(size_t size) {
    ++g_calls.allocations;
    return __libc_malloc(size);
}
REPLACED void* calloc(size_t count, size_t size) {
    ++g_calls.allocations;
    return __libc_calloc(count, size);
}
REPLACED void* realloc(void* block, size_t size) {
    ++g_calls.allocations;
    return __libc_realloc(block, size);
}
REPLACED void* memalign(size_t alignment, size_t size) {
    ++g_calls.allocations;
    return __libc_memalign(alignment, size);
}
REPLACED void* aligned_alloc(size_t alignment, size_t size) {
    ++g_calls.allocations;
    return __libc_memalign(alignment, size);
}
REPLACED int posix_memalign(void** block, size_t alignment, size_t size) {
    ++g_calls.allocations;
    *block = __libc_memalign(alignment, size);
    return *block == nullptr ? 12 : 0;
}
REPLACED void free(void* block) {
    ++g_calls.releases;
    __libc_free(block);
}

#define LOCK(name, object)                     \
    REPLACED int name(object* lock) {          \
        static int (*next)(object*) = nullptr; \
        ++g_calls.locks;                       \
        return nextOne(next, #name)(lock);     \
    }
#define LOCK_WITH(name, object, second)                \
    REPLACED int name(object* lock, second argument) { \
        static int (*next)(object*, second) = nullptr; \
        ++g_calls.locks;                               \
        return nextOne(next, #name)(lock, argument);   \
    }

using Time = const timespec*;
LOCK(pthread_mutex_lock, pthread_mutex_t)
LOCK(pthread_mutex_trylock, pthread_mutex_t)
LOCK_WITH(pthread_mutex_timedlock, pthread_mutex_t, Time)
LOCK(pthread_rwlock_rdlock, pthread_rwlock_t)
LOCK(pthread_rwlock_wrlock, pthread_rwlock_t)
LOCK(pthread_rwlock_tryrdlock, pthread_rwlock_t)
LOCK(pthread_rwlock_trywrlock, pthread_rwlock_t)
LOCK_WITH(pthread_rwlock_timedrdlock, pthread_rwlock_t, Time)
LOCK_WITH(pthread_rwlock_timedwrlock, pthread_rwlock_t, Time)
LOCK(pthread_spin_lock, pthread_spinlock_t volatile)
LOCK(pthread_spin_trylock, pthread_spinlock_t volatile)
LOCK(pthread_cond_signal, pthread_cond_t)
LOCK(pthread_cond_broadcast, pthread_cond_t)
LOCK_WITH(pthread_cond_wait, pthread_cond_t, pthread_mutex_t*)
LOCK(sem_wait, sem_t)
LOCK(sem_trywait, sem_t)
LOCK(sem_post, sem_t)
