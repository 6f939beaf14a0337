// Acoustic echo canceller: predicts, for each microphone, what the loudspeaker adds to it, and takes that
// away. It works before the beam former, so that a change of look does not disturb it.
// Threads: init [setup]; the others [audio] rt-safe.
#pragma once

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

    // in: what the loudspeaker plays, and what the microphones hear, in the same 10 ms. out: the microphones
    // without the echo, with no delay of their own.
    void process(const int16_t* far_end, const MicrophoneBlock& in, MicrophoneBlock& out);

    // Decibels by which the microphones are lowered while the far end sounds, over the last second of it.
    float enhancementDb() const;

    // Energy of each stretch of the echo paths, mean of the microphones.
    const float (&pathEnergy() const)[kPartitions] { return path_.energy(); }

    // Power that the echo is expected to keep in the spectrum of a block of the output (kEchoFrame samples,
    // all but the block's 0), for those who want to take it away.
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
    bool far_silent_[kSpectra] = {};           // those that are zero throughout
    int newest_ = 0;
    EchoPath path_;
    EchoMismatch mismatch_;
    EchoKalman kalman_;
    float heard_ = 0;               // energy of the microphones while the far end sounds
    float left_ = 0;                // and of what is left of it
    LaneFft::Signals errors_ = {};  // a block of them at the end of a frame of zeros
};

}  // namespace reference_engine
