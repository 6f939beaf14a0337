// The inner loops over lanes, in builds of the same source: for every x86-64 processor, for those with AVX2 and for those
// with AVX-512. All give the same bits, as each lane is computed by the same operations in the same order.
// Threads: pure functions, rt-safe.
#pragma once

#include <cstdint>

#include "reference_engine/lanes/lanes.h"

namespace reference_engine {

// Of a transform of `size` real samples.
struct LaneFftTables {
    static constexpr int kLargest = 1024;

    int size = 0;
    float cosine[3 * kLargest / 4] = {};  // exp(-2 pi i k / size)
    float sine[3 * kLargest / 4] = {};
    uint16_t reversed[kLargest / 2] = {};  // place of a pair of samples before the first butterflies
};

// One spectrum of the far end.
struct FarBins {
    const float* re;
    const float* im;
};

// `bins`, `groups`: how many bins, or groups of eight bins, the arrays hold. No two arrays overlap.
struct LaneKernels {
    // `pairs`: room for half the size. Unnormalised, as RealFft.
    void (*forward)(const LaneFftTables& tables, const Lanes* signals, LaneBin* pairs, LaneBin* spectra);
    void (*backward)(const LaneFftTables& tables, const LaneBin* spectra, LaneBin* pairs, Lanes* signals);

    // sum = the sum over p of path p * far_end[p]; the bins of one path follow those of the other.
    void (*accumulate)(const LaneBin* paths, const FarBins* far_end, int partitions, int bins, LaneBin* sum);

    // path += step * conj(re + i im) * errors; the last lane has a step of its own. out: the power of the first lane's
    // path, and of the last lane's.
    void (*adapt)(LaneBin* path, const float* re, const float* im, const LaneBin* errors, const float* step,
                  const float* last_step, int bins, float* power, float* last_power);

    // uncertainty = memory * uncertainty + (1 - memory) * path_power + least, then residual += uncertainty * far_power
    void (*expect)(Lanes* uncertainty, const Lanes* path_power, const Lanes* far_power, float memory,
                   float least, int groups, Lanes* residual);

    // step = uncertainty / expected, then uncertainty /= 1 + share * step * far_power
    void (*learn)(Lanes* uncertainty, const Lanes* far_power, const Lanes* expected, float share, int groups,
                  Lanes* step);

    // Of each signal's samples: times `factor`, and 0 below `least`. out: the sum of their squares.
    void (*scale)(Lanes* signals, float factor, float least, int count, Lanes* squares);

    // Of each signal: the sum of the magnitudes, and the largest one.
    void (*magnitudes)(const Lanes* signals, int count, Lanes* sum, Lanes* largest);

    // signals * factor, limited to +-limit and rounded to nearest, halves away from 0. needs: limit up to 2^30.
    void (*quantise)(const Lanes* signals, const Lanes* factor, float limit, int count, LaneInts* out);

    // cross = memory * cross + (1 - memory) * conj(a) * b. out: the sum of the powers of `cross`, for each lane.
    void (*correlate)(const Lanes* a_re, const Lanes* a_im, const Lanes* b_re, const Lanes* b_im,
                      float memory, int groups, Lanes* cross_re, Lanes* cross_im, Lanes* power);

    // Of the phases of all signals but the last: sum of weight * |first + sum of others * steering|^2, and the same with
    // the conjugate of the steering. A lane of the steering is a direction; each bin has one for each of the others.
    void (*steer)(const LaneBin* spectra, const LaneBin* steering, const float* weight, int bins,
                  Lanes* power, Lanes* opposite);
};

extern const LaneKernels kLaneKernelsSse2;
extern const LaneKernels kLaneKernelsAvx2;
extern const LaneKernels kLaneKernelsAvx512;

// The fastest build that this processor runs.
const LaneKernels& laneKernels();

}  // namespace reference_engine
