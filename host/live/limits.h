// What values of an engine are served while sound runs.
#pragma once

namespace se_host {

// Elements of an array: the audio thread copies them within a block, in a few microseconds.
inline constexpr int kMostElements = 4096;

}  // namespace se_host
