// Acoustic echo canceller: predicts the echo of the loudspeaker at each microphone and subtracts it. It
// precedes the beam former, so that a change of look direction does not disturb it. Threads: init
// [setup]; the others [audio] rt-safe.
#pragma once

#include "reference_engine/audio/delay_line.h"
#include "reference_engine/audio/echo_format.h"
#include "reference_engine/audio/echo_kalman.h"
#include "reference_engine/audio/echo_mismatch.h"
#include "reference_engine/audio/echo_path.h"
#include "reference_engine/audio/lane_fft.h"
#include "reference_engine/routines/real_fft.h"

namespace reference_engine {

class EchoCanceller {
  public:
    void init();

    // in: the far end as played and the microphones, of the same 10 ms. out: the microphones
    // without the echo, with no delay of their own.
    void process(const int16_t* far_end, const MicrophoneBlock& in, MicrophoneBlock& out);

    // Echo attenuation at the microphones in decibels, over the last second in which the far end was active.
    float enhancementDb() const;

    // Energy of each partition of the echo paths, mean of the microphones.
    const float (&pathEnergy() const)[kPartitions] { return path_.energy(); }

    // Expected power of the residual echo in the spectrum of an output block (kEchoFrame samples, all but the
    // block's 0).
    const float (&residual() const)[kEchoBins] { return kalman_.residual(); }

  private:
    static constexpr int kSpectra = (kPartitions - 1) * kPartitionBlocks + 1;

    void transformFarEnd();
    void subtract(const int32_t (&echo)[kMicrophones][kBlock], const MicrophoneBlock& in,
                  MicrophoneBlock& out);
    void measure(const MicrophoneBlock& in, const MicrophoneBlock& out);
    void learn();

    RealFft fft_;
    LaneFft lane_fft_;
    DelayLine<kEchoTaps - 1> far_end_;
    EchoSpectrum far_spectra_[kSpectra] = {};  // of the last blocks, in a ring
    bool far_silent_[kSpectra] = {};           // true: all zero
    int newest_ = 0;
    EchoPath path_;
    EchoMismatch mismatch_;
    EchoKalman kalman_;
    float heard_ = 0;               // energy of the microphones while the far end is active
    float left_ = 0;                // and of the output
    LaneFft::Signals errors_ = {};  // one block at the end of a frame of zeros

    // Used within learn() alone. They are here because an audio thread's stack may be small.
    LaneFft::Spectra error_spectra_ = {};
    LaneFft::Spectra weighted_ = {};
    LaneFft::Signals correction_ = {};
};

}  // namespace reference_engine
