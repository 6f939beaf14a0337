#include "reference_engine/audio/beam_former.h"

#include <algorithm>

#include "reference_engine/audio/superdirective.h"
#include "reference_engine/engine_interface.h"
#include "reference_engine/routines/fixed_point.h"

namespace reference_engine {
namespace {

constexpr int kValues = kBlock * kLiveBeams;

// A weight table may be scaled up (shift above 0) or down.
int16_t scaledBack(int32_t sum, int shift) {
    if (shift <= 0) return saturate16(int64_t{sum} * (int64_t{1} << -shift));
    return saturate16((sum + (1 << (shift - 1))) >> shift);
}

// From one signal to the other over the block, linear.
void fade(const int16_t* from, const int16_t* to, int16_t* out) {
    for (int i = 0; i < kBlock; ++i) {
        out[i] = static_cast<int16_t>(from[i] + (to[i] - from[i]) * (i + 1) / kBlock);
    }
}

}  // namespace

void BeamFormer::init() {
    BeamDesign design;
    designSuperdirective(&design);
    quantise(design, &weights_);
    for (auto& line : lines_) line.clear();
    beams_ = {};
    location_ = next_ = 0;
}

int BeamFormer::otherThan(int location) {
    if (location != location_) return location_;
    next_ = (next_ + 1) % kLocations;
    if (next_ == location) next_ = (next_ + 1) % kLocations;
    return next_;
}

void BeamFormer::process(const MicrophoneBlock& in, int location, int16_t* out) {
    beams_.location[0] = location;
    beams_.location[1] = otherThan(location);
    int32_t sums[kValues] = {};
    int16_t steered[kValues];
    for (int m = 0; m < kMicrophones; ++m) {
        int16_t taps[kLiveBeams * kBeamTaps];
        for (int b = 0; b < kLiveBeams; ++b) {
            std::copy_n(weights_.coeffs[m][beams_.location[b]], kBeamTaps, taps + b * kBeamTaps);
        }
        lines_[m].push(in[m]);
        int16_t* signal = lines_[m].oldest();
        Interp1toNCore(kBlock, kLiveBeams, &signal, steered, taps, kBeamTaps);
        for (int i = 0; i < kValues; ++i) sums[i] += steered[i];
    }
    for (int i = 0; i < kBlock; ++i) {
        for (int b = 0; b < kLiveBeams; ++b) {
            beams_.samples[b][i] = scaledBack(sums[i * kLiveBeams + b], weights_.shift);
        }
    }
    fade(location == location_ ? beams_.samples[0] : beams_.samples[1], beams_.samples[0], out);
    location_ = location;
}

}  // namespace reference_engine
