#include "tools/scene/noise.h"

#include <algorithm>

#include "tools/scene/fft.h"

namespace se_scene {

namespace {

constexpr size_t kDirections = 96;
constexpr size_t kSegment = 16384;  // samples
constexpr size_t kOverlap = 2048;   // of neighbouring segments
constexpr size_t kHop = kSegment - kOverlap;
constexpr double kBinHz = static_cast<double>(kSampleRate) / kSegment;
constexpr double kPinkFromHz = 20;

// Even coverage of the sphere (the Fibonacci lattice).
Point directionOnSphere(size_t index) {
    const double golden_angle = M_PI * (3 - std::sqrt(5.0));
    const double z = 1 - (2 * static_cast<double>(index) + 1) / kDirections;
    const double radius = std::sqrt(1 - z * z);
    const double angle = golden_angle * static_cast<double>(index);
    return {radius * std::cos(angle), radius * std::sin(angle), z};
}

std::vector<double> heightOfBins(NoiseColour colour) {
    std::vector<double> heights(kSegment / 2, 1.0);
    heights[0] = 0;
    if (colour == NoiseColour::kWhite) return heights;
    for (size_t k = 1; k < heights.size(); ++k) {
        const double hertz = static_cast<double>(k) * kBinHz;
        heights[k] = hertz < kPinkFromHz ? 0 : 1 / std::sqrt(hertz);
    }
    return heights;
}

// One wave from this direction, added to the one-sided spectra of the rows. The delay between microphones is
// a phase proportional to frequency, which is exact for any fraction of a sample.
void addPlaneWave(const Point& direction, const MicrophonePositions& microphones,
                  const std::vector<double>& heights, Random& random, std::vector<Spectrum>& spectra) {
    std::array<std::complex<double>, kMicrophones> phase;
    std::array<std::complex<double>, kMicrophones> step;
    for (size_t m = 0; m < microphones.size(); ++m) {
        const double lead = dot(direction, microphones[m]) * kSamplesPerMetre;
        phase[m] = 1;
        step[m] = std::polar(1.0, 2 * M_PI * lead / kSegment);
    }
    for (size_t k = 0; k < heights.size(); ++k) {
        const std::complex<double> wave = heights[k] * random.complexGaussian();
        for (size_t m = 0; m < microphones.size(); ++m) {
            spectra[m][k] += product(wave, phase[m]);
            phase[m] = product(phase[m], step[m]);
        }
    }
}

// Fades in and out over the overlaps. The squares of two neighbours' windows sum to one, which keeps the
// power of independent noises level.
double windowAt(size_t i) {
    const double to_the_end = static_cast<double>(std::min(i, kSegment - 1 - i)) + 0.5;
    return std::sin(M_PI / 2 * std::min(1.0, to_the_end / kOverlap));
}

// `start` counts from kOverlap samples before the row.
void addSegment(const Spectrum& segment, size_t start, std::vector<float>& row) {
    for (size_t i = 0; i < kSegment; ++i) {
        const size_t at = start + i;
        if (at < kOverlap || at - kOverlap >= row.size()) continue;
        row[at - kOverlap] += static_cast<float>(windowAt(i) * segment[i].real());
    }
}

}  // namespace

MicrophoneRows sensorNoise(size_t frames, double rms, Random& random) {
    MicrophoneRows rows(kMicrophones, std::vector<float>(frames));
    for (auto& row : rows) {
        for (float& sample : row) sample = static_cast<float>(rms * random.gaussian());
    }
    return rows;
}

MicrophoneRows diffuseNoise(size_t frames, const MicrophonePositions& microphones, NoiseColour colour,
                            Random& random) {
    const Fft fft(kSegment);
    const std::vector<double> heights = heightOfBins(colour);
    MicrophoneRows rows(kMicrophones, std::vector<float>(frames));
    // The first segment begins early, so that its fade-in has ended when the scene begins.
    for (size_t start = 0; start < frames + kOverlap; start += kHop) {
        std::vector<Spectrum> spectra(kMicrophones, Spectrum(kSegment));
        for (size_t d = 0; d < kDirections; ++d) {
            addPlaneWave(directionOnSphere(d), microphones, heights, random, spectra);
        }
        for (size_t m = 0; m < rows.size(); ++m) {
            fft.inverse(spectra[m]);
            addSegment(spectra[m], start, rows[m]);
        }
    }
    return rows;
}

}  // namespace se_scene
