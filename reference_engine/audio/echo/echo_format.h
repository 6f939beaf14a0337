// The dimensions of the echo canceller. The tail is divided into partitions of two blocks (Soo and Pang: Multidelay block
// frequency domain adaptive filter, IEEE Transactions on Acoustics, Speech and Signal Processing 38(2), 1990); every block
// advances the frame of far-end samples by a block. Constants and types only.
#pragma once

#include <array>
#include <bitset>

#include "reference_engine/format.h"
#include "reference_engine/lanes/lanes.h"

namespace reference_engine {

inline constexpr int kEchoFrame = 1024;  // samples under the transform
inline constexpr int kEchoBins = kEchoFrame / 2 + 1;
inline constexpr int kPartitionBlocks = 2;
inline constexpr int kPartition = kPartitionBlocks * kBlock;  // taps
inline constexpr int kEchoTaps = kPartitions * kPartition;

// The samples at the end of a frame of which a partition knows the whole past. The filter learns from the errors of all
// of them: many blocks, so that one loud block does not decide.
inline constexpr int kEchoWindow = kEchoFrame - kPartition;
inline constexpr float kShareOfFrame = float{kEchoWindow} / kEchoFrame;

// One value a bin, and zeros up to whole groups.
inline constexpr int kEchoGroups = (kEchoBins + kGroup - 1) / kGroup;
struct alignas(Group) EchoBins {
    float value[kEchoGroups * kGroup] = {};

    Group* groups() { return reinterpret_cast<Group*>(value); }
    const Group* groups() const { return reinterpret_cast<const Group*>(value); }
};

// One value a group.
using EchoGroups = std::array<float, kEchoGroups>;

// Whether each partition belongs to it.
using PartitionSet = std::bitset<kPartitions>;

// Of the far end.
struct FarSpectrum {
    EchoBins re, im, power;
};

using LaneSignals = Lanes[kEchoFrame];
using LaneSpectra = LaneBin[kEchoBins];

}  // namespace reference_engine
