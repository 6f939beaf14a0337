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

// "echo lowered: +2.13 dB, 95 % interval +1.50 to +2.70; 83 % of 120 recordings gained"
std::string measured(const Report& report, const Comparison& comparison) {
    const Measure& measure = report.measureOf(comparison);
    const double share = comparison.isGain() ? comparison.gained : comparison.lost;
    std::string text =
        std::string(measure.title) + ": " + withUnit(measure, differenceText(measure, comparison.mean)) +
        ", 95 % interval " + differenceText(measure, comparison.interval.low) + " to " +
        differenceText(measure, comparison.interval.high) + "; " + percentText(share) + " of " +
        count(comparison.pairs.size(), "recording") + (comparison.isGain() ? " gained" : " lost");
    if (comparison.by_chance >= kCorrected) text += "; not certain after correction";
    return escaped(text);
}

std::string list(const std::vector<std::string>& items, const std::string& attributes = "") {
    std::string text;
    for (const std::string& item : items) text += element("li", item);
    return items.empty() ? "" : element("ul", text, attributes);
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

// Clear losses of groups, unless all recordings together lose.
std::vector<std::string> worseGroups(const Report& report, size_t tuning) {
    std::vector<std::string> losses;
    for (const Group& group : report.groups) {
        for (const Comparison* const loss : chosen(group.comparisons, tuning, isClearLoss)) {
            const Comparison* const overall = Report::find(report.comparisons, loss->measure, tuning);
            if (overall != nullptr && isClearLoss(*overall)) continue;
            losses.push_back(escaped(report.label) + " " + named(group.name) + ", " +
                             measured(report, *loss));
        }
    }
    if (losses.size() > kMostGroupFindings) {
        const size_t more = losses.size() - kMostGroupFindings;
        losses.resize(kMostGroupFindings);
        losses.push_back(std::to_string(more) + " more: see the tables of the groups");
    }
    return losses;
}

std::string titles(const Report& report, const Comparisons& comparisons) {
    std::vector<std::string> texts;
    for (const Comparison* const comparison : comparisons) {
        texts.push_back(escaped(report.measureOf(*comparison).title));
    }
    return joined(texts);
}

std::vector<std::string> measuredAll(const Report& report, const Comparisons& comparisons) {
    std::vector<std::string> texts;
    for (const Comparison* const comparison : comparisons) texts.push_back(measured(report, *comparison));
    return texts;
}

std::string part(const std::string& mark, const std::string& title, const std::vector<std::string>& items) {
    if (items.empty()) return {};
    return element("p", "<span class=\"" + mark + "\">" + title + "</span>") + list(items);
}

std::string ofTuning(const Report& report, size_t tuning) {
    const Comparisons gains = chosen(report.comparisons, tuning, isClearGain);
    const Comparisons losses = chosen(report.comparisons, tuning, isClearLoss);
    const Comparisons unclear = chosen(report.comparisons, tuning, isUnclear);
    const Comparisons few = chosen(report.comparisons, tuning, hasFew);
    std::string text = part("gain", "Better in", measuredAll(report, gains)) +
                       part("loss", "Worse in", measuredAll(report, losses)) +
                       part("loss", "Worse for", worseGroups(report, tuning));
    if (gains.empty() && losses.empty()) text = element("p", "No clear difference.") + text;
    if (!unclear.empty()) text += element("p", "The interval includes 0: " + titles(report, unclear) + ".");
    if (!few.empty()) text += element("p", "Too few recordings to tell: " + titles(report, few) + ".");
    return element("h3",
                   named(report.results.tunings[tuning]) + " beside " + escaped(report.referenceName())) +
           text;
}

// That of the tuning that clearly gained most in a measure. Null: none did.
const Comparison* bestIn(const Report& report, size_t measure) {
    const Comparison* best = nullptr;
    for (const Comparison& comparison : report.comparisons) {
        if (comparison.measure != measure || comparison.better == Better::kNeither) continue;
        if (!isClearGain(comparison)) continue;
        const double sign = comparison.better == Better::kMore ? 1 : -1;
        if (best == nullptr || sign * comparison.mean > sign * best->mean) best = &comparison;
    }
    return best;
}

Comparisons bestOfAll(const Report& report) {
    Comparisons all;
    for (const size_t measure : report.shownMeasures()) {
        if (const Comparison* const best = bestIn(report, measure)) all.push_back(best);
    }
    return all;
}

std::string bestText(const Report& report, const Comparisons& best) {
    if (best.empty()) {
        return element("p",
                       "No tuning is clearly better than " + named(report.referenceName()) + " in anything.");
    }
    if (report.results.tunings.size() == 2) return {};  // said of that tuning
    std::vector<std::string> texts;
    for (const Comparison* const comparison : best) {
        texts.push_back(named(report.results.tunings[comparison->tuning]) + " is best in " +
                        measured(report, *comparison));
    }
    return list(texts);
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

std::string fewRecordings(size_t recordings) {
    return "With " + count(recordings, "recording") + " nothing can be said about others: at least " +
           std::to_string(kFewPairs) +
           " are needed for an interval that means something, and some hundred to find small differences.";
}

bool areFew(const Report& report) {
    return report.results.recordings.size() < kFewPairs;
}

// Of many tunings the best ones are open, the others folded.
std::string eachTuning(const Report& report, const Comparisons& best) {
    constexpr size_t kAtOnce = 4;
    const bool are_many = report.results.tunings.size() > kAtOnce;
    std::string open, folded;
    for (size_t tuning = 0; tuning < report.results.tunings.size(); ++tuning) {
        if (tuning == report.reference) continue;
        const bool is_best = std::any_of(best.begin(), best.end(), [tuning](const Comparison* comparison) {
            return comparison->tuning == tuning;
        });
        (is_best || !are_many ? open : folded) += ofTuning(report, tuning);
    }
    if (folded.empty()) return open;
    return open + element("details", element("summary", "The other tunings") + folded);
}

}  // namespace

std::string findingsSection(const Report& report) {
    const Results& results = report.results;
    const std::string title = element("h2", "Findings");
    if (results.tunings.size() < 2) {
        return title + element("p", "There is one tuning, " + named(results.tunings[0]) +
                                        ": nothing to compare it with.");
    }
    std::string html;
    if (areFew(report)) html += element("p", fewRecordings(results.recordings.size()));
    const Comparisons best = bestOfAll(report);
    html += bestText(report, best) + eachTuning(report, best);
    return title + element("div", html, "class=\"findings\"") +
           element("p", comparisonsMade(report), "class=\"soft\"");
}

}  // namespace se_host::report
