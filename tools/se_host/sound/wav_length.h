// How long a WAV file says that it is. The sound-file library reads a file that was cut short without a word.
#pragma once

#include <cstdint>
#include <optional>

namespace se_host {

// Where the samples end according to the header. Nothing when it states no length, as that of a program which wrote
// to a pipe, and when the file is not WAV.
std::optional<uint64_t> statedEndOfWav(int descriptor);

}  // namespace se_host
