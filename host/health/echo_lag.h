// The lag of the echo behind the far end: the generalised cross-correlation with phase transform (Knapp and Carter, IEEE
// Transactions on Acoustics, Speech and Signal Processing 24(4), 1976) over pieces of two seconds.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "host/engine/sample_rate.h"

namespace se_host {

inline constexpr int kLongestLagMs = 1000;

// Samples by which the echo at the microphone follows the far end; below 0 the echo is in the recording before the far end.
struct EchoLags {
    static constexpr int kHop = kEngineSampleRate;

    int median;
    double agreement;  // share of the pieces in which the echo is heard that agree with the median, 0 to 1
    std::vector<std::optional<int>> pieces;  // from each kHop samples on; nothing where the echo is not heard

    std::optional<int> heardAt(size_t sample) const {
        return pieces[std::min(sample / kHop, pieces.size() - 1)];
    }
    // The median where the echo is not heard.
    int at(size_t sample) const { return heardAt(sample).value_or(median); }
};

// Nothing when no echo is heard within kLongestLagMs. in: both at 16 kHz, of one length.
std::optional<EchoLags> echoLags(const std::vector<int16_t>& far_end, const std::vector<int16_t>& microphone);

}  // namespace se_host
