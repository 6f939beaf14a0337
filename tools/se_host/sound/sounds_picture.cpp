#include "tools/se_host/sound/sounds_picture.h"

#include "common/string_printf.h"
#include "host/output/errors.h"
#include "tools/se_host/sound/resample.h"
#include "tools/se_host/sound/spectrogram.h"

namespace se_host {
namespace {

using quill::stringPrintf;

constexpr size_t kMoments = 800;
constexpr size_t kRoomForName = 18;  // dB above the levels, for a line of the key
constexpr se_output::PictureSize kSize{1100, 950};

using Moments = std::vector<Moment>;

std::string levels(const std::string& name, const Moments& moments) {
    std::vector<std::vector<double>> rows;
    for (const Moment& moment : moments) rows.push_back({moment.seconds, moment.level_dbfs});
    return se_output::plotData(name, rows);
}

// One row a frequency, one column a moment.
std::string spectra(const std::string& name, const Moments& moments) {
    std::vector<std::vector<double>> rows(kSpectrumBins);
    for (const Moment& moment : moments) {
        for (size_t bin = 0; bin < rows.size(); ++bin) rows[bin].push_back(moment.bins_dbfs[bin]);
    }
    return se_output::plotData(name, rows);
}

std::string spectrogram(const std::string& title, const std::string& name, const Moments& moments) {
    const double step = moments.size() > 1 ? moments[1].seconds - moments[0].seconds : 1;
    return "set title " + se_output::plotText(title) + "\n" +
           stringPrintf("plot $%s matrix using ($1*%g+%g):($2*%g):3 with image notitle\n", name.c_str(), step,
                        moments.front().seconds, kEngineSampleRate / 1000.0 / kSpectrumSize);
}

}  // namespace

std::string soundsScript(const std::vector<ShownSound>& sounds, size_t most) {
    std::string data, lines, pictures;
    for (size_t i = 0; i < sounds.size(); ++i) {
        const Moments moments = momentsOf(sounds[i].samples, most);
        if (moments.empty())
            throw se_output::Failure("the recording is too short for a picture; leave out --plot");
        const std::string level = stringPrintf("level%zu", i), spectrum = stringPrintf("spectra%zu", i);
        data += levels(level, moments) + spectra(spectrum, moments);
        lines += (i == 0 ? "plot $" : ", $") + level + " with lines lw 1.5 lc rgb '" + sounds[i].colour +
                 "' title " + se_output::plotText(sounds[i].title);
        if (i + 1 == sounds.size()) pictures += "set xlabel 'seconds'\n";
        pictures += spectrogram(sounds[i].title, spectrum, moments);
    }
    const double seconds = static_cast<double>(sounds.front().samples.size()) / kEngineSampleRate;
    return data +
           stringPrintf(
               "set multiplot layout %zu,1 margins 0.1,0.88,0.07,0.95 spacing 0.09\nset xrange [0:%g]\n",
               sounds.size() + 1, seconds) +
           "set title 'Level'\nset ylabel 'dBFS'\nset grid\nset ytics -100,20,0\nset key top right font ',9' "
           "spacing 0.9\n" +
           stringPrintf("set yrange [-100:%zu]\n", kRoomForName * sounds.size()) + lines +
           "\nset ylabel 'kHz'\nset ytics autofreq\nunset grid\nset yrange [0:8]\nset cbrange "
           "[-110:-30]\nset cblabel 'dBFS'\n"
           "set palette defined (0 '#000004', 1 '#3b0f70', 2 '#8c2981', 3 '#de4968', 4 '#fe9f6d', 5 "
           "'#fcfdbf')\n" +
           pictures + "unset multiplot\n";
}

void drawProcess(se_output::Picture& picture, const std::vector<int16_t>& microphone,
                 const std::vector<int16_t>& output) {
    const std::vector<ShownSound> sounds{{"Centre microphone", "#b0b0b0", microphone},
                                         {"Output", "#0060ad", output}};
    picture.draw(soundsScript(sounds, kMoments), kSize);
}

}  // namespace se_host
