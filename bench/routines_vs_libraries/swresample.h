// libswresample on 16-bit samples.
#pragma once

extern "C" {
#include <libavutil/opt.h>
#include <libswresample/swresample.h>
}

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace routines_vs_libraries {

using Swr = std::shared_ptr<SwrContext>;
using SwrOptions = std::vector<std::pair<const char*, int>>;

// From interleaved samples at rate_in to samples in `to` at rate_out.
inline Swr makeSwr(int channels, AVSampleFormat to, int rate_in, int rate_out,
                   const SwrOptions& options = {}) {
    AVChannelLayout layout;
    av_channel_layout_default(&layout, channels);
    SwrContext* context = nullptr;
    swr_alloc_set_opts2(&context, &layout, to, rate_out, &layout, AV_SAMPLE_FMT_S16, rate_in, 0, nullptr);
    Swr made(context, [](SwrContext* c) { swr_free(&c); });
    for (const auto& [name, value] : options) av_opt_set_int(context, name, value, 0);
    if (swr_init(context) < 0) throw std::runtime_error("libswresample cannot be set up");
    return made;
}

}  // namespace routines_vs_libraries
