#include "tests/reliability/audio_path/audio_thread.h"

#include <immintrin.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <thread>

namespace reliability {
namespace {

namespace se = quill::media::se_wrapper;
using se::BLOCK_SIZE;

constexpr uint16_t kDftSize = 512;
constexpr uint16_t kTaps = 56;
constexpr uint16_t kPhases = 4;
constexpr uint16_t kForward = 3, kInverse = 4, kUnity = 1024;

// Stricter than the strict mode of the kernel, which allows read and write: nothing but the thread's exit. It holds
// for this thread alone.
bool seal() {
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, AUDIT_ARCH_X86_64, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
    };
    const sock_fprog program{std::size(rules), rules};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

}  // namespace

AudioThread::AudioThread(uint64_t blocks, Violation violation)
    : blocks_(blocks), violation_(violation), dft_object_(new unsigned char[64]()) {
    if (se::InitDft_FcnHook == nullptr) return;
    (*se::InitDft_FcnHook)(reinterpret_cast<DftObj_t*>(dft_object_.get()), kDftSize, kDftSize);
}

void AudioThread::run() {
    // The allocator's first work for a thread needs system calls; a later allocation is counted.
    void* volatile first = std::malloc(1);
    std::free(first);
    could_seal_ = seal();
    if (could_seal_) {
        const Calls before = callsOfThisThread();
        for (uint64_t block = 0; block < blocks_; ++block) {
            process(block);
            if (block == 0) violate();
            if ((block + 1) % kBlocksARound != 0) continue;
            const uint64_t round = ++done_;
            while (allowed_ < round) _mm_pause();
        }
        const Calls after = callsOfThisThread();
        calls_ = {after.allocations - before.allocations, after.releases - before.releases,
                  after.locks - before.locks};
    }
    ended_ = true;
    for (;;) ::syscall(SYS_exit, 0);
}

bool AudioThread::waitForRound(uint64_t round) const {
    while (done_ <= round && !ended_) std::this_thread::sleep_for(std::chrono::microseconds(200));
    return done_ > round;
}

void AudioThread::process(uint64_t block) {
    const auto channels = static_cast<uint32_t>(8 + block % (Sound::kMostChannels - 7));
    int16_t interleaved[Sound::kMostChannels * BLOCK_SIZE];
    Sound::Block far_end, played, out, filtered;
    sound_.next(channels, far_end, interleaved);
    se::RcvIfProcessReceivePath(far_end, played);
    se::processBlock(channels, interleaved, BLOCK_SIZE, out, block % 4 != 3);
    filter_.filterBlock(out, filtered, static_cast<float>(block % 101) / 100);
    checksum_.add(played, BLOCK_SIZE);
    checksum_.add(out, BLOCK_SIZE);
    checksum_.add(filtered, BLOCK_SIZE);
    callHooks();
}

// Through the engine's own variables, as the engine calls them; a scripted engine calls none by itself.
void AudioThread::callHooks() {
    int16_t signal[2 * kDftSize + 16], coeffs[kPhases * kTaps], out[kPhases * BLOCK_SIZE];
    int32_t wide[BLOCK_SIZE];
    for (int i = 0; i < 2 * kDftSize + 16; ++i) signal[i] = static_cast<int16_t>(37 * i);
    for (int i = 0; i < kPhases * kTaps; ++i) coeffs[i] = static_cast<int16_t>(91 * i);
    int16_t* position = signal;
    (*se::Interp1toNCore_FcnHook)(BLOCK_SIZE, kPhases, &position, out, coeffs, kTaps);
    checksum_.add(out, kPhases * BLOCK_SIZE);
    (*se::ComputeRFir_FcnHook)(signal, coeffs, out, kTaps - 1, BLOCK_SIZE, 1);
    checksum_.add(out, BLOCK_SIZE);
    (*se::VCMul_i16_FcnHook)(signal, coeffs, out, BLOCK_SIZE / 2);
    checksum_.add(out, BLOCK_SIZE);
    (*se::AecConvolution_FcnHook)(coeffs, signal, wide, 15, BLOCK_SIZE, kTaps, 0);
    for (const int32_t value : wide) out[0] = static_cast<int16_t>(out[0] ^ value);
    checksum_.add(out, 1);
    if (se::FwdDft_FcnHook == nullptr) return;
    auto* const dft = reinterpret_cast<DftObj_t*>(dft_object_.get());
    int16_t spectrum[kDftSize + 2];
    (*se::FwdDft_FcnHook)(dft, signal, kForward, kUnity, spectrum, kDftSize + 2);
    (*se::InvDft_FcnHook)(dft, spectrum, kInverse, kUnity, out, kDftSize);
    checksum_.add(out, kDftSize);
}

void AudioThread::violate() const {
    static pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    switch (violation_) {
        case Violation::kNone:
            break;
        case Violation::kAllocation: {
            void* volatile block = std::malloc(1);
            std::free(block);
            break;
        }
        case Violation::kLock:
            ::pthread_mutex_lock(&mutex);
            ::pthread_mutex_unlock(&mutex);
            break;
        case Violation::kSystemCall:
            ::syscall(SYS_getpid);
            break;
    }
}

}  // namespace reliability
