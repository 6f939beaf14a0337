#include "reference_engine/audio/late_reverberation.h"

#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kDecay = 0.63f;  // a block: 60 dB in 0.3 s
// Of the speech's power, a block: behind the beam, from a talker at arm's length to across a table. More of it lowers the talker, and
// improves neither the ratio to what disturbs nor intelligibility.
constexpr float kShare = 0.03f;

}  // namespace

FOR_WIDE_REGISTERS void LateReverberation::update(const float (&speech)[kSpectralBins]) {
    newest_ = (newest_ + 1) % kDelay;
    for (int k = 0; k < kSpectralBins; ++k) speech_[newest_][k] = speech[k];
    const float(&reflected)[kSpectralBins] = speech_[(newest_ + 1) % kDelay];
    for (int k = 0; k < kSpectralBins; ++k) power_[k] = flushed(kDecay * power_[k] + kShare * reflected[k]);
}

}  // namespace reference_engine
