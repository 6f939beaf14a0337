// What Filter must compute, from the whole input at once: there is no history, each sample is looked up in
// the input.
#pragma once

#include <cmath>
#include <vector>

#include "kernel_check/references/dsp.h"
#include "webrtc_common/se_wrapper/dsp/block_size.h"
#include "webrtc_common/se_wrapper/dsp/filter.h"

namespace quill::test {

inline constexpr size_t kFilterBlock = media::se_wrapper::BLOCK_SIZE;

class ReferenceFilter {
  public:
    explicit ReferenceFilter(std::vector<int16_t> coeffs)
        : coeffs_(std::move(coeffs)), heard_(coeffs_.size()) {}  // silence before the first block

    std::vector<int16_t> block(const std::vector<int16_t>& in, float gain) {
        std::vector<int16_t> past(heard_.end() - static_cast<std::ptrdiff_t>(coeffs_.size()), heard_.end());
        past.insert(past.end(), in.begin(), in.end());
        heard_.insert(heard_.end(), in.begin(), in.end());
        const float previous = gain_;
        gain_ = gain;

        std::vector<int16_t> out(kFilterBlock);
        referenceRFir(past.data(), coeffs_.data(), out.data(), static_cast<uint16_t>(coeffs_.size() - 1),
                      kFilterBlock, 1);
        const float step = static_cast<float>(static_cast<double>(gain - previous) / kFilterBlock);
        double share = static_cast<double>(previous);
        for (size_t i = 0; i < kFilterBlock; ++i) {
            const double wet = out[i] * share;
            const double dry = past[coeffs_.size() / 2 + i] * (1.0 - share);
            const double mixed = std::trunc(static_cast<double>(static_cast<float>(wet + dry)));
            out[i] = static_cast<int16_t>(std::fmin(32767.0, std::fmax(-32768.0, mixed)));
            share += static_cast<double>(step);
        }
        return out;
    }

  private:
    std::vector<int16_t> coeffs_;
    std::vector<int16_t> heard_;
    float gain_ = 1.0F;
};

// The filter under test, by blocks.
inline std::vector<int16_t> filtered(media::se_wrapper::Filter& filter, std::vector<int16_t> in, float gain) {
    std::vector<int16_t> out(kFilterBlock);
    filter.filterBlock(in.data(), out.data(), gain);
    return out;
}

inline std::vector<int16_t> coeffsOf(const media::se_wrapper::Filter::FilterParams& params) {
    return {params.coeffs_, params.coeffs_ + params.num_coeffs_};
}

// Blocks of uniform noise over the full range.
class NoiseBlocks {
  public:
    std::vector<int16_t> next() {
        std::vector<int16_t> samples(kFilterBlock);
        for (int16_t& sample : samples) {
            state_ = state_ * 1664525U + 1013904223U;
            sample = static_cast<int16_t>(state_ >> 16);
        }
        return samples;
    }

  private:
    uint32_t state_ = 1;
};

}  // namespace quill::test
