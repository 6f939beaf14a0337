// Acoustic echo canceller: predicts the echo of the loudspeaker at each microphone and subtracts it. It precedes the beam
// former, so that a change of look direction does not disturb it. While the paths match it predicts the echo of two blocks
// together, and learns after the second one. Threads: init [setup]; the others [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo/echo_alignment.h"
#include "reference_engine/audio/echo/echo_delay.h"
#include "reference_engine/audio/echo/echo_drift.h"
#include "reference_engine/audio/echo/echo_filter.h"
#include "reference_engine/audio/echo/echo_kalman.h"
#include "reference_engine/audio/echo/echo_turns.h"
#include "reference_engine/audio/echo/far_end.h"
#include "reference_engine/audio/echo/first_taps.h"
#include "reference_engine/audio/echo/starting_echo.h"
#include "reference_engine/lanes/lane_fft.h"

namespace reference_engine {

class EchoCanceller {
  public:
    void init();

    // in: the far end as played and the microphones, of the same 10 ms. out: the microphones without the echo, with no
    // delay of their own.
    void process(const int16_t* far_end, const MicrophoneBlock& in, MicrophoneBlock& out);

    // Whether it does anything: not while the loudspeaker is silent.
    bool active() const { return !far_end_.silent(); }

    // Echo attenuation at the microphones in decibels, over the last second in which the far end was active.
    float enhancementDb() const;

    // Energy of each partition of the echo paths, mean of the microphones, from the delay on.
    const float (&pathEnergy() const)[kPartitions] { return filter_.energy(); }
    float delayMs() const { return static_cast<float>(far_end_.delay()) * 1000 / kSampleRate; }
    float driftPpm() const { return drift_.partsPerMillion(); }

    // Share of the echo that the filter does not know yet, by its own expectation: 0 to 1.
    float unknownShare() const { return unknown_share_; }

    // The spectra of the first partition of the paths, kEchoBins, a lane a microphone.
    const LaneBin* firstPaths() const { return filter_.firstPaths(); }

    // Expected power of the residual echo in the spectrum of the last kEchoWindow samples of the output.
    const EchoBins& residual() const { return expected_; }

  private:
    void remember(const MicrophoneBlock& in);
    const Lanes* microphones() const { return &microphones_.values()->lanes; }  // the last frame
    void output(MicrophoneBlock& out) const;
    int newest() const { return kEchoFrame - (1 + later_) * kBlock; }  // block of echo_ and errors_
    int together() const { return predicted_ + later_; }               // blocks whose echo was predicted
    void constrain();
    void predict();
    void subtract();
    void followDelay();
    void measure(const MicrophoneBlock& in, const MicrophoneBlock& out);
    void learn();
    bool settled() const;
    void measureUnknown();
    void compareWithShadow();
    void restart();

    LaneFft fft_;
    FarEnd far_end_;
    EchoDelay delay_;
    EchoAlignment alignment_;
    EchoDrift drift_;
    EchoFilter filter_;
    FirstTaps first_taps_;
    EchoKalman kalman_;
    EchoKalman shadow_kalman_;
    StartingEcho starting_echo_;
    EchoBins expected_;
    EchoTurns turns_;
    bool settled_ = false;
    int later_ = 0;      // blocks of the predicted echo that are still to come
    int predicted_ = 1;  // blocks ago; 1: for the newest one

    SlidingWindow<LaneSample, kEchoFrame> microphones_;
    std::optional<int> found_delay_;
    bool restart_after_move_ = false;
    float unknown_share_ = 1;
    float main_left_ = 0;  // energy of the errors at the first microphone, over a few blocks
    float shadow_left_ = 0;
    float heard_ = 0;  // energy of the microphones while the far end is active
    float left_ = 0;   // and of the output

    // Used within a block alone. They are here because an audio thread's stack may be small.
    alignas(LaneBin) LaneSignals signals_ = {};
    alignas(LaneBin) LaneSignals echo_ = {};
    alignas(LaneBin) LaneSignals errors_ = {};
    float echo_energy_ = 0;                        // at the first microphone, of the window
    Lanes newest_echo_ = {}, newest_errors_ = {};  // energies of the newest block
    LaneSpectra spectra_ = {};
};

}  // namespace reference_engine
