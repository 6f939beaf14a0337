// The spectrum of one piece of sound under a Hann window, as the host's pictures and figures show it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace se_host {

std::vector<double> hannWindow(size_t size);

// Amplitudes of bins 0 to size/2 - 1 of as many samples as the window has: 1 for a sine that fills the scale.
std::vector<double> amplitudes(const int16_t* samples, const std::vector<double>& window);

}  // namespace se_host
