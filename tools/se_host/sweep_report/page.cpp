#include "tools/se_host/sweep_report/page.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "tools/se_host/sweep_report/findings.h"
#include "tools/se_host/sweep_report/html.h"
#include "tools/se_host/sweep_report/plots.h"
#include "tools/se_host/sweep_report/recording_section.h"
#include "tools/se_host/sweep_report/tables.h"

namespace se_host::report {
namespace {

constexpr size_t kMostLines = 8;  // of a paired plot

std::string count(size_t number, const std::string& thing) {
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

std::string joined(const std::set<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) all += (all.empty() ? "" : "; ") + text;
    return all;
}

std::string fact(const std::string& name, const std::string& text) {
    return element("dt", name) + element("dd", escaped(text));
}

std::string rowsText(const Results& results) {
    const size_t all = results.tunings.size() * results.recordings.size();
    std::string text = count(results.rows, "run") + ", " + std::to_string(results.failed.size()) + " failed";
    if (results.rows < all) text += ", " + std::to_string(all - results.rows) + " not done";
    return text;
}

std::string summary(const Report& report) {
    const Results& results = report.results;
    std::string html =
        element("h1", "Sweep report") + element("p",
                                                count(results.recordings.size(), "recording") + " with " +
                                                    count(results.tunings.size(), "tuning") + ".",
                                                "class=\"soft\"");
    std::string facts = fact("engine", joined(results.engines)) +
                        fact("program", "se_host " + joined(results.programs)) +
                        fact("rows", rowsText(results));
    if (results.tunings.size() > 1) facts += fact("reference", report.referenceName());
    for (const std::string& processor : results.processors) facts += fact("processor", processor);
    html += element("dl", facts);
    if (results.engines.size() > 1 || results.programs.size() > 1) {
        html +=
            element("p", "<b>The rows are of different engines or programs: a difference may be theirs.</b>");
    }
    return html;
}

std::vector<size_t> allRecordings(const Report& report) {
    std::vector<size_t> all(report.results.recordings.size());
    std::iota(all.begin(), all.end(), size_t{0});
    return all;
}

std::string overview(const Report& report) {
    std::string caption =
        "Median, range from 10 to 90 % of the recordings, and number of recordings that have a value.";
    if (report.results.tunings.size() > 1) {
        caption += " <span class=\"gain\">Better</span> or <span class=\"loss\">worse</span> than " +
                   escaped(report.referenceName()) +
                   " where the 95 % interval of the paired difference excludes 0.";
    }
    return element("h2", "Tunings") +
           tuningsTable(report, report.shownMeasures(), allRecordings(report), report.comparisons, caption) +
           recordingsTable(report);
}

std::string groups(const Report& report) {
    std::vector<size_t> measures;  // in which a tuning can be better
    for (const size_t measure : report.shownMeasures()) {
        if (report.results.measures[measure].measure.better != Better::kNeither) measures.push_back(measure);
    }
    if (measures.empty()) return {};
    std::string html;
    for (const Group& group : report.groups) {
        const std::string caption = count(group.recordings.size(), "recording") + " with " +
                                    escaped(report.label) + " " + escaped(group.name) + ".";
        html += element("h3", escaped(group.name)) +
                tuningsTable(report, measures, group.recordings, group.comparisons, caption);
    }
    if (html.empty()) return {};
    std::string note;
    if (report.left_out > 0) note = element("p", count(report.left_out, "smaller group") + " left out.");
    return element("h2", "By " + escaped(report.label)) + html + note;
}

// The comparisons of a measure that have a difference, those with the largest first; cut to what a picture can show.
std::vector<const Comparison*> shownIn(const Report& report, size_t measure) {
    std::vector<const Comparison*> shown;
    for (const Comparison& comparison : report.comparisons) {
        if (comparison.measure == measure && !comparison.isSame()) shown.push_back(&comparison);
    }
    if (shown.size() <= kMostLines) return shown;
    std::stable_sort(shown.begin(), shown.end(), [](const Comparison* a, const Comparison* b) {
        return std::abs(a->mean) > std::abs(b->mean);
    });
    shown.resize(kMostLines);
    return shown;
}

std::string figure(const std::string& picture, const std::string& caption) {
    return element("figure", element("figcaption", caption) + element("div", picture, "class=\"wide\""));
}

std::string measureSection(const Report& report, size_t measure) {
    const MeasureResults& of = report.results.measures[measure];
    const std::string name = of.measure.name;
    std::string html = element("h3", escaped(of.measure.title) + " <code class=\"soft\">" + name + "</code>",
                               "id=\"" + name + "\"");
    html += figure(
        boxPlot("box-" + name, report.results, of),
        "Half of the recordings is in the box, the line is the median, the whiskers go from 10 to 90 %.");
    html += comparisonTable(report, measure);
    const std::vector<const Comparison*> shown = shownIn(report, measure);
    if (!shown.empty()) {
        std::string caption =
            "Difference of each recording from " + escaped(report.referenceName()) + ", sorted.";
        if (shown.size() == kMostLines) caption += " The tunings with the largest mean differences.";
        html += figure(pairedPlot("pair-" + name, report.results, shown), caption);
        for (const Comparison* const comparison : shown) html += extremesTable(report, *comparison);
    }
    return html;
}

std::string measureSections(const Report& report) {
    std::string html =
        element("h2", "Measures") +
        element("p",
                "docs/measures.md defines each of them, and says what it cannot tell. Directions are "
                "angles and have no median; they are in the results only.",
                "class=\"soft\"");
    for (const size_t measure : report.shownMeasures()) html += measureSection(report, measure);
    return html;
}

// How many times wider than its interval a difference is.
double certaintyOf(const Comparison& comparison) {
    const double width = comparison.interval.high - comparison.interval.low;
    return comparison.isSame() ? 0 : std::abs(comparison.mean) / std::max(width, 1e-9);
}

// The most certain difference in which a tuning can be better; of one tuning when `show` names it. Null: there is none.
const Comparison* shownComparison(const Report& report, const std::string& show) {
    const Comparison* shown = nullptr;
    for (const Comparison& comparison : report.comparisons) {
        if (comparison.better == Better::kNeither || comparison.isSame()) continue;
        if (!show.empty() && report.results.tunings[comparison.tuning] != show) continue;
        if (shown == nullptr || certaintyOf(comparison) > certaintyOf(*shown)) shown = &comparison;
    }
    return shown;
}

std::string failures(const Results& results) {
    const std::string table = failedTable(results);
    return table.empty() ? "" : element("h2", "Failed runs") + table;
}

constexpr const char* kMethod =
    "Differences are paired: the same recording with two tunings, a recording that lacks one of both values "
    "left out. The "
    "interval is that of the mean difference, by the percentile bootstrap with 10,000 resamples (Efron and "
    "Tibshirani, 1993) "
    "from a fixed seed; it is too narrow with few recordings, and says nothing about recordings that are "
    "unlike these. By "
    "chance: the probability of a mean as far from 0 with equal tunings, by Student's paired test, corrected "
    "by Holm (1979) "
    "over all comparisons of all recordings, and over those of all groups. \"Gained\" and \"lost\" are the "
    "recordings whose "
    "difference has that direction, however small.";

}  // namespace

std::string pageOf(const Report& report, const Listening& listening, const PageOptions& options) {
    if (!options.show.empty()) report.results.tuningOf(options.show);
    std::string body = summary(report) + findingsSection(report) + overview(report) + groups(report) +
                       measureSections(report);
    if (const Comparison* const shown = shownComparison(report, options.show)) {
        body += recordingSection(report, *shown, listening, options.with_pictures);
    }
    body += failures(report.results);
    if (report.results.tunings.size() > 1) body += element("h2", "Method") + element("p", kMethod);
    return document("Sweep report: " + report.results.build, body);
}

}  // namespace se_host::report
