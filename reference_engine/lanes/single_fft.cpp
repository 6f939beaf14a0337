#include "reference_engine/lanes/single_fft.h"

#include <cmath>

#include "reference_engine/routines/elementary.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {

void SingleFft::init(int size) {
    size_ = size;
    fft_.init(size / kLanes);
    for (int k = 0; k <= size / kLanes / 2; ++k) {
        for (int j = 0; j < kLanes; ++j) {
            const double angle = -2 * M_PI * j * k / size;
            turns_[k].re[j] = flushed(static_cast<float>(cosine(angle)));
            turns_[k].im[j] = flushed(static_cast<float>(sine(angle)));
        }
    }
}

void SingleFft::forward(const float* samples, float* re, float* im) {
    LaneBin phases[kMostPhaseBins];
    fft_.forward(reinterpret_cast<const Lanes*>(samples), phases);
    laneKernels().combine(phases, turns_, size_, re, im);
}

}  // namespace reference_engine
