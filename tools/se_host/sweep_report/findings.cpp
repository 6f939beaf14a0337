#include "tools/se_host/sweep_report/findings.h"

#include <algorithm>
#include <vector>

#include "tools/se_host/sweep_report/html.h"
#include "tools/se_host/sweep_report/number_text.h"

namespace se_host::report {
namespace {

using Comparisons = std::vector<const Comparison*>;

constexpr size_t kMostGroupFindings = 8;  // of a tuning
constexpr double kCorrected = 0.05;

std::string named(const std::string& name) {
    return "<b>" + escaped(name) + "</b>";
}

std::string count(size_t number, const std::string& thing) {
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) all += i + 1 == texts.size() ? " and " : ", ";
        all += texts[i];
    }
    return all;
}

// "echo lowered (+2.13 dB, 95 % interval +1.50 to +2.70; 83 % of 120 recordings gained)"
std::string measured(const Report& report, const Comparison& comparison) {
    const Measure& measure = report.measureOf(comparison);
    const double share = comparison.isGain() ? comparison.gained : comparison.lost;
    std::string text =
        std::string(measure.title) + " (" + withUnit(measure, differenceText(measure, comparison.mean)) +
        ", 95 % interval " + differenceText(measure, comparison.interval.low) + " to " +
        differenceText(measure, comparison.interval.high) + "; " + percentText(share) + " of " +
        std::to_string(comparison.pairs.size()) + " recordings " + (comparison.isGain() ? "gained" : "lost");
    if (comparison.by_chance >= kCorrected) text += "; not certain after correction";
    return escaped(text + ")");
}

std::string measuredAll(const Report& report, const Comparisons& comparisons) {
    std::vector<std::string> texts;
    for (const Comparison* const comparison : comparisons) texts.push_back(measured(report, *comparison));
    return joined(texts);
}

template <typename Chosen>
Comparisons chosen(const std::vector<Comparison>& comparisons, size_t tuning, Chosen chosen) {
    Comparisons found;
    for (const Comparison& comparison : comparisons) {
        if (comparison.tuning == tuning && comparison.better != Better::kNeither && chosen(comparison)) {
            found.push_back(&comparison);
        }
    }
    return found;
}

bool isClearGain(const Comparison& comparison) {
    return comparison.isClear() && comparison.isGain();
}

bool isClearLoss(const Comparison& comparison) {
    return comparison.isClear() && !comparison.isGain();
}

bool isUnclear(const Comparison& comparison) {
    return !comparison.isClear() && !comparison.isSame() && comparison.pairs.size() >= kFewPairs;
}

bool hasFew(const Comparison& comparison) {
    return comparison.pairs.size() < kFewPairs;
}

// "For scenario cafe it is worse in noise lowered (...)."
std::string worseGroups(const Report& report, size_t tuning) {
    std::string text;
    size_t shown = 0, all = 0;
    for (const Group& group : report.groups) {
        for (const Comparison* const loss : chosen(group.comparisons, tuning, isClearLoss)) {
            const Comparison* const overall = Report::find(report.comparisons, loss->measure, tuning);
            if (overall != nullptr && isClearLoss(*overall)) continue;  // said already
            ++all;
            if (shown == kMostGroupFindings) continue;
            ++shown;
            text += " For " + escaped(report.label) + " " + named(group.name) + " it is worse in " +
                    measured(report, *loss) + ".";
        }
    }
    if (all > shown) text += " " + count(all - shown, "further loss") + " in groups: see the tables.";
    return text;
}

std::string titles(const Report& report, const Comparisons& comparisons) {
    std::vector<std::string> texts;
    for (const Comparison* const comparison : comparisons) {
        texts.push_back(escaped(report.measureOf(*comparison).title));
    }
    return joined(texts);
}

