// How much of the output is the talker, with the parts of a simulated recording known.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace se_host {

struct TalkerLikeness {
    // Scale-invariant ratio of signal to distortion, dB (Le Roux, Wisdom, Erdogan, Hershey: "SDR - half-baked or well done?",
    // ICASSP 2019).
    double si_sdr_db;
    std::optional<double> stoi;  // tools/stoi; nothing when the talker is heard for less than 0.4 s
};

// Of the samples from `begin` on; the output's lag is found and removed. Nothing when the talker is not found in the output.
// in: both at 16 kHz, of one length.
std::optional<TalkerLikeness> talkerLikeness(const std::vector<int16_t>& talker,
                                             const std::vector<int16_t>& output, size_t begin);

}  // namespace se_host
