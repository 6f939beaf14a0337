#include "tests/reliability/audio_path/audio_thread.h"

#include <immintrin.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "tests/reliability/audio_path/seal.h"

namespace reliability {
namespace {

namespace se = quill::media::se_wrapper;
using se::BLOCK_SIZE;

constexpr uint16_t kDftSize = 512;
constexpr uint16_t kTaps = 56;
constexpr uint16_t kPhases = 4;
constexpr uint16_t kForward = 3, kInverse = 4, kUnity = 1024;

}  // namespace

AudioThread::AudioThread(uint64_t blocks, Violation violation)
    : blocks_(blocks), violation_(violation), dft_object_(new unsigned char[64]()) {
    if (se::InitDft_FcnHook == nullptr) return;
    (*se::InitDft_FcnHook)(reinterpret_cast<DftObj_t*>(dft_object_.get()), kDftSize, kDftSize);
}

void AudioThread::run() {
    could_seal_ = sealThisThread();
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
    endThisThread();
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