std::string ofTuning(const Report& report, size_t tuning) {
    const std::string& name = report.results.tunings[tuning];
    const Comparisons gains = chosen(report.comparisons, tuning, isClearGain);
    const Comparisons losses = chosen(report.comparisons, tuning, isClearLoss);
    const Comparisons unclear = chosen(report.comparisons, tuning, isUnclear);
    const Comparisons few = chosen(report.comparisons, tuning, hasFew);
    std::string text;
    if (!gains.empty()) {
        text +=
            " is better than " + named(report.referenceName()) + " in " + measuredAll(report, gains) + ".";
    }
    if (!losses.empty()) {
        text += (gains.empty() ? " is worse than " + named(report.referenceName()) : " It is worse") +
                " in " + measuredAll(report, losses) + ".";
    }
    if (text.empty()) text = ": no clear difference from " + named(report.referenceName()) + ".";
    if (!unclear.empty()) text += " The interval includes 0 in " + titles(report, unclear) + ".";
    if (!few.empty()) text += " Too few recordings to tell in " + titles(report, few) + ".";
    return named(name) + text + worseGroups(report, tuning);
}

// The tuning that gained most in a measure.
std::string bestIn(const Report& report, size_t measure) {
    const Comparison* best = nullptr;
    for (const Comparison& comparison : report.comparisons) {
        if (comparison.measure != measure || comparison.better == Better::kNeither) continue;
        if (!isClearGain(comparison)) continue;
        const double sign = comparison.better == Better::kMore ? 1 : -1;
        if (best == nullptr || sign * comparison.mean > sign * best->mean) best = &comparison;
    }
    if (best == nullptr) return {};
    return "Best in " + measured(report, *best) + ": " + named(report.results.tunings[best->tuning]) + ".";
}

std::string comparisonsMade(const Report& report) {
    size_t made = 0, in_groups = 0;
    const auto isMade = [](const Comparison& comparison) {
        return comparison.better != Better::kNeither && !comparison.isSame();
    };
    made = static_cast<size_t>(std::count_if(report.comparisons.begin(), report.comparisons.end(), isMade));
    for (const Group& group : report.groups) {
        in_groups +=
            static_cast<size_t>(std::count_if(group.comparisons.begin(), group.comparisons.end(), isMade));
    }
    std::string text = count(made, "comparison") + " in which one tuning can be better";
    if (in_groups > 0) text += ", and " + std::to_string(in_groups) + " in groups of recordings";
    return text +
           ". Of comparisons of equal tunings one in twenty shows a difference by chance; \"not certain "
           "after "
           "correction\" marks what is not left when that is taken into account (Holm).";
}

std::string list(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) text += element("li", item);
    return element("ul", text, "class=\"findings\"");
}

bool areFew(const Report& report) {
    return report.results.recordings.size() < kFewPairs;
}

}  // namespace

std::string findingsSection(const Report& report) {
    std::string html = element("h2", "Findings");
    if (report.results.tunings.size() < 2) {
        return html + list({"There is one tuning, " + named(report.results.tunings[0]) +
                            ": nothing to compare it with."});
    }
    std::vector<std::string> items;
    if (areFew(report)) {
        items.push_back(
            "With " + count(report.results.recordings.size(), "recording") +
            " nothing can be said about others: at least " + std::to_string(kFewPairs) +
            " are needed for an interval that means something, and some hundred to find small differences.");
    }
    for (size_t measure = 0; measure < report.results.measures.size() && report.results.tunings.size() > 2;
         ++measure) {
        if (const std::string best = bestIn(report, measure); !best.empty()) items.push_back(best);
    }
    std::vector<std::string> tunings;
    for (size_t tuning = 0; tuning < report.results.tunings.size(); ++tuning) {
        if (tuning != report.reference) tunings.push_back(ofTuning(report, tuning));
    }
    constexpr size_t kAtOnce = 4;
    if (tunings.size() <= kAtOnce) {
        items.insert(items.end(), tunings.begin(), tunings.end());
        html += list(items);
    } else {
        if (items.empty())
            items.push_back("No tuning is clearly better than " + named(report.referenceName()) +
                            " in anything.");
        html += list(items) + element("details", element("summary", "Every tuning") + list(tunings));
    }
    return html + element("p", comparisonsMade(report), "class=\"soft\"");
}

}  // namespace se_host::report
