// Every writable diagnostic has an effect: written in the middle of a session, it changes the output after
// it.
#include <map>
#include <set>

#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"
#include "tools/scene/scene.h"

using namespace reference_engine_test;

namespace {

struct Edit {
    const char* name;
    int value;
};

struct Effect {
    Edit edit;
    Edit before = {nullptr, 0};  // another diagnostic, set from the start, where the effect needs it
};

// "receive_gain" stands for the build's name of it.
constexpr Effect kEffects[] = {
    {{"receive_gain", 512}},
    {{"mmfx_look_mode", 1}},
    {{"mmfx_rear_rejection_db", 20}, {"mmfx_look_mode", 2}},
    {{"mmfx_bypass_location_search", 1}},
    {{"mmfx_force_location_index", 5}, {"mmfx_bypass_location_search", 1}},
    {{"mmfx_force_location_confidence", 5}, {"mmfx_bypass_location_search", 1}},
    {{"mmfx_switch_hold_blocks", 1000}},
    {{"mmfx_search_gate_energy", 2000000000}},
    {{"mmfx_restart_search", 1}},
    {{"mmfx_most_sharpness_q10", 0}},
    {{"seout_source", 1}},
    {{"seout_gain_q10", 512}},
    {{"seout_unmute_at_sample", 24000}},
    {{"senr_echo_safety_factor_q10", 8192}},
    {{"senr_nf_weight_factor_q10", 200}},
    {{"senr_nf_fullband_weight_factor_q10", 400}},
    {{"senr_comfort_noise_q10", 800}},
    {{"sent_blocks", 120}},
};

se_scene::MicrophoneRows talker(Build build, double azimuth_deg) {
    se_scene::SceneOptions options;
    options.seconds = 1;
    options.array_radius_m = arrayRadiusOf(build);
    options.talker_azimuth_deg = azimuth_deg;
    return se_scene::makeScene(options).mixture();
}

class Diagnostics : public EngineTest {
  protected:
    const char* real(const char* name) const {
        return std::string(name) == "receive_gain" ? receiveGainOf(GetParam()) : name;
    }

    void write(Edit edit) {
        const int index = engine.diag(real(edit.name));
        engine.SEDiagSetInt16(index, static_cast<int16_t>(edit.value));
        engine.SEDiagSetUInt16(index, static_cast<uint16_t>(edit.value));
        engine.SEDiagSetInt32(index, edit.value);
        engine.SEDiagSetUInt32(index, static_cast<uint32_t>(edit.value));
        engine.SEDiagSetInt40(index, edit.value);
        engine.SEDiagSetUInt40(index, static_cast<uint64_t>(edit.value));
        engine.SEDiagSetFloat32(index, static_cast<float>(edit.value));
        engine.SEDiagSetEnumAsInt(index, edit.value);
    }

    // Everything that a client receives from a session with a talker that moves from 30 to 210 degrees. The
    // edit is made at the moment of the move.
    std::vector<int> session(const Effect& effect, bool edited) {
        std::vector<int> transcript;
        engine.MMIfInit(0);
        if (effect.before.name != nullptr) write(effect.before);
        engine.MMIfStartNoiseTest();
        follow(first_, &transcript);
        if (edited) write(effect.edit);
        follow(second_, &transcript);
        return transcript;
    }

    void follow(const se_scene::MicrophoneRows& rows, std::vector<int>* transcript) {
        // Soft, as the search waits until the echo of a loud one is known.
        const Samples far_end = whiteNoise(kBlock, -55, 1);
        Samples played(kBlock);
        for (size_t start = 0; start + kBlock <= rows[0].size(); start += kBlock) {
            se_scene::MicrophoneRows block;
            for (const auto& row : rows) {
                const auto begin = row.begin() + static_cast<ptrdiff_t>(start);
                block.emplace_back(begin, begin + kBlock);
            }
            engine.RcvIfProcessReceivePath(far_end.data(), played.data());
            const Samples out = engine.process(block);
            transcript->insert(transcript->end(), out.begin(), out.end());
            transcript->insert(transcript->end(), {played[0], engine.location(), engine.confidence(),
                                                   engine.MMIfNoiseTestIsRunning()});
        }
    }

  private:
    const se_scene::MicrophoneRows first_ = talker(GetParam(), 30);
    const se_scene::MicrophoneRows second_ = talker(GetParam(), 210);
};
INSTANTIATE_FOR_EACH_BUILD(Diagnostics);

}  // namespace

