// Mean spectrum of a sound: the wrapper's magnitude spectra of overlapping Hann-windowed pieces, their powers
// averaged (Welch: The use of fast Fourier transform for the estimation of power spectra, IEEE Transactions on
// Audio and Electroacoustics 15(2), 1967).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace se_host {

struct Spectrum {
    double hertz_per_bin = 0;
    size_t pieces = 0;
    std::vector<double>
        dbfs;  // one a bin from 0 Hz on; a full-scale sine on a bin has 0, silence minus infinity

    double hertz(size_t bin) const { return hertz_per_bin * static_cast<double>(bin); }
};

// Pieces of `size` samples, each half a piece after the one before; a remainder at the end is left out.
// needs: size even, 16 to 32768; no fewer samples. A size with large prime factors takes long.
Spectrum averageSpectrum(const std::vector<int16_t>& samples, int sample_rate, int size);

// The `count` highest local maxima, highest first; bins.
std::vector<size_t> peaksOf(const Spectrum& spectrum, size_t count);

}  // namespace se_host
