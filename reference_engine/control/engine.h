// The engine: the stages of a block in order, and the state between blocks. There is one instance,
// as the C interface has no handle. Threads: one call at a time; init [setup], the paths [audio] rt-safe.
#pragma once

#include "reference_engine/audio/beam_former.h"
#include "reference_engine/audio/diffuseness.h"
#include "reference_engine/audio/direction_search.h"
#include "reference_engine/audio/echo/echo_canceller.h"
#include "reference_engine/audio/echo/residual_echo.h"
#include "reference_engine/audio/high_pass.h"
#include "reference_engine/audio/look_direction.h"
#include "reference_engine/audio/microphone_faults.h"
#include "reference_engine/audio/microphone_prediction.h"
#include "reference_engine/audio/microphone_spectra.h"
#include "reference_engine/audio/noise_reduction.h"
#include "reference_engine/audio/noise_test.h"
#include "reference_engine/audio/output.h"
#include "reference_engine/audio/receive_path.h"
#include "reference_engine/settings.h"

namespace reference_engine {

class Engine {
  public:
    void init();
    void processMicrophones(const int16_t* centre, const int16_t* circle, int16_t* out);
    void processReceivePath(const int16_t* in, int16_t* out);
    void startNoiseTest();

  private:
    void cancelEcho(MicrophoneBlock& in, MicrophoneBlock& out);
    void search(const MicrophoneBlock& block);
    bool mostlyEcho() const;
    float mostSharpness() const;
    void report(const MicrophoneBlock& microphones, const int16_t* out);
    void reportSteering(int location);

    bool ready_ = false;
    HighPass high_pass_;
    MicrophoneFaults faults_;
    MicrophonePrediction prediction_;
    EchoCanceller echo_canceller_;
    MicrophoneSpectra spectra_;
    ResidualEcho residual_echo_;
    Diffuseness diffuseness_;
    DirectionSearch search_;
    LookDirection look_;
    BeamFormer beam_former_;
    NoiseReduction noise_reduction_;
    Output output_;
    ReceivePath receive_path_;
    NoiseTest noise_test_;
    int reported_location_ = -1;
};

extern Engine g_engine;

}  // namespace reference_engine
