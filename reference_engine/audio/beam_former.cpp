#include "reference_engine/audio/beam_former.h"

#include <algorithm>
#include <functional>

#include "reference_engine/audio/superdirective.h"
#include "reference_engine/engine_interface.h"
#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/fixed_point.h"

namespace reference_engine {
namespace {

// A weight table may be scaled up (shift above 0) or down. Seven samples fit into 19 bits, so any shift from -12 on will do.
int16_t scaledBack(int32_t sum, int shift) {
    const int32_t scaled = shift <= 0 ? sum * (1 << -shift) : (sum + (1 << (shift - 1))) >> shift;
    return saturate16(scaled);
}

// From one signal to the other over the block, linear.
void fade(const int16_t* from, const int16_t* to, int16_t* out) {
    for (int i = 0; i < kBlock; ++i) {
        out[i] = static_cast<int16_t>(from[i] + (to[i] - from[i]) * (i + 1) / kBlock);
    }
}

void subtract(const BeamDesign& b, BeamDesign* from) {
    double* const taps = &from->taps[0][0][0];
    std::transform(taps, taps + sizeof b.taps / sizeof *taps, &b.taps[0][0][0], taps, std::minus<>());
}

}  // namespace

void BeamFormer::init() {
    BeamDesign robust, sharp;
    designSuperdirective(&robust, &sharp);
    subtract(robust, &sharp);
    quantise(robust, kMostGain, &robust_);
    quantise(sharp, kMostGainUnsaturated, &difference_);
    for (auto& line : lines_) line.clear();
    sharpness_.init();
    beams_ = {};
    location_ = next_ = 0;
}

int BeamFormer::otherThan(int location) {
    if (location != location_) return location_;
    next_ = (next_ + 1) % kLocations;
    if (next_ == location) next_ = (next_ + 1) % kLocations;
    return next_;
}

// From one share to the other over the block, linear.
void BeamFormer::blend(const int16_t* robust, const int16_t* difference, int16_t* out) const {
    const float from = sharpness_.before();
    const float step = (sharpness_.share() - from) / kBlock;
    for (int i = 0; i < kBlock; ++i) {
        const float share = from + step * static_cast<float>(i + 1);
        out[i] = sampleOf(static_cast<float>(robust[i]) + share * static_cast<float>(difference[i]));
    }
}

// Of the microphones' last block, through weights for a location.
FOR_WIDE_REGISTERS void BeamFormer::filter(const BeamWeights& weights, int location, int16_t* out) {
    int32_t sums[kBlock] = {};
    for (int m = 0; m < kMicrophones; ++m) {
        int16_t taps[kBeamTaps], steered[kBlock];
        std::copy_n(weights.coeffs[m][location], kBeamTaps, taps);
        int16_t* signal = lines_[m].oldest();
        Interp1toNCore(kBlock, 1, &signal, steered, taps, kBeamTaps);
        for (int i = 0; i < kBlock; ++i) sums[i] += steered[i];
    }
    for (int i = 0; i < kBlock; ++i) out[i] = scaledBack(sums[i], weights.shift);
}

FOR_WIDE_REGISTERS void BeamFormer::process(const MicrophoneBlock& in, int location, bool sharpness_follows,
                                            float most_sharpness, int16_t* out) {
    beams_.location[0] = location;
    beams_.location[1] = otherThan(location);
    for (int m = 0; m < kMicrophones; ++m) lines_[m].push(in[m]);
    int16_t robust[kLiveBeams][kBlock], difference[kLiveBeams][kBlock];
    for (int b = 0; b < kLiveBeams; ++b) {
        filter(robust_, beams_.location[b], robust[b]);
        filter(difference_, beams_.location[b], difference[b]);
    }
    sharpness_.update(robust[0], difference[0], sharpness_follows, most_sharpness);
    for (int b = 0; b < kLiveBeams; ++b) blend(robust[b], difference[b], beams_.samples[b]);
    if (location == location_) {
        std::copy_n(beams_.samples[0], kBlock, out);
    } else {
        fade(beams_.samples[1], beams_.samples[0], out);
    }
    location_ = location;
}

}  // namespace reference_engine
