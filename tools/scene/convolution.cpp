#include "tools/scene/convolution.h"

#include <algorithm>

#include "tools/scene/fft.h"

namespace se_scene {

namespace {

Spectrum spectrumOf(const double* samples, size_t count, const Fft& fft) {
    Spectrum spectrum(fft.size());
    std::copy(samples, samples + count, spectrum.begin());
    fft.forward(spectrum);
    return spectrum;
}

// Adds `block`, which starts at sample `start` of the convolution, to the output, which starts at `lead`.
void addBlock(const Spectrum& block, size_t start, size_t lead, std::vector<double>& output) {
    for (size_t i = 0; i < block.size(); ++i) {
        const size_t at = start + i;
        if (at >= lead && at - lead < output.size()) output[at - lead] += block[i].real();
    }
}

}  // namespace

MicrophoneRows convolve(const std::vector<float>& signal, const ImpulseResponses& responses) {
    const size_t taps = responses.rows.front().size();
    const Fft fft(powerOfTwoFrom(4 * taps));
    const size_t step = fft.size() - taps + 1;

    std::vector<Spectrum> filters;
    for (const auto& row : responses.rows) filters.push_back(spectrumOf(row.data(), row.size(), fft));

    const std::vector<double> input(signal.begin(), signal.end());
    std::vector<std::vector<double>> sums(filters.size(), std::vector<double>(signal.size()));
    Spectrum block(fft.size());
    for (size_t start = 0; start < input.size(); start += step) {
        const Spectrum piece = spectrumOf(&input[start], std::min(step, input.size() - start), fft);
        for (size_t m = 0; m < filters.size(); ++m) {
            for (size_t k = 0; k < block.size(); ++k) block[k] = product(piece[k], filters[m][k]);
            fft.inverse(block);
            addBlock(block, start, responses.lead, sums[m]);
        }
    }

    MicrophoneRows rows;
    for (const auto& sum : sums) {
        auto& row = rows.emplace_back();
        for (double value : sum) row.push_back(static_cast<float>(value));
    }
    return rows;
}

}  // namespace se_scene
