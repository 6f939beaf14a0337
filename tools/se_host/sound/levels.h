// Levels of 16-bit sound at 16 kHz in dBFS: 0 dB is a constant 32768.
#pragma once

#include <cstdint>
#include <vector>

namespace se_host {

struct Level {
    double rms_dbfs;    // root mean square; minus infinity for silence
    double peak_dbfs;   // largest magnitude; minus infinity for silence
    double pause_dbfs;  // root mean square over the quietest tenth of the 10 ms blocks, the pauses of
                        // speech; minus infinity for silence
};

Level levelOf(const std::vector<int16_t>& samples);

}  // namespace se_host
