#include "tools/se_host/sweep_report/report.h"

#include <algorithm>
#include <numeric>

namespace se_host::report {
namespace {

constexpr size_t kMostGroups = 20;

std::vector<Group> groupsOf(Report& report) {
    std::vector<Group> groups;
    for (const auto& [name, recordings] : groupsBy(report.results, report.label)) {
        groups.push_back({name, recordings, {}});
    }
    if (groups.size() < 2) return {};
    std::stable_sort(groups.begin(), groups.end(), [](const Group& a, const Group& b) {
        return a.recordings.size() > b.recordings.size();
    });
    report.left_out = groups.size() - std::min(groups.size(), kMostGroups);
    groups.resize(groups.size() - report.left_out);
    std::sort(groups.begin(), groups.end(), [](const Group& a, const Group& b) { return a.name < b.name; });
    for (Group& group : groups) {
        group.comparisons = compareAll(report.results, report.reference, group.recordings);
    }
    return groups;
}

std::vector<Comparison*> pointersTo(std::vector<Comparison>& comparisons) {
    std::vector<Comparison*> pointers;
    pointers.reserve(comparisons.size());
    for (Comparison& comparison : comparisons) pointers.push_back(&comparison);
    return pointers;
}

// Those of all groups are made together.
void correct(Report& report) {
    correctTogether(pointersTo(report.comparisons));
    std::vector<Comparison*> in_groups;
    for (Group& group : report.groups) {
        for (Comparison* const comparison : pointersTo(group.comparisons)) in_groups.push_back(comparison);
    }
    correctTogether(in_groups);
}

}  // namespace

const Comparison* Report::find(const std::vector<Comparison>& comparisons, size_t measure, size_t tuning) {
    const auto found =
        std::find_if(comparisons.begin(), comparisons.end(), [&](const Comparison& comparison) {
            return comparison.measure == measure && comparison.tuning == tuning;
        });
    return found == comparisons.end() ? nullptr : &*found;
}

bool Report::isSame(size_t measure) const {
    return results.tunings.size() > 1 &&
           std::all_of(comparisons.begin(), comparisons.end(), [&](const Comparison& comparison) {
               return comparison.measure != measure || comparison.isSame();
           });
}

std::vector<size_t> Report::shownMeasures() const {
    std::vector<size_t> shown;
    for (size_t measure = 0; measure < results.measures.size(); ++measure) {
        if (!results.measures[measure].measure.is_angle && !isSame(measure)) shown.push_back(measure);
    }
    return shown;
}

Report reportOf(Results results, const std::string& against, const std::string& label) {
    Report report;
    report.results = std::move(results);
    if (!against.empty()) report.reference = report.results.tuningOf(against);
    std::vector<size_t> all(report.results.recordings.size());
    std::iota(all.begin(), all.end(), size_t{0});
    report.comparisons = compareAll(report.results, report.reference, all);
    report.label = label;
    report.groups = groupsOf(report);
    correct(report);
    return report;
}

}  // namespace se_host::report
