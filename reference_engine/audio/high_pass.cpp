// An impulse minus a Hann-shaped average over 127 samples: gain 0 at 0 Hz, 0.5 at about 130 Hz, flat above
// 260 Hz. The coefficients sum to exactly 0, so an offset of any size is removed completely. Their magnitudes
// sum to less than 2, so the routine's 32-bit sums cannot wrap.
#include "reference_engine/audio/high_pass.h"

#include <cmath>

#include "reference_engine/engine_interface.h"
#include "reference_engine/routines/elementary.h"

namespace reference_engine {

void HighPass::init() {
    constexpr int kSpan = 2 * kDelay + 1;
    int sum = 0;
    coeffs_[0] = 0;  // the filter has one tap less
    for (int k = 0; k < kSpan; ++k) {
        const double hann = (1 - cosine(2 * M_PI * (k + 1) / (kSpan + 1))) / (kSpan + 1);
        coeffs_[k + 1] = static_cast<int16_t>(std::lround(-32768 * hann));
        sum += coeffs_[k + 1];
    }
    coeffs_[1 + kDelay] = static_cast<int16_t>(coeffs_[1 + kDelay] - sum);
    for (auto& line : lines_) line.clear();
    far_end_.clear();
}

void HighPass::process(const MicrophoneBlock& in, MicrophoneBlock& out) {
    for (int m = 0; m < kMicrophones; ++m) filter(lines_[m], in[m], out[m]);
}

void HighPass::processFarEnd(const int16_t* in, int16_t* out) {
    filter(far_end_, in, out);
}

void HighPass::filter(Line& line, const int16_t* in, int16_t* out) {
    line.push(in);
    ComputeRFir(line.oldest(), coeffs_, out, kTaps - 1, kBlock, 1);
}

}  // namespace reference_engine
