// What an engine says about the echo while it runs: the diagnostics of an engine with an estimate of the bulk delay.
// Threads: one, between blocks.
#pragma once

#include <cstddef>
#include <optional>

namespace se_host {

struct EchoEstimate {
    double delay_ms;   // at the end
    double drift_ppm;  // at the end
    double found_s;    // since when the delay has been that, but for drift
};

class EchoEstimator {
  public:
    // needs: a started engine.
    EchoEstimator();

    void afterBlock(size_t block);

    // Nothing when the engine has no such diagnostics, or no block was processed.
    std::optional<EchoEstimate> result() const { return last_; }

  private:
    int delay_;  // indices; below 0: the engine has none
    int drift_;
    std::optional<EchoEstimate> last_;
};

}  // namespace se_host
