#include "host/border/options.h"

#include <algorithm>
#include <iterator>

namespace se_host {
namespace {

std::string textOr(const char* text) {
    return text == nullptr ? std::string() : text;
}

EngineOptions engineOptionsOf(const se_host_options_t& options) {
    EngineOptions engine;
    const std::string build = textOr(options.engine);
    (build.find('/') == std::string::npos ? engine.build : engine.file) = build;
    engine.folder = textOr(options.folder);
    engine.device_model = options.device_model != 0;
    return engine;
}

bool isChannel(int32_t channel) {
    return channel >= Wiring::kNone && channel < SE_HOST_MOST_CHANNELS;
}

}  // namespace

HostOptions hostOptionsOf(const se_host_options_t& options) {
    HostOptions host{engineOptionsOf(options), textOr(options.tuning), options.quantum, {}};
    std::copy(std::begin(options.microphones), std::end(options.microphones),
              host.wiring.microphones.begin());
    host.wiring.far_end = options.far_end_channel;
    return host;
}

std::string objectionTo(const se_host_options_t& options) {
    if (options.sample_rate != 0 && options.sample_rate != SE_HOST_SAMPLE_RATE) {
        return "the engine works at 16000 Hz, not at " + std::to_string(options.sample_rate) +
               "; resample before and after it, as the sound server or 'se_host process' do";
    }
    const bool channels_exist =
        std::all_of(std::begin(options.microphones), std::end(options.microphones), isChannel) &&
        isChannel(options.far_end_channel);
    if (channels_exist) return {};
    return "a channel is from 0 to " + std::to_string(SE_HOST_MOST_CHANNELS - 1) + ", or -1 for none";
}

}  // namespace se_host
