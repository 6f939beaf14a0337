// What a report is about, computed before it is written.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tools/se_host/sweep_report/comparison.h"
#include "tools/se_host/sweep_report/results.h"

namespace se_host::report {

struct Group {
    std::string name;  // value of the label
    std::vector<size_t> recordings;
    std::vector<Comparison> comparisons;
};

struct Report {
    Results results;
    size_t reference = 0;                 // tuning
    std::vector<Comparison> comparisons;  // over all recordings
    std::string label;                    // of the groups
    std::vector<Group> groups;            // the largest; none when there are less than two
    size_t left_out = 0;                  // smaller groups

    const std::string& referenceName() const { return results.tunings[reference]; }
    const Measure& measureOf(const Comparison& comparison) const {
        return results.measures[comparison.measure].measure;
    }
    // Null: there is no pair.
    static const Comparison* find(const std::vector<Comparison>& comparisons, size_t measure, size_t tuning);
    // The values of the measure are the same with every tuning.
    bool isSame(size_t measure) const;
    // Those that are not, without angles.
    std::vector<size_t> shownMeasures() const;
};

// `against`: the reference tuning; empty: the first. fails: UsageError.
Report reportOf(Results results, const std::string& against, const std::string& label);

}  // namespace se_host::report
