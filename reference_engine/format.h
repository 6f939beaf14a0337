// The dimensions of the engine's audio, shared by settings, stages and diagnostics. Constants and types
// only.
#pragma once

#include <cstdint>

namespace reference_engine {

inline constexpr int kSampleRate = 16000;
inline constexpr int kBlock = 160;      // samples a block: 10 ms
inline constexpr int kMicrophones = 7;  // 0 the centre, 1 to 6 the circle
inline constexpr int kLocations = 12;   // look directions, 30 degrees apart
inline constexpr int kPartitions = 13;  // of the echo canceller's tail, 20 ms each

// The device's channel of each microphone; people know the microphones by these numbers. Kept on purpose: the device
// crosses its channels.
inline constexpr int kChannelOf[kMicrophones] = {1, 3, 2, 5, 6, 7, 4};

using MicrophoneBlock = int16_t[kMicrophones][kBlock];

}  // namespace reference_engine
