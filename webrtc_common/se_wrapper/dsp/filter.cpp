// Linear-phase FIR filter for blocks of audio, with a crossfade between filtered and dry.
// filterBlock must not allocate, lock or make a system call.
#include "webrtc_common/se_wrapper/dsp/filter.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "webrtc_common/se_wrapper/dsp/block_size.h"
#include "webrtc_common/se_wrapper/dsp/compute_rfir.h"
#include "webrtc_common/se_wrapper/dsp/stack_scratch.h"
#include "webrtc_common/se_wrapper/records.h"

namespace quill::media::se_wrapper {
namespace {

constexpr int16_t kHighPass600HzCoeffs[] = {
    -9,    -34,   -61,   -91,   -123,  -158,  -197, -239,  -285,  -334,  -387,  -443,  -502,  -563,
    -626,  -690,  -755,  -818,  -880,  -939,  -994, -1045, -1089, -1126, -1157, -1178, -1192, 31558,
    -1192, -1178, -1157, -1126, -1089, -1045, -994, -939,  -880,  -818,  -755,  -690,  -626,  -563,
    -502,  -443,  -387,  -334,  -285,  -239,  -197, -158,  -123,  -91,   -61,   -34,   -9};

// NaN, which a gain that is not finite gives, becomes the upper limit: converting it is not defined.
int16_t truncatedAndSaturated(float value) {
    return static_cast<int16_t>(std::max(-32768.0F, std::min(32767.0F, value)));
}

}  // namespace

const Filter::FilterParams kHighPass600Hz = {kHighPass600HzCoeffs, std::size(kHighPass600HzCoeffs)};

// The parameter's name is part of the text of the check, which hosts know.
Filter::Filter(FilterParams const& filter_) : params_(&filter_), gain_(1.0F) {
    const auto size = static_cast<std::size_t>(filter_.num_coeffs_) + BLOCK_SIZE;
    // computeRFir reads up to a multiple of eight taps; the extra samples have no effect on the output.
    history_.resize(static_cast<std::size_t>(roundedUpToEight(filter_.num_coeffs_)) + BLOCK_SIZE);
    history_.resize(size);  // the capacity stays
    QUILL_CHECK_EQ_AT(SE_WRAPPER_HERE, filter_.num_coeffs_ & 1, 1)
        << "Filters must have an odd number of coefficients.";
}

void Filter::filterBlock(int16_t* in, int16_t* out, float gain) {
    if (history_.empty()) {  // moved from
        std::fill_n(out, BLOCK_SIZE, int16_t{0});
        return;
    }
    append(in);
    const bool stays_dry = gain == 0.0F && gain_ == 0.0F;
    const bool stays_filtered = gain == 1.0F && gain_ == 1.0F;
    if (stays_dry) {
        std::copy_n(dry(), BLOCK_SIZE, out);
        return;
    }
    // The signature is that of the engine's hook; the coefficients are only read.
    computeRFir(history_.data(), const_cast<int16_t*>(params_->coeffs_), out,
                static_cast<uint16_t>(params_->num_coeffs_ - 1), BLOCK_SIZE, 1);
    if (!stays_filtered) crossfade(out, gain);
    gain_ = gain;
}

void Filter::append(const int16_t* in) {
    const auto newest = std::copy(history_.begin() + BLOCK_SIZE, history_.end(), history_.begin());
    std::copy_n(in, BLOCK_SIZE, newest);
}

void Filter::crossfade(int16_t* out, float gain) const {
    const float step = (gain - gain_) / static_cast<float>(BLOCK_SIZE);
    const int16_t* const dry_block = dry();
    double filtered_share = static_cast<double>(gain_);
    for (std::size_t i = 0; i < BLOCK_SIZE; ++i) {
        const double mixed = out[i] * filtered_share + dry_block[i] * (1.0 - filtered_share);
        out[i] = truncatedAndSaturated(static_cast<float>(mixed));
        filtered_share += static_cast<double>(step);
    }
}

const int16_t* Filter::dry() const {
    return history_.data() + params_->num_coeffs_ / 2;
}

}  // namespace quill::media::se_wrapper
