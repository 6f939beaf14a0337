// A file with the places of the microphones, for arrays other than the built-in one. Six lines, one for each microphone
// around channel 1: its device channel, its distance from channel 1's microphone in millimetres, its azimuth in degrees.
// "#" begins a comment. Threads: [setup].
#pragma once

#include <cstdint>
#include <string>

#include "reference_engine/audio/geometry.h"

namespace reference_engine {

// The environment variable that names the file.
inline constexpr char kArrayFileVariable[] = "SE_ARRAY_FILE";

enum ArraySource : int32_t { kBuiltInArray, kArrayOfFile, kRefusedArrayFile, kArraySources };

// result: empty, or why the file cannot be used; `places` is then as before.
std::string readArrayFile(const char* path, MicrophonePlaces* places);

// Places the microphones as the file of the environment variable says. Without the variable, or when its file cannot be
// used, which is a line on standard error, the built-in array counts.
ArraySource placeArray();

}  // namespace reference_engine
