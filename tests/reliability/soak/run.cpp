#include "tests/reliability/soak/run.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "common/logging.h"
#include "tests/reliability/soak/durations.h"
#include "tests/reliability/support/running_engine.h"
#include "tests/reliability/support/sound.h"
#include "tools/core_clock/core_clock.h"
#include "webrtc_common/se_wrapper.h"

namespace reliability {
namespace {

namespace se = quill::media::se_wrapper;

constexpr uint32_t kChannels = 8;
constexpr uint64_t kBlocksARound = 250;
constexpr uint64_t kFirstRounds = 16;  // after which every edit and every pass has taken its memory

uint64_t residentKib() {
    std::FILE* const file = std::fopen("/proc/self/statm", "r");
    if (file == nullptr) return 0;
    unsigned long pages = 0;
    if (std::fscanf(file, "%*u %lu", &pages) != 1) pages = 0;
    std::fclose(file);
    return pages * static_cast<unsigned long>(::sysconf(_SC_PAGESIZE)) / 1024;
}

// How often the system has taken the processor from this thread.
long interruptions() {
    rusage usage{};
    ::getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nivcsw;
}

struct Blocks {
    Sound sound;
    Checksum checksum;
    se::Filter filter{se::kHighPass600Hz};
    Durations durations;
    uint64_t interrupted = 0, longest_interrupted = 0;

    void next() {
        int16_t interleaved[kChannels * se::BLOCK_SIZE];
        Sound::Block far_end, played, out, filtered;
        sound.next(kChannels, far_end, interleaved);
        const long before = interruptions();
        const uint64_t begin = core_clock::ticks();
        se::RcvIfProcessReceivePath(far_end, played);
        se::processBlock(kChannels, interleaved, se::BLOCK_SIZE, out, true);
        filter.filterBlock(out, filtered, 1.0f);
        const uint64_t ticks = core_clock::ticks() - begin;
        if (interruptions() == before) {
            durations.add(ticks);
        } else {
            ++interrupted;
            longest_interrupted = std::max(longest_interrupted, ticks);
        }
        checksum.add(played, se::BLOCK_SIZE);
        checksum.add(filtered, se::BLOCK_SIZE);
    }
};

}  // namespace

SoakResult soak(const std::string& engine, uint64_t blocks) {
    quill::setLogThreshold(2);
    RunningEngine running(engine);
    Blocks all;
    SoakResult result{};
    const double begin = core_clock::now();
    const uint64_t begin_ticks = core_clock::ticks();
    for (uint64_t block = 0; block < blocks; ++block) {
        if (block % kBlocksARound == 0) {
            running.edit(result.rounds++);
            const uint64_t kib = residentKib();
            if (result.rounds <= kFirstRounds) result.first_kib = kib;
            result.most_kib = std::max(result.most_kib, kib);
        }
        all.next();
    }
    result.last_kib = residentKib();
    result.blocks = blocks;
    result.checksum = all.checksum.value();
    result.seconds = core_clock::now() - begin;
    result.ticks_per_second = static_cast<double>(core_clock::ticks() - begin_ticks) / result.seconds;
    result.median = all.durations.atShare(0.5);
    result.share_999 = all.durations.atShare(0.999);
    result.share_9999 = all.durations.atShare(0.9999);
    result.longest = all.durations.longest();
    result.interrupted = all.interrupted;
    result.longest_interrupted = all.longest_interrupted;
    return result;
}

}  // namespace reliability
