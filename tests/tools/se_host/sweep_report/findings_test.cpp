// What the report says in words.
#include "tools/se_host/sweep_report/findings.h"

#include "tests/tools/se_host/sweep_report/known_results.h"

namespace se_host_test {
namespace {

using namespace se_host::report;

constexpr const char* kNoise = "noise_reduction_db";

std::string findings(const Results& results) {
    return findingsSection(reportOf(results, "", "scenario"));
}

void expectSays(const std::string& html, const std::string& words) {
    EXPECT_NE(html.find(words), std::string::npos) << words << " in\n" << html;
}

void expectDoesNotSay(const std::string& html, const std::string& words) {
    EXPECT_EQ(html.find(words), std::string::npos) << words << " in\n" << html;
}

Results noisierBy(double difference, size_t recordings) {
    Results results = resultsOf({kNoise}, 2, recordings);
    const Values before = noisyValues(recordings, 20, 4, 1),
                 noise = noisyValues(recordings, difference, 0.5, 2);
    Values after;
    for (size_t i = 0; i < recordings; ++i) after.emplace_back(*before[i] + *noise[i]);
    set(results, kNoise, 0, before);
    set(results, kNoise, 1, after);
    return results;
}

TEST(Findings, SayWhichTuningIsBetterInWhat) {
    const std::string said = findings(noisierBy(2, 40));
    expectSays(said, "Better in");
    expectSays(said, "noise lowered: +2.");
    expectSays(said, "100 % of 40 recordings gained");
    expectDoesNotSay(said, "Worse");
}

TEST(Findings, SayWhichTuningIsWorse) {
    const std::string said = findings(noisierBy(-2, 40));
    expectSays(said, "Worse in");
    expectSays(said, "No tuning is clearly better than <b>default</b>");
}

TEST(Findings, SayWhenTheIntervalIncludesZero) {
    const std::string said = findings(noisierBy(0, 40));
    expectSays(said, "No clear difference");
    expectSays(said, "The interval includes 0: noise lowered.");
}

TEST(Findings, SayWhenThereAreTooFewRecordings) {
    const std::string said = findings(noisierBy(2, 4));
    expectSays(said, "With 4 recordings nothing can be said about others");
    expectSays(said, "Too few recordings to tell: noise lowered.");
    expectDoesNotSay(said, "Better in");
}

TEST(Findings, OfOneTuningCompareNothing) {
    Results results = resultsOf({kNoise}, 1, 12);
    set(results, kNoise, 0, noisyValues(12, 20, 4, 1));
    expectSays(findings(results), "nothing to compare it with");
}

// Better on the whole, and worse in one scenario.
TEST(Findings, SayForWhichRecordingsATuningIsWorse) {
    Results results = resultsOf({kNoise}, 2, 60);
    const Values before = noisyValues(60, 20, 4, 1), noise = noisyValues(60, 0, 0.2, 2);
    Values after;
    for (size_t i = 0; i < 60; ++i) {
        results.labels[i]["scenario"] = i < 15 ? "street" : "office";
        after.emplace_back(*before[i] + *noise[i] + (i < 15 ? -1 : 2));
    }
    set(results, kNoise, 0, before);
    set(results, kNoise, 1, after);
    const std::string said = findings(results);
    expectSays(said, "Better in");
    expectSays(said, "Worse for");
    expectSays(said, "scenario <b>street</b>, noise lowered: \u22120.9");
    expectDoesNotSay(said, "scenario <b>office</b>, noise");
}

TEST(Findings, SayHowManyComparisonsWereMade) {
    expectSays(findings(noisierBy(2, 40)), "1 comparison in which one tuning can be better.");
}

// Twenty tunings that differ by chance alone: the largest mean is not taken for a finding without a word.
TEST(Findings, MarkWhatIsNotLeftAfterCorrection) {
    constexpr size_t kTunings = 40;
    Results results = resultsOf({kNoise}, kTunings, 20);
    const Values before = noisyValues(20, 20, 4, 1);
    set(results, kNoise, 0, before);
    for (size_t tuning = 1; tuning < kTunings; ++tuning) {
        Values values = noisyValues(20, 0, 1, static_cast<unsigned>(tuning + 100));
        for (size_t i = 0; i < 20; ++i) *values[i] += *before[i];
        set(results, kNoise, tuning, values);
    }
    const Report report = reportOf(results, "", "scenario");
    for (const Comparison& comparison : report.comparisons) EXPECT_GE(comparison.by_chance, 0.05);
    expectSays(findingsSection(report), "not certain after correction");
}

TEST(Findings, EscapeNames) {
    Results results = noisierBy(2, 40);
    results.tunings[1] = "<b>&\"";
    const std::string said = findings(results);
    expectSays(said, "&lt;b&gt;&amp;&quot;");
    expectDoesNotSay(said, "<b>&\"");
}

}  // namespace
}  // namespace se_host_test
