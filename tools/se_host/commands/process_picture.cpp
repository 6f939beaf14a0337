#include "tools/se_host/commands/process_picture.h"

#include "common/string_printf.h"
#include "host/output/errors.h"
#include "tools/se_host/sound/resample.h"
#include "tools/se_host/sound/spectrogram.h"

namespace se_host {
namespace {

using quill::stringPrintf;

constexpr size_t kMoments = 800;
constexpr se_output::PictureSize kSize{1100, 950};

std::string levels(const std::string& name, const std::vector<Moment>& moments) {
    std::vector<std::vector<double>> rows;
    for (const Moment& moment : moments) rows.push_back({moment.seconds, moment.level_dbfs});
    return se_output::plotData(name, rows);
}

// One row a frequency, one column a moment.
std::string spectra(const std::string& name, const std::vector<Moment>& moments) {
    std::vector<std::vector<double>> rows(kSpectrumBins);
    for (const Moment& moment : moments) {
        for (size_t bin = 0; bin < rows.size(); ++bin) rows[bin].push_back(moment.bins_dbfs[bin]);
    }
    return se_output::plotData(name, rows);
}

std::string spectrogram(const std::string& title, const std::string& name,
                        const std::vector<Moment>& moments) {
    const double step = moments.size() > 1 ? moments[1].seconds - moments[0].seconds : 1;
    return "set title " + se_output::plotText(title) + "\n" +
           stringPrintf("plot $%s matrix using ($1*%g+%g):($2*%g):3 with image notitle\n", name.c_str(), step,
                        moments.front().seconds, kEngineSampleRate / 1000.0 / kSpectrumSize);
}

}  // namespace

void drawProcess(se_output::Picture& picture, const std::vector<int16_t>& microphone,
                 const std::vector<int16_t>& output) {
    const std::vector<Moment> before = momentsOf(microphone, kMoments);
    const std::vector<Moment> after = momentsOf(output, kMoments);
    if (before.empty())
        throw se_output::Failure("the recording is too short for a picture; leave out --plot");

    const double seconds = static_cast<double>(microphone.size()) / kEngineSampleRate;
    std::string script = levels("level_before", before) + levels("level_after", after) +
                         spectra("before", before) + spectra("after", after);
    script += stringPrintf(
        "set multiplot layout 3,1 margins 0.08,0.88,0.07,0.95 spacing 0.09\nset xrange [0:%g]\n", seconds);
    script +=
        "set title 'Level'\nset ylabel 'dBFS'\nset grid\nset yrange [-100:0]\nset key bottom right "
        "horizontal\n"
        "plot $level_before with lines lw 1.5 lc rgb '#b0b0b0' title 'centre microphone',"
        " $level_after with lines lw 1.5 lc rgb '#0060ad' title 'output'\n"
        "set ylabel 'kHz'\nunset grid\nset yrange [0:8]\nset cbrange [-110:-30]\nset cblabel 'dBFS'\n"
        "set palette defined (0 '#000004', 1 '#3b0f70', 2 '#8c2981', 3 '#de4968', 4 '#fe9f6d', 5 "
        "'#fcfdbf')\n";
    script += spectrogram("Centre microphone", "before", before);
    script += "set xlabel 'seconds'\n" + spectrogram("Output", "after", after) + "unset multiplot\n";
    picture.draw(script, kSize);
}

}  // namespace se_host
