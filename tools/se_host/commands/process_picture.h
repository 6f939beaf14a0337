// The picture of a run: levels and spectra of the centre microphone and of the output over the same time.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/gnuplot/gnuplot.h"

namespace se_host {

// `microphone` and `output` at 16 kHz, of one length. fails: Failure.
void drawProcess(se_output::Picture& picture, const std::vector<int16_t>& microphone,
                 const std::vector<int16_t>& output);

}  // namespace se_host
