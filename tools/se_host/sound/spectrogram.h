// Levels and spectra of 16-bit sound over time, for the width of a picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace se_host {

inline constexpr int kSpectrumSize = 512;                // samples of one spectrum: 32 ms
inline constexpr int kSpectrumBins = kSpectrumSize / 2;  // from 0 Hz in steps of the rate over the size

struct Moment {
    double seconds;                 // the middle of its samples
    double level_dbfs;              // root mean square; -120 at least
    std::vector<double> bins_dbfs;  // of sines, -120 at least
};

// Spectra of Hann-windowed samples at 16 kHz. At most `moments` of them, evenly spaced; sound shorter than
// one spectrum gives none.
std::vector<Moment> momentsOf(const std::vector<int16_t>& samples, size_t moments);

}  // namespace se_host