TEST_P(Diagnostics, HaveAnEffectWhenWritten) {
    std::map<const char*, std::vector<int>> unedited;  // by what was set from the start
    for (const Effect& effect : kEffects) {
        auto& left_alone = unedited[effect.before.name];
        if (left_alone.empty()) left_alone = session(effect, false);
        EXPECT_NE(session(effect, true), left_alone) << effect.edit.name;
    }
}

TEST_P(Diagnostics, ChangeNothingWhenLeftAlone) {
    EXPECT_EQ(session(kEffects[0], false), session(kEffects[0], false));
}

TEST_P(Diagnostics, AreAllKnownToTheseTests) {
    std::set<std::string> writable, known;
    for (int i = 0; i < engine.SEDiagGetNumDiags(); ++i) {
        if ((engine.SEDiagGetRW(i) & kSEDiagWrite) != 0) writable.insert(engine.SEDiagGetName(i));
    }
    for (const Effect& effect : kEffects) known.insert(real(effect.edit.name));
    EXPECT_EQ(writable, known);
}

TEST_P(Diagnostics, ShowTheLevelOfEachMicrophone) {
    std::vector<Samples> rows;
    for (int m = 0; m < 7; ++m) rows.push_back(whiteNoise(kBlock, -20 - 5 * m, 1));
    engine.process(rows);
    const float* levels = engine.SEDiagGetFloat32Array(engine.diag("semic_level_dbfs"));
    const int channels[] = {1, 3, 2, 5, 6, 7, 4};
    for (int m = 0; m < 7; ++m) EXPECT_NEAR(levels[channels[m] - 1], -20 - 5 * m, 1.5) << m;
}

TEST_P(Diagnostics, ShowClippedSamples) {
    engine.processAlike(square(kBlock, 2));
    EXPECT_EQ(engine.SEDiagGetUInt16Array(engine.diag("semic_clipped"))[3], 160);
    EXPECT_EQ(engine.SEDiagGetInt16Array(engine.diag("semic_peak"))[3], 32767);
    engine.processAlike(square(kBlock, 2));
    EXPECT_EQ(engine.SEDiagGetUInt32Array(engine.diag("semic_clipped_total"))[3], 320u);
}

TEST_P(Diagnostics, ShowSumsThatNeed40Bits) {
    engine.processAlike(Samples(kBlock, -32768));
    EXPECT_EQ(engine.SEDiagGetUInt40Array(engine.diag("semic_energy"))[6], 171798691840u);
    EXPECT_EQ(engine.SEDiagGetInt40Array(engine.diag("semic_correlation"))[6], 171798691840);
}

TEST_P(Diagnostics, ShowTheOutputAsItLeft) {
    const Samples out = engine.processAlike(whiteNoise(kBlock, -20, 1));
    const int16_t* shown = engine.SEDiagGetInt16Array(engine.diag("seout_block"));
    EXPECT_EQ(Samples(shown, shown + kBlock), out);
}

TEST_P(Diagnostics, ShowTheSteeringOfEachMicrophone) {
    engine.MMIfSetManualLocation(3, 0);  // azimuth 90: in front of the channels 2 and 5
    engine.processAlike(Samples(kBlock, 0));
    const int32_t* delays = engine.SEDiagGetInt32Array(engine.diag("mmfx_steering_delay_ns"));
    const double expected = arrayRadiusOf(GetParam()) * std::sin(M_PI / 3) / 343 * 1e9;
    EXPECT_EQ(delays[0], 0);
    EXPECT_NEAR(delays[2 - 1], expected, 1);
    EXPECT_NEAR(delays[5 - 1], expected, 1);
    EXPECT_NEAR(delays[7 - 1], -expected, 1);
}

TEST_P(Diagnostics, CountBlocksAndSamples) {
    engine.processAlike(Samples(3 * kBlock, 0));
    EXPECT_EQ(engine.SEDiagGetUInt32(engine.diag("sesys_blocks")), 3u);
    EXPECT_EQ(engine.SEDiagGetUInt40(engine.diag("sesys_sample_clock")), 480u);
}

TEST_P(Diagnostics, ClearARequestWhenItIsDone) {
    const int index = engine.diag("mmfx_restart_search");
    engine.SEDiagSetUInt16(index, 1);
    engine.processAlike(Samples(kBlock, 0));
    EXPECT_EQ(engine.SEDiagGetUInt16(index), 0);
}
