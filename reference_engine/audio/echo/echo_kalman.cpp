#include "reference_engine/audio/echo/echo_kalman.h"

#include <algorithm>
#include <iterator>

#include "reference_engine/lanes/lane_kernels.h"
#include "reference_engine/lanes/wide_registers.h"

namespace reference_engine {
namespace {

constexpr float kFirstUncertainty = 0.3f;  // of the first partition: an echo path of -5 dB
constexpr float kFall = 0.7f;              // from one partition to the next: a reverberation time of 0.8 s
constexpr float kNoiseMemory = 0.6f;       // a block

// Of a sample's information that each of the frames which contain it may use: the frames count a sample once. Where there is one
// in each block, and in every second one.
constexpr float kShareOfSample[kPartitionBlocks] = {0.3f, 0.44f};

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

void EchoKalman::update(const EchoGroups (&path_power)[kPartitions], const FarEnd& far_end,
                        const EchoBins& error_power, const PartitionSet& learning, int blocks,
                        EchoBins (&step)[kPartitions]) {
    LaneUncertainty partitions[kPartitions];
    int learn = 0, end = kPartitions;
    for (int p = 0; p < kPartitions; ++p) {
        const FarSpectrum& x = far_end.spectrum(p * kPartitionBlocks);
        partitions[learning[static_cast<size_t>(p)] ? learn++ : --end] = {
            uncertainty_[p].groups(), path_power[p].data(), x.power.groups(), appearing_[p],
            step[p].groups()};
    }
    const LaneKalman constants = {forgetting_, kNoiseMemory, kShareOfFrame, kShareOfSample[blocks - 1]};
    laneKernels().kalman(partitions, learn, kPartitions, constants, error_power.groups(), kEchoGroups,
                         noise_.groups(), residual_.groups());
}

FOR_WIDE_REGISTERS void EchoKalman::expect(const FarEnd& far_end) {
    const Group* power[kPartitions];
    for (int p = 0; p < kPartitions; ++p) power[p] = far_end.spectrum(p * kPartitionBlocks).power.groups();
    for (int g = 0; g < kEchoGroups; ++g) {
        Group unknown = {};
        for (int p = 0; p < kPartitions; ++p) unknown += uncertainty_[p].groups()[g] * power[p][g];
        residual_.groups()[g] = unknown * kShareOfFrame;
    }
}

FOR_WIDE_REGISTERS void EchoKalman::raise(int partition, const EchoBins& a, const EchoBins& b) {
    float* uncertainty = uncertainty_[partition].value;
    for (int k = 0; k < kEchoBins; ++k) uncertainty[k] = std::max(uncertainty[k], a.value[k] + b.value[k]);
}

void EchoKalman::restartFrom(const EchoKalman& other) {
    std::copy(std::begin(other.uncertainty_), std::end(other.uncertainty_), uncertainty_);
}

}  // namespace reference_engine
