// Spectra as curves over frequency, for the commands that draw them.
#pragma once

#include <string>
#include <vector>

#include "tools/se_host/sound/average_spectrum.h"

namespace se_host {

struct SpectrumCurve {
    std::string label;
    Spectrum spectrum;
};

// A script for Picture::draw: frequency on a logarithmic axis, level in dBFS.
std::string spectrumScript(const std::string& title, const std::vector<SpectrumCurve>& curves);

}  // namespace se_host
