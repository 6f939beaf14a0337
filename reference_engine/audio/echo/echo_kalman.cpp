#include "reference_engine/audio/echo/echo_kalman.h"

#include <algorithm>
#include <iterator>

#include "reference_engine/lanes/lane_kernels.h"

namespace reference_engine {
namespace {

constexpr float kFirstUncertainty = 0.3f;  // of the first partition: an echo path of -5 dB
constexpr float kFall = 0.7f;              // from one partition to the next: a reverberation time of 0.8 s
constexpr float kNoiseMemory = 0.6f;       // a block
constexpr float kTiny = 1e-3f;             // against division by zero; samples are integers

// Of a sample's information that each of the frames which contain it may use: the frames count a sample once.
constexpr float kShareOfSample = 0.4f;

}  // namespace

void EchoKalman::init(float forgetting, float appearing) {
    forgetting_ = forgetting;
    float fall = 1;
    for (int p = 0; p < kPartitions; ++p) {
        std::fill(std::begin(uncertainty_[p].value), std::end(uncertainty_[p].value),
                  kFirstUncertainty * fall);
        appearing_[p] = appearing * fall;
        fall *= kFall;
    }
    residual_ = EchoBins{};
    noise_ = EchoBins{};
}

void EchoKalman::expect(const EchoBins (&path_power)[kPartitions], const FarEnd& far_end) {
    residual_ = EchoBins{};
    for (int p = 0; p < kPartitions; ++p) {
        laneKernels().expect(uncertainty_[p].groups(), path_power[p].groups(),
                             far_end.spectrum(p * kPartitionBlocks).power.groups(), 1 - forgetting_,
                             appearing_[p], kEchoGroups, residual_.groups());
    }
    for (int g = 0; g < kEchoGroups; ++g) residual_.groups()[g] *= kShareOfFrame;
}

void EchoKalman::observe(const EchoBins& error_power) {
    for (int g = 0; g < kEchoGroups; ++g) {
        const Lanes power = error_power.groups()[g];
        const Lanes mean = noise_.groups()[g] * kNoiseMemory + power * (1 - kNoiseMemory);
        noise_.groups()[g] = mean;
        expected_.groups()[g] = residual_.groups()[g] + (mean > power ? mean : power) + kTiny;
    }
}

void EchoKalman::learn(int partition, const FarSpectrum& far_end, EchoBins* step) {
    laneKernels().learn(uncertainty_[partition].groups(), far_end.power.groups(), expected_.groups(),
                        kShareOfSample * kShareOfFrame, kEchoGroups, step->groups());
}

void EchoKalman::raise(int partition, const EchoBins& a, const EchoBins& b) {
    float* uncertainty = uncertainty_[partition].value;
    for (int k = 0; k < kEchoBins; ++k) uncertainty[k] = std::max(uncertainty[k], a.value[k] + b.value[k]);
}

void EchoKalman::restartFrom(const EchoKalman& other) {
    std::copy(std::begin(other.uncertainty_), std::end(other.uncertainty_), uncertainty_);
}

}  // namespace reference_engine
