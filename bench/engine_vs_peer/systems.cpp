#include "bench/engine_vs_peer/systems.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <stdexcept>

#include "bench/engine_vs_peer/peer.h"
#include "tools/scene/measure.h"
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

double microsecondsOfThisThread() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

template <class Work>
double microsecondsOf(const Work& work) {
    const double begin = microsecondsOfThisThread();
    work();
    return microsecondsOfThisThread() - begin;
}

void append(const int16_t* block, std::vector<float>& row) {
    for (size_t i = 0; i < kBlock; ++i) row.push_back(static_cast<float>(block[i]) / 32768);
}

// A scene as the device delivers it.
struct DeviceSound {
    explicit DeviceSound(const se_scene::Scene& scene)
        : frames(scene.frames),
          far_end(se_scene::toInt16(scene.far_end)),
          recording(se_scene::interleave(scene.mixture(), scene.far_end)) {}

    size_t frames;
    std::vector<int16_t> far_end;
    std::vector<int16_t> recording;
};

Outputs runOnce(const DeviceSound& sound, const se_scene::SceneOptions& options, bool tell_engine) {
    se::initSignalEssence();
    se::versionSpecificSettings();
    Peer peer(se_scene::microphonePositions(options.array_radius_m), engineTail());
    Outputs outputs;
    double told_deg = NAN;
    for (size_t start = 0; start + kBlock <= sound.frames; start += kBlock) {
        const int16_t* const played = sound.far_end.data() + start;
        const int16_t* const recorded = sound.recording.data() + start * se_scene::kChannels;
        const double middle_s = static_cast<double>(start + kBlock / 2) / se_scene::kSampleRate;
        const double azimuth_deg = talkerAzimuthAt(options, middle_s);
        if (azimuth_deg != told_deg) {
            told_deg = azimuth_deg;
            peer.steer(se_scene::atAzimuth(azimuth_deg, options.talker_distance_m));
            if (tell_engine) se::MMIfSetManualLocation(locationNearest(azimuth_deg), kCertain);
        }
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

}  // namespace

EngineText describeEngine() {
    std::string kernels;
    for (const auto& [family, variant] : se::selectedKernels()) {
        kernels += (kernels.empty() ? "" : ", ") + std::string(family) + " " + variant;
    }
    return {se::p_signal_essence_library.get(), se::MMIfGetVersionString(), kernels};
}

Outputs runBoth(const se_scene::Scene& scene, const se_scene::SceneOptions& options, const RunOptions& run) {
    const DeviceSound sound(scene);
    Outputs outputs = runOnce(sound, options, run.tell_engine);
    for (int pass = 1; pass < run.passes; ++pass) {
        const Outputs again = runOnce(sound, options, run.tell_engine);
        for (const System s : {kEngine, kPeer}) {
            if (again.rows[s] != outputs.rows[s])
                throw std::runtime_error(
                    std::string(s == kEngine ? "the engine" : "the peer") +
                    " gave another output in a further pass; report it as a defect, and use --passes 1");
            std::transform(again.microseconds[s].begin(), again.microseconds[s].end(),
                           outputs.microseconds[s].begin(), outputs.microseconds[s].begin(),
                           [](double a, double b) { return std::min(a, b); });
        }
    }
    return outputs;
}

Lags measureLags(double array_radius_m) {
    constexpr int kLongest = 800;  // samples
    se_scene::SceneOptions options;
    options.seconds = 3;
    options.array_radius_m = array_radius_m;
    const se_scene::Scene scene = makeScene(options);
    const Outputs outputs = runBoth(scene, options, {true, 1});
    const auto lag = [&](System s) {
        return se_scene::delayBetween(scene.talker_direct, outputs.rows[s], kLongest);
    };
    return {{lag(kEngine), lag(kPeer)}};
}

}  // namespace engine_vs_peer
