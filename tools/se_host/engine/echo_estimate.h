// What an engine says about the echo after each block: the diagnostics of an engine with an estimate of the bulk delay.
// Threads: one, between blocks.
#pragma once

#include <cstddef>
#include <vector>

namespace se_host {

struct EchoEstimate {
    double delay_ms;
    double drift_ppm;
    double found_s;  // since when the delay has been that, but for drift
};

class EchoEstimator {
  public:
    // needs: a started engine.
    EchoEstimator();

    void afterBlock(size_t block);

    // One a block; empty when the engine has no such diagnostics.
    const std::vector<EchoEstimate>& result() const { return estimates_; }

  private:
    int delay_;  // indices; below 0: the engine has none
    int drift_;
    std::vector<EchoEstimate> estimates_;
};

}  // namespace se_host
