// The dimensions of the echo canceller. The tail is divided into partitions of two blocks (Soo and Pang:
// Multidelay block frequency domain adaptive filter, IEEE Transactions on Acoustics, Speech and Signal
// Processing 38(2), 1990); every block advances the frame of far-end samples by a block. Constants and types
// only.
#pragma once

#include <complex>

#include "reference_engine/format.h"

namespace reference_engine {

inline constexpr int kEchoFrame = 512;  // samples under the transform
inline constexpr int kEchoBins = kEchoFrame / 2 + 1;
inline constexpr int kPartitionBlocks = 2;
inline constexpr int kPartition = kPartitionBlocks * kBlock;  // taps
inline constexpr int kEchoTaps = kPartitions * kPartition;
inline constexpr float kShareOfFrame = float{kBlock} / kEchoFrame;  // that a block of errors fills

using EchoSpectrum = std::complex<float>[kEchoBins];

static_assert(kPartition + kBlock - 1 <= kEchoFrame, "a frame holds the past that a block of echo needs");
static_assert(kEchoTaps % 8 == 0, "convolution routines work in steps of eight taps");

}  // namespace reference_engine
