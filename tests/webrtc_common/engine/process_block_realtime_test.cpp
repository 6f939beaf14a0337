// processBlock on the audio thread: no allocation, no lock, no system call. This program replaces the
// allocator and the mutex functions and counts their calls; the kernel kills a child that makes a system
// call.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>

#include "webrtc_common/se_wrapper/engine/process_block.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define SANITIZED 1
#endif
#endif

namespace {
std::atomic<int> allocations{0};
std::atomic<int> locks{0};
}  // namespace

#ifndef SANITIZED
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);

void* malloc(size_t size) {
    ++allocations;
    return __libc_malloc(size);
}
void* calloc(size_t count, size_t size) {
    ++allocations;
    return __libc_calloc(count, size);
}
void* realloc(void* block, size_t size) {
    ++allocations;
    return __libc_realloc(block, size);
}

using MutexFunction = int (*)(pthread_mutex_t*);
int pthread_mutex_lock(pthread_mutex_t* mutex) {
    static std::atomic<MutexFunction> next{nullptr};
    if (next == nullptr) next = reinterpret_cast<MutexFunction>(::dlsym(RTLD_NEXT, "pthread_mutex_lock"));
    ++locks;
    return next.load()(mutex);
}
}
#endif

namespace quill::media::se_wrapper {
namespace {

int16_t interleaved[BLOCK_SIZE * 16];
int16_t output[BLOCK_SIZE];

void processMicrophones(int16_t* first, int16_t* others, int16_t* out) {
    for (uint32_t i = 0; i < BLOCK_SIZE; ++i) out[i] = static_cast<int16_t>(first[i] ^ others[i]);
}

void processSomeBlocks() {
    for (uint32_t channels = 8; channels <= 16; ++channels) {
        processBlock(channels, interleaved, BLOCK_SIZE, output, true);
        processBlock(channels, interleaved, BLOCK_SIZE, output, false);
    }
}

class ProcessBlockInRealTime : public ::testing::Test {
  protected:
    void SetUp() override {
#ifdef SANITIZED
        GTEST_SKIP() << "the sanitizer has an allocator and locks of its own";
#endif
        MMIfProcessMicrophones = processMicrophones;
        processSomeBlocks();  // the dynamic linker's work at a first call is not counted
    }
};

TEST_F(ProcessBlockInRealTime, AllocatesNothing) {
    const int before = allocations;
    processSomeBlocks();
    EXPECT_EQ(allocations, before);
}

TEST_F(ProcessBlockInRealTime, TakesNoLock) {
    const int before = locks;
    processSomeBlocks();
    EXPECT_EQ(locks, before);
}

TEST_F(ProcessBlockInRealTime, ACountedAllocationWouldShow) {
    const int before = allocations;
    void* volatile block = std::malloc(1);
    std::free(block);
    EXPECT_GT(allocations, before);
}

TEST_F(ProcessBlockInRealTime, ACountedLockWouldShow) {
    const int before = locks;
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_mutex_lock(&mutex);
    pthread_mutex_unlock(&mutex);
    EXPECT_GT(locks, before);
}

constexpr int kNoSeccomp = 77;

// The wait status of a child that may make no system call but its exit while it runs `body`.
template <class Body>
int runWithoutSystemCalls(Body body) {
    const pid_t child = ::fork();
    if (child == 0) {
        if (::prctl(PR_SET_SECCOMP, SECCOMP_MODE_STRICT) != 0) ::_exit(kNoSeccomp);
        body();
        ::syscall(SYS_exit, 0);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

TEST_F(ProcessBlockInRealTime, MakesNoSystemCall) {
    const int status = runWithoutSystemCalls(processSomeBlocks);
    if (WIFEXITED(status) && WEXITSTATUS(status) == kNoSeccomp) GTEST_SKIP() << "the kernel has no seccomp";
    ASSERT_TRUE(WIFEXITED(status)) << "killed by signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(ProcessBlockInRealTime, ASystemCallWouldShow) {
    const int status = runWithoutSystemCalls([] { ::syscall(SYS_getpid); });
    if (WIFEXITED(status) && WEXITSTATUS(status) == kNoSeccomp) GTEST_SKIP() << "the kernel has no seccomp";
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
}

}  // namespace
}  // namespace quill::media::se_wrapper
