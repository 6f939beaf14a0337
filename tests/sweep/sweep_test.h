// Shared by the tests of `se_host sweep`: short recordings, and sweeps over them.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {

class SweepTest : public HostTest {
  protected:
    using Json = nlohmann::ordered_json;

    // `count` recordings of a tenth of a second, "rec/a.wav" and on, each with other samples.
    void makeRecordings(int count) const;

    // `se_host sweep WORDS` in the test's folder; it has to succeed.
    void sweep(const std::string& words) const;
    // The same; it may fail.
    HostRun trySweep(const std::string& words) const;

    std::string textOf(const std::string& name) const;
    // The lines of "sweep/results.jsonl", or of another file.
    std::vector<Json> rows(const std::string& name = "sweep/results.jsonl") const;
    // All three files of results in one text.
    std::string results(const std::string& folder) const;
};

// Two tunings beside the default one.
inline constexpr const char* kGrid = "--grid seout_gain_q10=512,2048";

}  // namespace se_host_test
