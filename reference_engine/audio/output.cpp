#include "reference_engine/audio/output.h"

#include <cmath>

#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/elementary.h"

namespace reference_engine {
namespace {

constexpr float kRejectionStep = 0.1f;  // of the remaining difference, a block: 88 % in 200 ms

// From `from` to `to` over the block, linear.
int64_t faded(int64_t from, int64_t to, int i) {
    return from + (to - from) * (i + 1) / kBlock;
}

}  // namespace

// The rejection follows its target slowly; its product with the output gain is reached within the block.
int32_t Output::nextGain(bool rejected, const Settings& settings) {
    const float target = rejected ? static_cast<float>(amplitudeOf(-settings.rear_rejection_db)) : 1.0f;
    rejection_ += kRejectionStep * (target - rejection_);
    if (std::abs(target - rejection_) < 1e-3f) rejection_ = target;
    return static_cast<int32_t>(static_cast<float>(settings.output_gain_q10 * 32) * rejection_);
}

FOR_WIDE_REGISTERS void Output::play(const int16_t* in, bool rejected, const Settings& settings,
                                     uint64_t sample_clock, int16_t* out) {
    const int32_t gain = nextGain(rejected, settings);
    if (gain_ < 0) gain_ = gain;
    int32_t samples[kBlock];
    for (int i = 0; i < kBlock; ++i) {
        const bool muted = static_cast<int64_t>(sample_clock) + i < settings.unmute_at_sample;
        samples[i] = muted ? 0 : static_cast<int32_t>((in[i] * faded(gain_, gain, i) + 16384) >> 15);
    }
    limiter_.process(samples, out);
    gain_ = gain;
}

}  // namespace reference_engine
