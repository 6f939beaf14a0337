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
    uint16_t place[kLargest / 2] = {};   // of a pair of samples, before the first butterflies
    uint16_t source[kLargest / 2] = {};  // of each such place, the pair
};

// A partition of the paths, the far end's spectrum that it is multiplied by, and what it learns before: from the spectrum that
// the errors were met with.
struct LanePartition {
    LaneBin* path;
    const float* re;
    const float* im;
    const float* learnt_re;
    const float* learnt_im;
    const float* step;
    const float* last_step;
};

// Of a partition, and the power of the far end that it is multiplied by. The path's power is the mean of each group.
struct LaneUncertainty {
    Group* uncertainty;
    const float* path_power;
    const Group* far_power;
    float appearing;
    Group* step;
};

struct LaneKalman {
    float forgetting;
    float noise_memory;
    float share_of_frame;
    float share_of_sample;
};

// `bins`, `groups`: how many bins, or groups of eight bins, the arrays hold. No two arrays overlap.
struct LaneKernels {
    // Unnormalised, as RealFft. needs: signals at an address for a LaneBin.
    void (*forward)(const LaneFftTables& tables, const Lanes* signals, LaneBin* spectra);
    void (*backward)(const LaneFftTables& tables, const LaneBin* spectra, Lanes* signals);

    // path += step * conj(learnt) * errors; the last lane has a step of its own.
    void (*adapt)(const LanePartition& partition, const LaneBin* errors, int bins);

    // Adapts the first `learning` partitions, then sum = factor * the sum over all of path * far end. The paths pass through
    // the cache once.
    void (*adaptAndPredict)(const LanePartition* partitions, int learning, int count, const LaneBin* errors,
                            float factor, int bins, LaneBin* sum);

    // errors = signals - echo. out: the sum of the squares of the echo.
    void (*subtract)(const Lanes* signals, const Lanes* echo, int count, Lanes* errors, Lanes* energy);

    // Of each bin: the mean power of all spectra but the last, and the power of the last.
    void (*powers)(const LaneBin* spectra, int bins, float* mean, float* last);

    // Of each group of bins: the mean power of the first spectrum, and of the last.
    void (*groupPowers)(const LaneBin* spectra, int bins, float* first, float* last);

    // A block of the Kalman filter, for each bin; of the partitions the first `learning`, but for the sum:
    // uncertainty = (1 - forgetting) * uncertainty + forgetting * path_power + appearing
    // residual = share_of_frame * the sum over the partitions of uncertainty * far end's power
    // noise = the mean of error_power over time, expected = residual + max(noise, error_power)
    // step = uncertainty / expected, then uncertainty /= 1 + share_of_sample * share_of_frame * step * far end's power
    void (*kalman)(const LaneUncertainty* partitions, int learning, int count, const LaneKalman& constants,
                   const Group* error_power, int groups, Group* noise, Group* residual);

    // Of each signal's samples: times `factor`, and 0 below `least`. out: the sum of their squares.
    void (*scale)(Lanes* signals, float factor, float least, int count, Lanes* squares);

    // Of each signal: the sum of the magnitudes, and the largest one.
    void (*magnitudes)(const Lanes* signals, int count, Lanes* sum, Lanes* largest);

    // signals * factor, limited to +-limit and rounded to nearest, halves away from 0. out: eight rows. needs: limit up to
    // 32767; a count in eights.
    void (*quantise)(const Lanes* signals, const Lanes* factor, float limit, int count, int16_t* const* rows);

    // in: eight rows. out: each in a lane. needs: a count in eights.
    void (*gather)(const int16_t* const* rows, int count, Lanes* signals);

    // Adds eight rows, each times the factor of its lane. needs: a count in eights.
    void (*addRows)(const int32_t* const* rows, const Lanes* factor, int count, Lanes* signals);

    // out[i] = the sum of samples[place[i] + k] * tap k, interpolated between the rows phase[i] and phase[i] + 1 of `taps`
    // by share[i]. Rows of 24.
    void (*interpolate)(const float* samples, const Lanes* taps, const int* place, const int* phase,
                        const float* share, int count, float* out);

    // cross = memory * cross + (1 - memory) * conj(a) * b. out: the sum of the powers of `cross`, for each lane.
    void (*correlate)(const Lanes* a_re, const Lanes* a_im, const Lanes* b_re, const Lanes* b_im,
                      float memory, int groups, Lanes* cross_re, Lanes* cross_im, Lanes* power);

    // Of the phases of all signals but the last: sum of weight * |first + sum of others * steering|^2, and the same with
    // the conjugate of the steering. A lane of the steering is a direction; each bin has one for each of the others.
    void (*steer)(const LaneBin* spectra, const LaneBin* steering, const float* weight, int bins,
                  Lanes* power, Lanes* opposite);

    // The spectrum of one signal of `size` samples, from those of its phases: lane j has the bins of samples j, j + 8 ... and,
    // in `turns`, the factors exp(-2 pi i j k / size). writes: size / 2 + 1 bins. needs: a size of 128 at least.
    void (*combine)(const LaneBin* phases, const LaneBin* turns, int size, float* re, float* im);
};

extern const LaneKernels kLaneKernelsSse2;
extern const LaneKernels kLaneKernelsAvx2;
extern const LaneKernels kLaneKernelsAvx512;

// The fastest build that this processor runs.
const LaneKernels& laneKernels();

}  // namespace reference_engine
