#include "tests/reference_engine/echo_scene.h"

#include <algorithm>

namespace reference_engine_test {

se_scene::SceneOptions echoOptions(Build build, double seconds) {
    se_scene::SceneOptions options;
    options.seconds = seconds;
    options.array_radius_m = arrayRadiusOf(build);
    options.reverberation_s = 0.3;
    options.echo_level_dbfs = -26;
    options.sensor_noise_dbfs = -85;
    options.talker_level_dbfs = se_scene::kSilent;
    return options;
}

Samples between(const Samples& samples, double begin_s, double end_s) {
    const auto at = [&](double seconds) {
        return samples.begin() + std::min(static_cast<ptrdiff_t>(seconds * se_scene::kSampleRate),
                                          static_cast<ptrdiff_t>(samples.size()));
    };
    return Samples(at(begin_s), at(end_s));
}

void EchoTest::start() const {
    engine.MMIfInit(0);
    engine.MMIfSetManualLocation(2, 32767);
    engine.MMIfSetNoiseReductionBypass(1);
}

Samples EchoTest::process(const Samples& far_end, const se_scene::MicrophoneRows& rows) const {
    std::vector<Samples> samples;
    for (const auto& row : rows) samples.push_back(se_scene::toInt16(row));
    return process(far_end, samples);
}

Samples EchoTest::process(const Samples& far_end, const std::vector<Samples>& rows) const {
    Samples out(far_end.size());
    Samples played(kBlock);
    Samples block(kMicrophones * kBlock);
    for (size_t start = 0; start + kBlock <= far_end.size(); start += kBlock) {
        for (size_t m = 0; m < kMicrophones; ++m) {
            std::copy_n(rows[m].data() + start, kBlock, block.data() + m * kBlock);
        }
        engine.RcvIfProcessReceivePath(far_end.data() + start, played.data());
        engine.MMIfProcessMicrophones(block.data(), block.data() + kBlock, out.data() + start);
    }
    return out;
}

Samples EchoTest::cancelled(const se_scene::Scene& scene) const {
    start();
    return process(se_scene::toInt16(scene.far_end), scene.mixture());
}

Samples EchoTest::bypassed(const se_scene::Scene& scene) const {
    start();
    engine.MMIfSetAecBypass(1);
    return process(se_scene::toInt16(scene.far_end), scene.mixture());
}

Samples EchoTest::talkerAlone(const se_scene::Scene& scene) const {
    start();
    engine.MMIfSetAecBypass(1);
    return process(Samples(scene.frames), scene.talker);
}

Samples EchoTest::bypassedWithRobustBeams(const se_scene::Scene& scene) const {
    start();
    engine.MMIfSetAecBypass(1);
    engine.SEDiagSetInt16(engine.diag("mmfx_most_sharpness_q10"), 0);
    return process(se_scene::toInt16(scene.far_end), scene.mixture());
}

double EchoTest::enhancement(const se_scene::Scene& scene, double begin_s, double end_s) const {
    return decibels(powerOf(between(bypassedWithRobustBeams(scene), begin_s, end_s)) /
                    powerOf(between(cancelled(scene), begin_s, end_s)));
}

}  // namespace reference_engine_test
