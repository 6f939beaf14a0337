#include "tools/se_host/sweep_report/recording_section.h"

#include <algorithm>

#include "host/output/errors.h"
#include "tools/gnuplot/gnuplot.h"
#include "tools/se_host/sound/sounds_picture.h"
#include "tools/se_host/sweep_report/html.h"
#include "tools/se_host/sweep_report/number_text.h"
#include "tools/se_host/sweep_report/plots.h"
#include "tools/se_host/sweep_report/seconds.h"

namespace se_host::report {
namespace {

constexpr se_output::PictureSize kPictureSize{800, 860};
constexpr const char* kReferenceColour = "#0060ad";
constexpr const char* kTuningColour = "#d55e00";
constexpr size_t kMoments = 400;  // fewer than the picture has columns: its bytes are in the page

std::string labelsText(const std::map<std::string, std::string>& labels) {
    std::string text;
    for (const auto& [name, value] : labels) {
        if (!text.empty()) text += ", ";
        text.append(name).append(" ").append(value);
    }
    return text;
}

// "12.3 -> 14.1 dB, +1.80 dB"
std::string valuesText(const Report& report, const Comparison& comparison, const Pair& pair) {
    const MeasureResults& of = report.results.measures[comparison.measure];
    return valueText(of.measure, *of.values[report.reference][pair.recording]) + " \u2192 " +
           withUnit(of.measure, valueText(of.measure, *of.values[comparison.tuning][pair.recording])) + ", " +
           withUnit(of.measure, differenceText(of.measure, pair.difference));
}

std::string listOf(const Report& report, const Comparison& comparison, const std::vector<Pair>& pairs) {
    std::string items;
    for (const Pair& pair : pairs) {
        items += element("li", escaped(report.results.recordings[pair.recording]) + " <span class=\"soft\">" +
                                   escaped(valuesText(report, comparison, pair)) + "</span>");
    }
    return element("ol", items);
}

// Of the two outputs and the microphone.
std::string picture(const Report& report, const Comparison& comparison, const std::string& recording,
                    const Listening& listening) {
    const std::string& tuning = report.results.tunings[comparison.tuning];
    const std::vector<int16_t> microphone = listening.microphone(recording);
    const std::vector<int16_t> reference = listening.output(recording, report.referenceName());
    const std::vector<int16_t> output = listening.output(recording, tuning);
    const std::vector<ShownSound> sounds{{"Centre microphone", "#b0b0b0", microphone},
                                         {"Output, " + report.referenceName(), kReferenceColour, reference},
                                         {"Output, " + tuning, kTuningColour, output}};
    const std::string png = se_output::pngBytes(recording, soundsScript(sounds, kMoments), kPictureSize);
    const std::string text = "Levels and spectra of the microphone and of both outputs, " + recording;
    return element("figure", "<img alt=\"" + escaped(text) + "\" src=\"" + imageData(png) + "\">\n");
}

// The measure in each second; empty when the sweep did not write it.
std::string secondsFigure(const Report& report, const Comparison& comparison, size_t recording) {
    const Measure& measure = report.measureOf(comparison);
    const auto values = [&](size_t tuning) {
        return secondsOf(report.results, tuning, recording, measure.name);
    };
    const std::vector<SecondsLine> lines{
        {report.referenceName(), kReferenceColour, values(report.reference)},
        {report.results.tunings[comparison.tuning], kTuningColour, values(comparison.tuning)}};
    const auto is_empty = [](const SecondsLine& line) {
        return std::none_of(line.values.begin(), line.values.end(),
                            [](const auto& value) { return value.has_value(); });
    };
    if (std::any_of(lines.begin(), lines.end(), is_empty)) return {};
    const std::string plot = secondsPlot("seconds-" + std::to_string(recording), measure, lines);
    return element("figure", element("figcaption", "In each second: " + escaped(measure.title) +
                                                       ". Seconds that do not allow it have no point.") +
                                 element("div", plot, "class=\"wide\""));
}

std::string picturesOrReason(const Report& report, const Comparison& comparison, size_t recording,
                             const Listening& listening) {
    try {
        return picture(report, comparison, report.results.recordings[recording], listening) +
               secondsFigure(report, comparison, recording);
    } catch (const std::runtime_error& error) {
        return element("p", "No picture: " + escaped(error.what()), "class=\"soft\"");
    }
}

std::string oneRecording(const Report& report, const Comparison& comparison, const Pair& pair,
                         const Listening& listening, bool with_pictures) {
    const std::string& recording = report.results.recordings[pair.recording];
    std::string html = element("h4", escaped(recording));
    std::string about = valuesText(report, comparison, pair);
    if (const std::string labels = labelsText(report.results.labels[pair.recording]); !labels.empty()) {
        about += " (" + labels + ")";
    }
    html += element("p", escaped(about), "class=\"soft\"");
    if (!listening.knows(recording)) {
        return html + element("p", "The folder's manifest does not have this recording.", "class=\"soft\"");
    }
    if (with_pictures) html += picturesOrReason(report, comparison, pair.recording, listening);
    return html +
           element("pre", escaped(listening.command(recording, report.referenceName()) + "\n" +
                                  listening.command(recording, report.results.tunings[comparison.tuning])));
}

std::string oneSide(const std::string& title, const std::vector<Pair>& pairs, const Report& report,
                    const Comparison& comparison, const Listening& listening, bool with_pictures) {
    std::string html = element("h3", title);
    if (pairs.empty()) return html + element("p", "None.");
    for (const Pair& pair : pairs) html += oneRecording(report, comparison, pair, listening, with_pictures);
    return html;
}

}  // namespace

std::string extremesTable(const Report& report, const Comparison& comparison) {
    const std::vector<Pair> gained = mostGained(comparison, kExtremes),
                            lost = mostLost(comparison, kExtremes);
    if (gained.empty() && lost.empty()) return {};
    std::string html;
    if (!gained.empty()) html += element("p", "Gained most:") + listOf(report, comparison, gained);
    if (!lost.empty()) html += element("p", "Lost most:") + listOf(report, comparison, lost);
    return element("details", element("summary", escaped(report.results.tunings[comparison.tuning]) +
                                                     ": recordings that gained and lost most") +
                                  html);
}

std::string recordingSection(const Report& report, const Comparison& comparison, const Listening& listening,
                             bool with_pictures) {
    const Measure& measure = report.measureOf(comparison);
    std::string html = element("h2", "Recordings that gained and lost most");
    html += element("p", "By " + escaped(measure.title) + ", <b>" +
                             escaped(report.results.tunings[comparison.tuning]) + "</b> beside <b>" +
                             escaped(report.referenceName()) +
                             "</b>. The commands play both outputs, the reference's first.");
    html += oneSide("Gained most", mostGained(comparison, kExtremes), report, comparison, listening,
                    with_pictures);
    return html + oneSide("Lost most", mostLost(comparison, kExtremes), report, comparison, listening,
                          with_pictures);
}

}  // namespace se_host::report
