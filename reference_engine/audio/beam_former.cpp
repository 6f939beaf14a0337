#include "reference_engine/audio/beam_former.h"

#include "reference_engine/audio/superdirective.h"
#include "reference_engine/engine_interface.h"
#include "reference_engine/routines/fixed_point.h"

namespace reference_engine {
namespace {

constexpr int kValues = kBlock * kLocations;

// A weight table may be scaled up (shift above 0) or down.
int16_t scaledBack(int32_t sum, int shift) {
    if (shift <= 0) return saturate16(int64_t{sum} * (int64_t{1} << -shift));
    return saturate16((sum + (1 << (shift - 1))) >> shift);
}

}  // namespace

void BeamFormer::init() {
    BeamDesign design;
    designSuperdirective(&design);
    quantise(design, &weights_);
    for (auto& line : lines_) line.clear();
}

void BeamFormer::process(const MicrophoneBlock& in, Beams& beams) {
    int32_t sums[kValues] = {};
    int16_t steered[kValues];
    for (int m = 0; m < kMicrophones; ++m) {
        lines_[m].push(in[m]);
        int16_t* signal = lines_[m].oldest();
        Interp1toNCore(kBlock, kLocations, &signal, steered, weights_.coeffs[m], kBeamTaps);
        for (int i = 0; i < kValues; ++i) sums[i] += steered[i];
    }
    for (int i = 0; i < kBlock; ++i) {
        for (int d = 0; d < kLocations; ++d) {
            beams[i][d] = scaledBack(sums[i * kLocations + d], weights_.shift);
        }
    }
}

}  // namespace reference_engine
