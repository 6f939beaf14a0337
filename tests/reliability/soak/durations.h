// How long blocks took: counts in steps of 1 %, so that a day of blocks takes as much memory as a second.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace reliability {

class Durations {
  public:
    void add(uint64_t ticks) {
        const double step = std::log(static_cast<double>(std::max<uint64_t>(ticks, 1))) / kStep;
        ++counts_[std::min(static_cast<std::size_t>(step), counts_.size() - 1)];
        ++total_;
        longest_ = std::max(longest_, ticks);
    }

    // The duration that this share of the blocks does not exceed, to 1 %; 0 without blocks.
    uint64_t atShare(double share) const {
        const double wanted = share * static_cast<double>(total_);
        double seen = 0;
        for (std::size_t i = 0; i < counts_.size(); ++i) {
            seen += static_cast<double>(counts_[i]);
            if (counts_[i] > 0 && seen >= wanted) {
                return std::min(longest_,
                                static_cast<uint64_t>(std::exp(kStep * static_cast<double>(i + 1))));
            }
        }
        return longest_;
    }
    uint64_t longest() const { return longest_; }

  private:
    static constexpr double kStep = 0.00995;  // log(1.01)
    std::array<uint64_t, 4096> counts_{};     // up to 5e17 ticks
    uint64_t total_ = 0;
    uint64_t longest_ = 0;
};

}  // namespace reliability
