#include "host/audio/audio_path.h"

#include <cxxabi.h>
#include <x86intrin.h>

#include <algorithm>

#include "host/audio/engine_block.h"

namespace se_host {
namespace {

size_t firstMicrophone(const Wiring& wiring) {
    const auto found = std::find_if(wiring.microphones.begin(), wiring.microphones.end(),
                                    [](int32_t channel) { return channel != Wiring::kNone; });
    return found == wiring.microphones.end() ? 0 : static_cast<size_t>(found - wiring.microphones.begin());
}

}  // namespace

AudioPath::AudioPath(const Wiring& wiring, uint32_t quantum, LiveEngine& engine)
    : stream_(wiring, latencyOf(quantum)), engine_(engine), signals_(firstMicrophone(wiring)) {}

void AudioPath::processWithEdits(Block& block) {
    engine_.applyEdits();
    const bool bypass = bypass_.load(std::memory_order_relaxed);
    processInEngine(Block::kChannels, block.captured, block.far_end, bypass, block.mono);
    engine_.publishSome();
    (bypass ? bypassed_ : blocks_).add();
}

void AudioPath::process(Block& block) {
    const uint64_t begin = __rdtsc();
    try {
        processWithEdits(block);
        times_.add(__rdtsc() - begin);
    } catch (const abi::__forced_unwind&) {  // the engine ends the thread
        throw;
    } catch (...) {
        std::fill(std::begin(block.mono), std::end(block.mono), int16_t{0});
        failed_.add();
    }
    signals_.block(block);
}

}  // namespace se_host
