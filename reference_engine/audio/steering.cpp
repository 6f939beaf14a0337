#include "reference_engine/audio/steering.h"

#include <cmath>

#include "reference_engine/audio/geometry.h"
#include "reference_engine/lanes/lane_kernels.h"
#include "reference_engine/routines/elementary.h"

namespace reference_engine {

void Steering::init() {
    for (int d = 0; d < kOpposite; ++d) {
        for (int m = 0; m < kSteered; ++m) {
            const double lead = leadOf(m + 1, azimuthOf(d));
            for (int k = 0; k < kBins; ++k) {
                const double angle =
                    -2 * M_PI * (kFirstBin + k) * kSampleRate / MicrophoneSpectra::kFrame * lead;
                turns_[k][m].re[d] = static_cast<float>(cosine(angle));
                turns_[k][m].im[d] = static_cast<float>(sine(angle));
            }
        }
    }
}

void Steering::powers(const LaneBin* bins, const float (&weight)[kBins], float (&powers)[kLocations]) const {
    Lanes ahead, behind;
    laneKernels().steer(bins, turns_[0], weight, kBins, &ahead, &behind);
    float weights = 0;
    for (const float of_bin : weight) weights += of_bin;
    const float most = weights * kMicrophones * kMicrophones;
    for (int d = 0; d < kOpposite; ++d) {
        powers[d] = ahead[d] / most;
        powers[kOpposite + d] = behind[d] / most;
    }
}

}  // namespace reference_engine
