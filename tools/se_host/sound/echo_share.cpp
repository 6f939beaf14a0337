#include "tools/se_host/sound/echo_share.h"

#include <cmath>
#include <cstddef>

#include "host/health/real_transform.h"
#include "tools/se_host/sound/resample.h"
#include "tools/se_host/sound/windowed_spectrum.h"
#include "webrtc_common/se_wrapper/dsp/block_size.h"

namespace se_host {
namespace {

using Samples = std::vector<int16_t>;
using Bins = std::vector<std::complex<float>>;

constexpr ptrdiff_t kBlock = quill::media::se_wrapper::BLOCK_SIZE;
constexpr ptrdiff_t kFrame = 2048;
constexpr ptrdiff_t kHop = 2 * kBlock;
constexpr size_t kFrames = 37;    // of a mean
constexpr size_t kFirstBin = 26;  // 200 Hz
constexpr double kTiny = 1e-9;

// The windowed frame around a sample; zeros outside of the sound.
Bins binsAround(const Samples& samples, ptrdiff_t centre, RealTransform& transform) {
    static const std::vector<double> window = hannWindow(kFrame);
    std::vector<float> frame(kFrame);
    for (ptrdiff_t i = 0; i < kFrame; ++i) {
        const ptrdiff_t at = centre - kFrame / 2 + i;
        if (at < 0 || at >= static_cast<ptrdiff_t>(samples.size())) continue;
        frame[static_cast<size_t>(i)] =
            static_cast<float>(samples[static_cast<size_t>(at)] * window[static_cast<size_t>(i)]);
    }
    return transform.forward(std::move(frame));
}

// Sums of a bin over the last frames.
struct Sums {
    double far_end = 0;
    double microphone = 0;
    std::complex<double> cross = 0;

    void add(std::complex<double> played, std::complex<double> heard, double sign) {
        far_end += sign * std::norm(played);
        microphone += sign * std::norm(heard);
        cross += sign * std::conj(played) * heard;
    }
};

double shareIn(const std::vector<Sums>& sums) {
    double coherent = 0, all = kTiny;
    for (const Sums& bin : sums) {
        if (bin.far_end > kTiny) coherent += std::norm(bin.cross) / bin.far_end;
        all += bin.microphone;
    }
    return coherent / all;
}

}  // namespace

std::vector<double> echoShares(const Samples& far_end, const Samples& microphone, const EchoLags& lags) {
    RealTransform transform(kFrame);
    const auto size = static_cast<ptrdiff_t>(microphone.size());
    std::vector<double> shares(static_cast<size_t>(size / kBlock));
    std::vector<Bins> played_frames(kFrames), heard_frames(kFrames);
    std::vector<Sums> sums(kFrame / 2 + 1 - kFirstBin);
    const auto add = [&](size_t slot, double sign) {
        for (size_t k = 0; k < sums.size() && !played_frames[slot].empty(); ++k) {
            sums[k].add(played_frames[slot][kFirstBin + k], heard_frames[slot][kFirstBin + k], sign);
        }
    };
    constexpr ptrdiff_t kHalf = kFrames / 2;
    for (ptrdiff_t frame = 0; frame * kHop < size + kHalf * kHop; ++frame) {
        const size_t slot = static_cast<size_t>(frame) % kFrames;
        add(slot, -1);
        const ptrdiff_t at = frame * kHop;
        played_frames[slot] = binsAround(far_end, at - lags.at(static_cast<size_t>(at)), transform);
        heard_frames[slot] = binsAround(microphone, at, transform);
        add(slot, 1);
        if (frame < kHalf) continue;
        const double share = shareIn(sums);
        for (ptrdiff_t block = 0; block < kHop / kBlock; ++block) {
            const auto index = static_cast<size_t>((frame - kHalf) * kHop / kBlock + block);
            if (index < shares.size()) shares[index] = share;
        }
    }
    return shares;
}

}  // namespace se_host
