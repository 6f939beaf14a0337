// The level of speech while it is active: ITU-T Recommendation P.56 (2011), method B.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "tools/se_host/measures/span.h"

namespace se_host {

class SpeechLevel {
  public:
    // in: 16 kHz.
    explicit SpeechLevel(const std::vector<int16_t>& samples);

    // In dBFS. Nothing without sound.
    const std::optional<double>& whole() const { return whole_; }

    // Of the samples in the span that are active at the threshold of the whole level. Nothing with less than 0.1 s of them.
    std::optional<double> within(Span span) const;

  private:
    struct Active {
        double energy = 0;
        size_t count = 0;  // samples
    };

    std::optional<double> whole_;
    std::vector<Active> blocks_;
};

}  // namespace se_host
