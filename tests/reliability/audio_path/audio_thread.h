// The audio thread of the proof, sealed: from before its first block on the kernel ends the process at any system
// call of this thread but its exit. Other threads may make any, so that edits come in from one.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "tests/reliability/audio_path/calls.h"
#include "tests/reliability/support/sound.h"
#include "webrtc_common/se_wrapper.h"

namespace reliability {

// What a block does in addition, so that the proof is seen to fail.
enum class Violation { kNone, kAllocation, kLock, kSystemCall };

class AudioThread {
  public:
    static constexpr uint64_t kBlocksARound = 500;

    // Prepares buffers, filter and DFT objects. needs: a started engine.
    AudioThread(uint64_t blocks, Violation violation);

    // The body of the thread. It never returns: the thread ends by a system call.
    [[noreturn]] void run();

    // The thread processes a round of blocks and then waits, without a system call, until it is let go on: blocks
    // and edits do not overlap.
    bool waitForRound(uint64_t round) const;  // false: that was the last one
    void letGoOn(uint64_t round) { allowed_ = round + 1; }

    // Once the thread has ended.
    bool couldSeal() const { return could_seal_; }
    const Calls& calls() const { return calls_; }
    uint64_t checksum() const { return checksum_.value(); }

  private:
    void process(uint64_t block);
    void callHooks();
    void violate() const;

    const uint64_t blocks_;
    const Violation violation_;
    Sound sound_;
    Checksum checksum_;
    quill::media::se_wrapper::Filter filter_{quill::media::se_wrapper::kHighPass600Hz};
    std::unique_ptr<unsigned char[]> dft_object_;
    Calls calls_{};
    bool could_seal_ = false;
    std::atomic<uint64_t> done_{0}, allowed_{0};  // rounds
    std::atomic<bool> ended_{false};
};

}  // namespace reliability
