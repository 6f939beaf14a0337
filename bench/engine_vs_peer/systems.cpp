#include "bench/engine_vs_peer/systems.h"

#include <chrono>
#include <cmath>

#include "bench/engine_vs_peer/peer.h"
#include "webrtc_common/se_wrapper.h"

namespace engine_vs_peer {
namespace {

namespace se = quill::media::se_wrapper;

constexpr int kLocations = 12;       // look directions of the engine
constexpr int16_t kCertain = 32767;  // confidence

int engineTail() {
    const int diag = se::getDiagIndexOrDie({"seaec_tail_ms"});
    return se::SEDiagGetUInt16(diag) * (se_scene::kSampleRate / 1000);
}

uint16_t locationNearest(double azimuth_deg) {
    const int location = static_cast<int>(std::lround(azimuth_deg * kLocations / 360)) % kLocations;
    return static_cast<uint16_t>((location + kLocations) % kLocations);
}

template <class Work>
double microsecondsOf(const Work& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count();
}

void append(const int16_t* block, std::vector<float>& row) {
    for (size_t i = 0; i < kBlock; ++i) row.push_back(static_cast<float>(block[i]) / 32768);
}

}  // namespace

EngineText describeEngine() {
    std::string kernels;
    for (const auto& [family, variant] : se::selectedKernels()) {
        kernels += (kernels.empty() ? "" : ", ") + std::string(family) + " " + variant;
    }
    return {se::p_signal_essence_library.get(), se::MMIfGetVersionString(), kernels};
}

Outputs runBoth(const se_scene::Scene& scene, const se_scene::SceneOptions& options, bool tell_engine) {
    se::initSignalEssence();
    se::versionSpecificSettings();
    if (tell_engine) se::MMIfSetManualLocation(locationNearest(options.talker_azimuth_deg), kCertain);
    Peer peer(DelayAndSum(se_scene::microphonePositions(options.array_radius_m),
                          se_scene::atAzimuth(options.talker_azimuth_deg, options.talker_distance_m)),
              engineTail());

    const std::vector<int16_t> far_end = se_scene::toInt16(scene.far_end);
    const std::vector<int16_t> recording = se_scene::interleave(scene.mixture(), scene.far_end);
    Outputs outputs;
    for (size_t start = 0; start + kBlock <= scene.frames; start += kBlock) {
        const int16_t* const played = far_end.data() + start;
        const int16_t* const recorded = recording.data() + start * se_scene::kChannels;
        int16_t through[kBlock], out[kBlock];
        outputs.microseconds[kEngine].push_back(microsecondsOf([&] {
            se::RcvIfProcessReceivePath(played, through);
            se::processBlock(se_scene::kChannels, recorded, se::BLOCK_SIZE, out, true);
        }));
        append(out, outputs.rows[kEngine]);
        outputs.microseconds[kPeer].push_back(microsecondsOf([&] { peer.process(played, recorded, out); }));
        append(out, outputs.rows[kPeer]);
    }
    return outputs;
}

}  // namespace engine_vs_peer
