// An echo canceller over the engine, between PipeWire's streams: planar floats, any number of frames a call.
// Threads: `run` on PipeWire's data thread, everything else on its main thread.
#pragma once

#include <spa/param/audio/raw.h>
#include <spa/utils/dict.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "host/se_host.h"
#include "pipewire/far_end.h"
#include "pipewire/log.h"
#include "pipewire/parameters.h"
#include "pipewire/stream_clock.h"

namespace se_pipewire {

// Formats of the streams.
struct Streams {
    spa_audio_info_raw captured;
    spa_audio_info_raw output;
    spa_audio_info_raw played;
};

class Canceller {
  public:
    explicit Canceller(const Log& log) : log_(log) {}
    ~Canceller();
    Canceller(const Canceller&) = delete;
    Canceller& operator=(const Canceller&) = delete;

    // Starts the engine. result: 0, or a negative errno after a line in the log.
    int open(const spa_dict* arguments, const Streams& streams);

    // [audio] rt-safe. The output's first channel is the engine's, the others are silent.
    // result: 0, or -EIO and silence.
    int run(const float* const* captured, const float* const* played, float* const* output, uint32_t frames);

    // The streams stop. Writes into the log what was wrong with the sound, when something was.
    void pause();

    // Null before open.
    Parameters* parameters() { return parameters_ ? &*parameters_ : nullptr; }

  private:
    // How many frames are processed at once: the far end is mixed in a buffer of this length.
    static constexpr size_t kMostFrames = 1024;

    bool runPiece(const float* const* captured, const float* const* played, float* output, size_t begin,
                  size_t frames);

    struct Close {
        void operator()(se_host_t* host) const { se_host_close(host); }
    };

    Log log_;
    Streams streams_{};
    FarEnd far_end_;
    bool far_end_is_captured_ = false;
    StreamClock clock_;
    float mixed_[kMostFrames] = {};
    std::unique_ptr<se_host_t, Close> host_;
    std::optional<Parameters> parameters_;
};

}  // namespace se_pipewire
