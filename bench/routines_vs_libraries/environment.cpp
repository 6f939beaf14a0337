#include "bench/routines_vs_libraries/environment.h"

#include <fftw3.h>
#include <liquid/liquid.h>
#include <samplerate.h>
#include <volk/constants.h>
#include <volk/volk.h>

extern "C" {
#include <libavutil/avutil.h>
}

#include <boost/version.hpp>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <nlohmann/json.hpp>

#include "kernel_check/program/machine.h"

#define TEXT_OF(x) #x
#define TEXT(x) TEXT_OF(x)

namespace routines_vs_libraries {
namespace {

std::string today() {
    char text[32];
    const std::time_t now = std::time(nullptr);
    std::strftime(text, sizeof(text), "%Y-%m-%d", std::localtime(&now));
    return text;
}

// Runnable processes, averaged over the last minute: one when only this program runs.
std::string load() {
    std::string text;
    std::ifstream("/proc/loadavg") >> text;
    return text;
}

std::string boostVersion() {
    return std::to_string(BOOST_VERSION / 100000) + "." + std::to_string(BOOST_VERSION / 100 % 1000) + "." +
           std::to_string(BOOST_VERSION % 100);
}

std::string firstWord(const std::string& text) {
    return text.substr(0, text.find(' '));
}

}  // namespace

Names environment() {
    return {
        {"processor", program::processorName() + ", " + program::processorModel()},
        {"compiler", program::compilerName()},
        {"flags", PEERS_FLAGS},
        {"date", today()},
        {"load before", load()},
    };
}

Names libraries() {
    return {
        {"FFTW", fftwf_version},
        {"KissFFT", KISSFFT_VERSION},
        {"libavcodec, libavutil, libswresample", av_version_info()},
        {"libsamplerate", firstWord(src_get_version())},
        {"liquid-dsp", liquid_libversion()},
        {"SpeexDSP", SPEEXDSP_VERSION},
        {"VOLK", std::string(volk_version()) + ", " + volk_get_machine()},
        {"Boost", boostVersion()},
        {"nlohmann_json", TEXT(NLOHMANN_JSON_VERSION_MAJOR) "." TEXT(NLOHMANN_JSON_VERSION_MINOR) "." TEXT(
                              NLOHMANN_JSON_VERSION_PATCH)},
    };
}

}  // namespace routines_vs_libraries
