// Linear-phase FIR filter for blocks of audio, with a crossfade between filtered and dry.
// Threads: one at a time for each filter.
#pragma once

#include <cstdint>
#include <vector>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

class SE_WRAPPER_EXPORT Filter {
  public:
    struct FilterParams {
        const int16_t* coeffs_;  // Q15, the tap of the oldest sample first
        int32_t num_coeffs_;     // odd, so that the delay is whole; at most 65535
    };

    // A filter at gain 1.0 whose history is silence.
    // needs: `params` and its coefficients to outlive the filter; num_coeffs_ in 1 .. 65535.
    // fails: fatal, "filter_.num_coeffs_ & 1 == 1"; with the "check" tag filtered out the filter still works,
    //        its delay half a sample off. std::bad_alloc passes.
    // [setup]
    explicit Filter(FilterParams const& params);

    // Moving takes the history along and allocates nothing. A filter that was moved from writes zeros, until it is
    // assigned to.
    Filter(Filter&&) noexcept = default;
    Filter& operator=(Filter&&) noexcept = default;
    // A copy of the history would lack the room behind it.
    Filter(const Filter&) = delete;
    Filter& operator=(const Filter&) = delete;

    // Filters one block of BLOCK_SIZE samples and mixes it with the dry signal, which is delayed as much.
    // in:    `in`, BLOCK_SIZE samples, int16; gain, the share of the filtered signal: 1.0 filtered, 0.0 dry. It is
    //        reached by a straight line from the previous block's over this block, whose last sample is one
    //        step short of it.
    // out:   `out`, BLOCK_SIZE samples, int16; may be `in`. Rounded where it is filtered alone (computeRFir);
    //        truncated toward zero and saturated where it is mixed.
    // needs: both pointers valid; a finite gain. They are not checked.
    // fails: nothing.
    // Kept on purpose: the newest sample of a block is not used until the next, so that both signals come
    // num_coeffs_ / 2 + 1 samples late, one more than the filter's own delay. Hosts line up other signals
    // with this one by that number.
    // [audio] rt-safe
    void filterBlock(int16_t* in, int16_t* out, float gain);

  private:
    void append(const int16_t* in);
    void crossfade(int16_t* out, float gain) const;
    const int16_t* dry() const;

    FilterParams const* params_;
    std::vector<int16_t> history_;  // num_coeffs_ + BLOCK_SIZE samples, the newest last; empty after moving
    float gain_;                    // of the previous block
};

// A high-pass for sound at 16 kHz: 55 symmetric taps, -41.6 dB at 0 Hz, -5.3 dB at 300 Hz, -0.07 dB at 600 Hz
// and within 0.1 dB of unity above.
SE_WRAPPER_EXPORT extern const Filter::FilterParams kHighPass600Hz;

}  // namespace quill::media::se_wrapper
