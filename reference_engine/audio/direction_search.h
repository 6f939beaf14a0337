// Says from which look direction sound arrives: the steered response power of the phase-transformed
// microphones (DiBiase: A high-accuracy, low-latency technique for talker localization in reverberant
// environments, Brown University 2000), averaged over the last fractions of a second of sound above the
// noise and above what is left of the echo: a loudspeaker is not to draw the beam away from a talker. Threads: init [setup]; update [audio] rt-safe.
#pragma once

#include <complex>

#include "reference_engine/audio/echo_format.h"
#include "reference_engine/routines/real_fft.h"

namespace reference_engine {

class DirectionSearch {
  public:
    void init();

    // Forgets what it heard; the noise floor is kept.
    void restart();

    // in: the block; `echo`, power expected of the echo in its spectrum (kEchoFrame samples, all but the
    // block's 0); `gate`, the energy (sum of squares, mean of the microphones) below which it is not heard.
    void update(const MicrophoneBlock& block, const float (&echo)[kEchoBins], uint64_t gate);

    // True when the last block added to the response.
    bool active() const { return active_; }

    // Power from each direction, 0 to 1; 1: all microphones agree that sound comes from there alone.
    const float (&response() const)[kLocations] { return response_; }

  private:
    static constexpr int kFrame = kEchoFrame;  // samples under analysis
    static constexpr int kFirstBin = 20;       // 625 Hz: below, the array is too small to tell
    static constexpr int kBins = 172;          // up to 5970 Hz: above, speech has little and its beams split
    using Complex = std::complex<float>;

    void analyse(const MicrophoneBlock& block);
    void follow(const float (&echo)[kEchoBins]);
    float weighBins();
    float powerFrom(int location) const;

    RealFft fft_;
    float window_[kFrame] = {};
    float frames_[kMicrophones][kFrame] = {};
    float power_[kBins] = {};         // mean of the microphones
    float echo_[kBins] = {};          // of which the echo may have as much
    float smoothed_[kBins] = {};      // the power over some blocks
    float least_[kBins] = {};         // of the smoothed power, in the present stretch of blocks
    float least_before_[kBins] = {};  // and in the one before it
    float weight_[kBins] = {};        // 0 for noise, towards 1 for sound that stands above it
    // Real and imaginary parts apart, for the sake of SIMD: unit phases of the microphones, and the steering
    // that lines them up.
    float phase_re_[kMicrophones][kBins] = {};
    float phase_im_[kMicrophones][kBins] = {};
    float steer_re_[kLocations][kMicrophones][kBins] = {};
    float steer_im_[kLocations][kMicrophones][kBins] = {};
    float response_[kLocations] = {};
    bool active_ = false;
    int floor_age_ = 0;  // blocks in the present stretch
};

}  // namespace reference_engine
