// How much of the output is the talker, with the parts of a simulated recording known.
// The output's lag is found once and removed.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/engine/sample_rate.h"
#include "tools/se_host/measures/span.h"

namespace se_host {

class TalkerLikeness {
  public:
    // Nothing when the talker is not found in the output. in: both at 16 kHz, of one length; they have to stay.
    static std::optional<TalkerLikeness> find(const std::vector<int16_t>& talker,
                                              const std::vector<int16_t>& output);

    int lagMs() const { return static_cast<int>(lag_ * 1000 / kEngineSampleRate); }

    // Of the talker's blocks in `span`, as far as the output has them.

    // Scale-invariant ratio of signal to distortion, dB (Le Roux, Wisdom, Erdogan, Hershey: "SDR - half-baked or well done?",
    // ICASSP 2019). Nothing when the talker is silent.
    std::optional<double> siSdrDb(Span span) const;
    // tools/stoi. Nothing with less than 0.4 s of the talker.
    std::optional<double> intelligibility(Span span) const;

  private:
    struct Pair {
        std::vector<float> clean, output;  // without their means
    };

    TalkerLikeness(const std::vector<int16_t>& talker, const std::vector<int16_t>& output, size_t lag)
        : talker_(&talker), output_(&output), lag_(lag) {}
    std::optional<Pair> pairIn(Span span) const;

    const std::vector<int16_t>* talker_;
    const std::vector<int16_t>* output_;
    size_t lag_;  // samples
};

}  // namespace se_host
