// The signals as the measure compares them: at 10 kHz, without the pauses of the clean one, as envelopes of
// one-third octave bands.
#pragma once

#include <array>
#include <vector>

namespace stoi {

inline constexpr int kBands = 15;

using Signal = std::vector<float>;
using Frame = std::array<double, kBands>;  // one value each 12.8 ms
using Envelopes = std::vector<Frame>;

Signal atTenKilohertz(const Signal& signal, double sample_rate);

// Joins the frames in which `clean` is within 40 dB of its loudest frame. in: two signals of one length.
void removePauses(Signal& clean, Signal& processed);

Envelopes envelopesOf(const Signal& signal);

}  // namespace stoi
