// A run of the program: its options and its results.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/routines_vs_libraries/contest.h"
#include "kernel_check/variants/functions.h"

namespace routines_vs_libraries {

// A result is wrong: nothing is timed.
struct Mismatch : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class Session {
  public:
    explicit Session(bool quick) : quick_(quick) {}

    // Later results belong to this area.
    void begin(const std::string& area) { area_ = area; }

    bool quick() const { return quick_; }
    const quill::test::Machine& machine() const { return machine_; }

    // Checks every variant of a kernel that runs here against its scalar reference, on problems with extreme
    // values and with pages without access around the buffers. fails: Mismatch.
    void requireRight(const std::string& kernel);

    // Checks every contestant, then times all of them in turn. In a repetition each keeps its better time:
    // other load on the same core may last for seconds. fails: Mismatch.
    void hold(const Contest& contest);

    const std::vector<Result>& results() const { return results_; }

  private:
    void keep(Result result);

    const bool quick_;
    const quill::test::Machine machine_;
    std::string area_;
    std::vector<Result> results_;
};

}  // namespace routines_vs_libraries
