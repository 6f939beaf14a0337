#include "pipewire/canceller.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <string>
#include <string_view>

#include "pipewire/arguments.h"

namespace se_pipewire {
namespace {

uint64_t now() {
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::nanoseconds(time).count());
}

}  // namespace

Canceller::~Canceller() {
    sendRecordsTo(Log(nullptr));
}

int Canceller::open(const spa_dict* arguments, const Streams& streams) {
    se_host_options_t options;
    try {
        options = optionsOf(arguments);
        requireFormat(streams.captured, options);
    } catch (const std::invalid_argument& error) {
        log_.error(error.what());
        return -EINVAL;
    }
    options.log = writeRecord;
    sendRecordsTo(log_);

    se_host_t* host = nullptr;
    char why[1024];
    const se_host_status_t status = se_host_open(&options, &host, why, sizeof why);
    if (host == nullptr) {
        log_.error(why);
        return status == SE_HOST_IN_USE ? -EBUSY : -EINVAL;
    }
    if (status != SE_HOST_OK) log_.warning(why);
    host_.reset(host);
    parameters_.emplace(host, log_);
    streams_ = streams;
    far_end_ = FarEnd(streams.played);
    far_end_is_captured_ = options.far_end_channel >= 0;
    log_.info(std::string("engine ") + se_host_engine_build(host) + " (" + se_host_engine_version(host) +
              ")");
    return 0;
}

int Canceller::run(const float* const* captured, const float* const* played, float* const* output,
                   uint32_t frames) {
    const uint64_t time = clock_.at(now(), frames);
    bool done = host_ != nullptr;
    for (size_t begin = 0; begin < frames && done; begin += kMostFrames) {
        se_host_clock(host_.get(), time + begin * StreamClock::kNanosecondsOfFrame);
        done = runPiece(captured, played, output[0], begin, std::min(frames - begin, kMostFrames));
    }
    const uint32_t first_silent = done ? 1 : 0;
    for (uint32_t channel = first_silent; channel < streams_.output.channels; ++channel) {
        std::fill_n(output[channel], frames, 0.0F);
    }
    return done ? 0 : -EIO;
}

bool Canceller::runPiece(const float* const* captured, const float* const* played, float* output,
                         size_t begin, size_t frames) {
    const float* planes[SPA_AUDIO_MAX_CHANNELS];
    const uint32_t channels = streams_.captured.channels;
    for (uint32_t i = 0; i < channels; ++i) planes[i] = captured[i] + begin;
    const float* const far_end =
        far_end_is_captured_ ? nullptr : far_end_.mono(played, begin, frames, mixed_);
    return se_host_process_planes_f32(host_.get(), planes, channels, far_end, frames, output + begin) ==
           SE_HOST_OK;
}

void Canceller::pause() {
    clock_.pause();
    if (host_ == nullptr) return;
    char text[2048];
    if (se_host_advice(host_.get(), text, sizeof text) == 0) return;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        log_.info(std::string(line));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    }
}

}  // namespace se_pipewire
