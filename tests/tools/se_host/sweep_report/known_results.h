// Results of a sweep that is known, for the tests of the report.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tools/se_host/sweep_report/report.h"

namespace se_host_test {

using se_host::report::Results;
using se_host::report::Values;

// Tunings "default", "a" and so on, recordings "r00" and so on, measures by their names; no values yet.
Results resultsOf(const std::vector<std::string>& measures, size_t tunings, size_t recordings);

void set(Results& results, const std::string& measure, size_t tuning, const Values& values);

// Values around `mean`, the same at each call; `seed` gives others.
Values noisyValues(size_t count, double mean, double deviation, unsigned seed);

// Each value with something added.
Values plus(const Values& values, double more);

// A folder with results.jsonl of this text, removed at the end.
class ResultsFolder {
  public:
    explicit ResultsFolder(const std::string& text);
    ~ResultsFolder();

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

}  // namespace se_host_test
