// A picture of several sounds over the same time: their levels, and the spectra of each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/gnuplot/gnuplot.h"

namespace se_host {

struct ShownSound {
    std::string title;
    std::string colour;  // of its level: "#0060ad"
    const std::vector<int16_t>& samples;
};

// In gnuplot's language, with at most `moments` spectra of each. The sounds at 16 kHz, of one length.
// fails: Failure when they are too short.
std::string soundsScript(const std::vector<ShownSound>& sounds, size_t moments);

// The picture of a run. `microphone` and `output` at 16 kHz, of one length. fails: Failure.
void drawProcess(se_output::Picture& picture, const std::vector<int16_t>& microphone,
                 const std::vector<int16_t>& output);

}  // namespace se_host
