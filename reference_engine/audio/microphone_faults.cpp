#include "reference_engine/audio/microphone_faults.h"

#include <algorithm>
#include <iterator>

#include "reference_engine/audio/meters.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kMemory = 0.9f;         // a block
constexpr float kAudible = 5000;        // energy of a block: -75 dBFS; below, levels say little
constexpr float kFaulty = 32;           // ratio of energies, up or down: 15 dB
constexpr float kRecovered = 10;        // 10 dB: of a microphone that was faulty
constexpr int kBlocksUntilFaulty = 30;  // 0.3 s
constexpr int kBlocksUntilRecovered = 100;

}  // namespace

bool MicrophoneFaults::differs(int microphone, float usual) const {
    const float most = faulty_[microphone] ? kRecovered : kFaulty;
    return level_[microphone] > most * usual || most * level_[microphone] < usual;
}

void MicrophoneFaults::update(const MicrophoneBlock& in) {
    for (int m = 0; m < kMicrophones; ++m) {
        const float energy = static_cast<float>(energyOf(in[m]));
        level_[m] = flushed(kMemory * level_[m] + (1 - kMemory) * energy);
    }
    float sorted[kMicrophones];
    std::copy(std::begin(level_), std::end(level_), sorted);
    std::sort(std::begin(sorted), std::end(sorted));
    const float usual = sorted[kMicrophones / 2];
    if (usual < kAudible) return;
    auto count = std::count(std::begin(faulty_), std::end(faulty_), true);
    for (int m = 0; m < kMicrophones; ++m) {
        if (differs(m, usual) == faulty_[m]) {
            blocks_[m] = 0;
        } else if (++blocks_[m] >= (faulty_[m] ? kBlocksUntilRecovered : kBlocksUntilFaulty)) {
            if (!faulty_[m] && count == kMostFaulty) continue;
            count += faulty_[m] ? -1 : 1;
            faulty_[m] = !faulty_[m];
            blocks_[m] = 0;
        }
    }
}

bool MicrophoneFaults::any() const {
    return std::any_of(std::begin(faulty_), std::end(faulty_), [](bool faulty) { return faulty; });
}

int MicrophoneFaults::firstWorking() const {
    return static_cast<int>(std::find(std::begin(faulty_), std::end(faulty_), false) - std::begin(faulty_));
}

}  // namespace reference_engine
