// What is compared, one function an area.
#pragma once

#include "bench/routines_vs_libraries/session.h"

namespace routines_vs_libraries {

void correlation(Session& session);
void realFft(Session& session);
void complexMultiply(Session& session);
void resampling(Session& session);
void fir(Session& session);
void processBlock(Session& session);
void propertyTree(Session& session);

struct Area {
    const char* name;
    const char* subject;
    void (*run)(Session&);
};

inline constexpr Area kAreas[] = {
    {"correlation", "FIR correlation of 16-bit samples", correlation},
    {"real-fft", "Real FFT and the hooks around it", realFft},
    {"complex-multiply", "Product of complex 16-bit vectors", complexMultiply},
    {"resampling", "Interpolation from 16 to 48 kHz", resampling},
    {"fir", "Filter of 55 taps on blocks of audio", fir},
    {"process-block", "The wrapper's own share of a block", processBlock},
    {"property-tree", "Property tree: set, look-up, passes over diagnostics", propertyTree},
};

}  // namespace routines_vs_libraries
