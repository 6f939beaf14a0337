#include "reference_engine/audio/echo/far_end.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "reference_engine/lanes/lane_kernels.h"
#include "reference_engine/routines/elementary.h"
#include "reference_engine/routines/fixed_point.h"

namespace reference_engine {
FarSpectrum& FarEnd::Ring::newer() {
    newest = (newest + kSpectra - 1) % kSpectra;
    known = std::min(known + 1, kSpectra);
    return spectra[newest];
}

FarSpectrum& FarEnd::Ring::older() {
    return spectra[(newest + known++) % kSpectra];
}

void FarEnd::init() {
    history_.clear();
    std::fill(std::begin(aligned_), std::end(aligned_), int16_t{0});
    silent_blocks_ = kHistoryBlocks;
    delay_ = 0;
    for (FarSpectrum& spectrum : rings_[present_].spectra) spectrum = FarSpectrum{};
    rings_[present_].known = kSpectra;
    moving_ = false;
    fft_.init(kEchoFrame);
    designInterpolation();
}

// Sincs under squared cosines (Laakso and others: Splitting the unit delay, IEEE Signal Processing Magazine 13(1), 1996).
void FarEnd::designInterpolation() {
    for (int phase = 0; phase <= kPhases; ++phase) {
        for (int k = 0; k < 2 * kReach; ++k) {
            const double distance = k + 1 - kReach - static_cast<double>(phase) / kPhases;
            const double window = cosine(M_PI_2 * distance / (kReach + 1));
            const double sinc = distance == 0 ? 1 : sine(M_PI * distance) / (M_PI * distance);
            taps_[phase][k] = static_cast<float>(sinc * window * window);
        }
    }
}

void FarEnd::push(const int16_t* block, double drift) {
    std::copy_n(block, kBlock, history_.advance());
    const bool silent = std::all_of(block, block + kBlock, [](int16_t sample) { return sample == 0; });
    silent_blocks_ = silent ? std::min(silent_blocks_ + 1, kHistoryBlocks) : 0;
    align(moving_ ? 0 : drift);
}

void FarEnd::align(double drift) {
    std::copy(aligned_ + kBlock, aligned_ + kEchoFrame, aligned_);
    const double before = delay_;
    delay_ = std::clamp(delay_ + drift, 0.0, double{kLongestDelay});
    const double first = kHistory - kBlock - before;
    const double step = 1 - (delay_ - before) / kBlock;
    int16_t* const out = aligned_ + kEchoFrame - kBlock;
    if (step == 1 && first == std::floor(first)) {
        std::copy_n(history_.values() + static_cast<int>(first), kBlock, out);
    } else {
        interpolate(first - 1 + step, step, out);
    }
}

// Samples beyond the newest one are taken as 0.
void FarEnd::interpolate(double position, double step, int16_t* out) const {
    constexpr int kSamples = kBlock + 2 * kReach + 2;
    const int oldest = static_cast<int>(position) + 1 - kReach;
    float samples[kSamples] = {};
    std::copy(history_.values() + oldest, history_.values() + std::min(oldest + kSamples, kHistory), samples);
    int place[kBlock], phase[kBlock];
    float share[kBlock], sums[kBlock];
    for (int i = 0; i < kBlock; ++i) {
        const double at = position + i * step;
        const int index = static_cast<int>(at);
        const float phases = static_cast<float>(at - index) * kPhases;
        place[i] = index + 1 - kReach - oldest;
        phase[i] = std::min(static_cast<int>(phases), kPhases - 1);
        share[i] = phases - static_cast<float>(phase[i]);
    }
    laneKernels().interpolate(samples, reinterpret_cast<const Lanes*>(taps_), place, phase, share, kBlock,
                              sums);
    for (int i = 0; i < kBlock; ++i) out[i] = sampleOf(sums[i]);
}

void FarEnd::moveTo(int delay) {
    moving_ = true;
    next_delay_ = delay;
    rings_[1 - present_].known = 0;
}

// Of the frame that ended `age` blocks before the last one.
const int16_t* FarEnd::movedFrame(int age) const {
    return history_.values() + kHistory - kEchoFrame - next_delay_ - age * kBlock;
}

void FarEnd::transform(const int16_t* frame, FarSpectrum& out) {
    alignas(LaneBin) float samples[kEchoFrame];
    std::copy_n(frame, kEchoFrame, samples);
    fft_.forward(samples, out.re.value, out.im.value);
    for (int g = 0; g < kEchoGroups; ++g) {
        const Group re = out.re.groups()[g], im = out.im.groups()[g];
        out.power.groups()[g] = re * re + im * im;
    }
}

const FarSpectrum& FarEnd::transformPast(int later) {
    alignas(LaneBin) float samples[kEchoFrame] = {};
    std::copy(aligned_ + later * kBlock, aligned_ + kEchoFrame - kBlock, samples);
    fft_.forward(samples, past_.re.value, past_.im.value);
    return past_;
}

bool FarEnd::transform() {
    transform(aligned_, rings_[present_].newer());
    if (!moving_) return false;
    Ring& moved = rings_[1 - present_];
    transform(movedFrame(0), moved.newer());
    for (int i = 0; i < kOldFrames && moved.known < kSpectra; ++i) {
        const int16_t* const frame = movedFrame(moved.known);
        transform(frame, moved.older());
    }
    if (moved.known < kSpectra) return false;
    finishMove();
    return true;
}

void FarEnd::finishMove() {
    present_ = 1 - present_;
    delay_ = next_delay_;
    std::copy_n(history_.values() + kHistory - kEchoFrame - next_delay_, kEchoFrame, aligned_);
    moving_ = false;
}

}  // namespace reference_engine
