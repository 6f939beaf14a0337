// The level of the pauses of a recording in parts of it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tools/se_host/measures/span.h"

namespace se_host {

class PauseLevel {
  public:
    // Pauses are the tenth of the blocks with the least energy.
    explicit PauseLevel(const std::vector<int16_t>& samples);

    // In dBFS. Nothing with fewer than 5 of these blocks in the span, or when they are silent.
    std::optional<double> within(Span span) const;

  private:
    std::vector<double> energies_;  // of each block
    double most_ = 0;               // of a block of the pauses
};

}  // namespace se_host
