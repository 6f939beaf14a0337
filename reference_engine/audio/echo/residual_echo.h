// The power of the echo that the canceller leaves, for the stages after it: the largest of three estimates. The canceller
// expects what its filter has not learned. The leakage is the share of the removed echo's power whose changes are met
// again in the errors (Valin: On adjusting the learning rate in frequency domain echo cancellation with double-talk, IEEE
// Transactions on Audio, Speech and Language Processing 15(3), 2007): it finds what the filter does not expect, such as a
// loudspeaker that distorts. And an error that holds the negative of the removed echo was made by removing it: the path has
// changed, and its share says how much of both is residual echo. Threads: init [setup]; update [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo/echo_format.h"
#include "reference_engine/audio/microphone_spectra.h"
#include "reference_engine/audio/spectral_frame.h"

namespace reference_engine {

class ResidualEcho {
  public:
    void init();

    // in: the spectra; what the canceller expects in its own spectrum, and the share of the echo that it
    // does not know; how sharp the beam is.
    void update(const MicrophoneSpectra& spectra, const EchoBins& expected, float unknown_share,
                float sharpness);

    // One power a bin: of the spectra, at the microphones; and behind the beam, in units of readPower in the frame that ends
    // with this block. Robust beams are assumed to pass it unattenuated.
    const float (&power() const)[MicrophoneSpectra::kBins] { return power_; }
    const float (&framePower() const)[kSpectralBins] { return frame_power_; }

  private:
    static constexpr int kBins = MicrophoneSpectra::kBins;
    static constexpr int kBandBins = 8;
    static constexpr int kBands = (kBins + kBandBins - 1) / kBandBins;
    static_assert(kBins == kSpectralBins && MicrophoneSpectra::kFrame == kSpectralSize);

    void followPowers(const MicrophoneSpectra& spectra);
    void followOpposition(const MicrophoneSpectra& spectra);

    float to_frame_[kBins] = {};    // from the spectra to the frame's spectrum
    float error_mean_[kBins] = {};  // of the microphones' power
    float echo_mean_[kBins] = {};   // of the removed echo's power
    float echo_[kBins] = {};        // the same with a decay
    float common_[kBands] = {};     // changes of both
    float changes_[kBands] = {};    // of the echo
    float opposition_ = 0;          // of error and removed echo; 1: one is the negative of the other
    float power_[kBins] = {};
    float frame_power_[kSpectralBins] = {};
};

}  // namespace reference_engine
