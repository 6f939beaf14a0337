// The reference engine's settings as PipeWire's parameters.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "tests/pipewire/plugin_under_test.h"
#include "tests/pipewire/pods.h"
#include "tests/pipewire/sound.h"

namespace se_pipewire_test {
namespace {

using Numbers = std::vector<double>;

class PipeWireParameters : public testing::Test {
  protected:
    PipeWireParameters() { EXPECT_EQ(plugin.init(), 0) << plugin.log(); }

    // Enough blocks for the engine to take edits and for values to come back.
    void runBlocks() {
        const Planes captured = noise(8, 3200);
        Planes output(8, std::vector<float>(3200));
        auto in = pointers(captured, 0);
        auto far = pointers(captured, 0);
        auto out = pointers(output, 0);
        plugin.methods().run(plugin.object(), in.data(), far.data(), out.data(), 3200);
    }

    Plugin plugin;
};

TEST_F(PipeWireParameters, AreDescribedWithNameHelpTypeAndRange) {
    const Description gain = description(plugin, "seout_gain_q10");
    EXPECT_EQ(gain.help, "Gain of the output, 1024 = 1");
    EXPECT_EQ(gain.type, static_cast<uint32_t>(SPA_TYPE_Int));
    ASSERT_EQ(gain.numbers.size(), 3U);
    EXPECT_EQ(gain.numbers[0], 1024);
    EXPECT_LE(gain.numbers[1], 0);
    EXPECT_GE(gain.numbers[2], 32767);
    EXPECT_TRUE(gain.is_param);
}

TEST_F(PipeWireParameters, OfMoreThan32BitsAreLong) {
    EXPECT_EQ(description(plugin, "seout_unmute_at_sample").type, static_cast<uint32_t>(SPA_TYPE_Long));
}

TEST_F(PipeWireParameters, SwitchesAreBool) {
    const Description bypass = description(plugin, "aec_bypass");
    EXPECT_EQ(bypass.type, static_cast<uint32_t>(SPA_TYPE_Bool));
    EXPECT_EQ(bypass.numbers, (Numbers{0, 0, 1}));
}

TEST_F(PipeWireParameters, EachHasADescriptionAndAValue) {
    const Values all = values(plugin);
    ASSERT_EQ(static_cast<int>(all.size()), plugin.methods().get_params(plugin.object(), nullptr));
    ASSERT_GT(descriptionCount(plugin), 10);
    for (int i = 0; i < descriptionCount(plugin); ++i) {
        const Description one = description(plugin, i);
        EXPECT_NE(one.help, "") << one.name;
        EXPECT_NE(value(plugin, one.name), "none") << one.name;
    }
}

TEST_F(PipeWireParameters, ThereIsNoneBehindTheLast) {
    spa_pod_builder builder{};
    EXPECT_EQ(plugin.methods().enum_props(plugin.object(), descriptionCount(plugin), &builder), -EINVAL);
    EXPECT_EQ(plugin.methods().enum_props(plugin.object(), -1, &builder), -EINVAL);
}

TEST_F(PipeWireParameters, WhatCannotBeWrittenIsNotOne) {
    EXPECT_EQ(value(plugin, "seout_level_dbfs"), "none");
    EXPECT_EQ(value(plugin, "location"), "none");
}

TEST_F(PipeWireParameters, NameTheEngine) {
    EXPECT_EQ(value(plugin, "se.engine").rfind("se_lib_beamv1.14 (", 0), 0U) << value(plugin, "se.engine");
}

TEST_F(PipeWireParameters, SayWhatIsWrongWithTheSound) {
    EXPECT_NE(value(plugin, "se.advice"), "none");
    EXPECT_NE(value(plugin, "se.advice"), "");
}

TEST_F(PipeWireParameters, AreSetWhileSoundRuns) {
    runBlocks();
    EXPECT_EQ(set(plugin,
                  [](spa_pod_builder* builder) {
                      spa_pod_builder_string(builder, "seout_gain_q10");
                      spa_pod_builder_int(builder, 900);
                      spa_pod_builder_string(builder, "seout_source");
                      spa_pod_builder_long(builder, 1);
                      spa_pod_builder_string(builder, "aec_bypass");
                      spa_pod_builder_bool(builder, true);
                  }),
              0);
    runBlocks();
    EXPECT_EQ(value(plugin, "seout_gain_q10"), "900");
    EXPECT_EQ(value(plugin, "seout_source"), "1");
    EXPECT_EQ(value(plugin, "aec_bypass"), "1");
    EXPECT_EQ(plugin.log(), "");
}

TEST_F(PipeWireParameters, ChangeTheSound) {
    const Planes captured = noise(8, 3200);
    Planes output(8, std::vector<float>(3200, 7));
    auto in = pointers(captured, 0);
    auto out = pointers(output, 0);
    runBlocks();
    set(plugin, [](spa_pod_builder* builder) {
        spa_pod_builder_string(builder, "seout_gain_q10");
        spa_pod_builder_int(builder, 0);
    });
    runBlocks();
    plugin.methods().run(plugin.object(), in.data(), in.data(), out.data(), 3200);
    EXPECT_EQ(output[0], std::vector<float>(3200));
}

TEST_F(PipeWireParameters, TakeTextsAndFloatsForNumbers) {
    set(plugin, [](spa_pod_builder* builder) {
        spa_pod_builder_string(builder, "seout_gain_q10");
        spa_pod_builder_string(builder, "800");
        spa_pod_builder_string(builder, "senr_comfort_noise_q10");
        spa_pod_builder_float(builder, 512.0F);
        spa_pod_builder_string(builder, "mmfx_rear_rejection_db");
        spa_pod_builder_double(builder, 12.0);
    });
    runBlocks();
    EXPECT_EQ(value(plugin, "seout_gain_q10"), "800");
    EXPECT_EQ(value(plugin, "senr_comfort_noise_q10"), "512");
    EXPECT_EQ(value(plugin, "mmfx_rear_rejection_db"), "12");
}

// PipeWire gives the settings of its own converter to everybody, at the beginning and whenever one changes.
TEST_F(PipeWireParameters, OfOthersAreIgnoredWithoutAWord) {
    const Values before = values(plugin);
    EXPECT_EQ(set(plugin,
                  [](spa_pod_builder* builder) {
                      spa_pod_builder_string(builder, "channelmix.upmix");
                      spa_pod_builder_bool(builder, true);
                      spa_pod_builder_string(builder, "resample.quality");
                      spa_pod_builder_int(builder, 4);
                      spa_pod_builder_string(builder, "audio.position");
                      spa_pod_builder_none(builder);
                  }),
              0);
    runBlocks();
    EXPECT_EQ(value(plugin, "seout_gain_q10"), "1024");
    EXPECT_EQ(values(plugin).size(), before.size());
    EXPECT_EQ(plugin.log(), "");
}

TEST_F(PipeWireParameters, ForeignOnesDoNotKeepOursFromBeingSet) {
    set(plugin, [](spa_pod_builder* builder) {
        spa_pod_builder_string(builder, "channelmix.volume-ramp");
        spa_pod_builder_none(builder);
        spa_pod_builder_string(builder, "seout_gain_q10");
        spa_pod_builder_int(builder, 700);
    });
    runBlocks();
    EXPECT_EQ(value(plugin, "seout_gain_q10"), "700");
}

TEST_F(PipeWireParameters, ARefusedValueIsNamedInTheLogAndTheOthersAreSet) {
    EXPECT_EQ(set(plugin,
                  [](spa_pod_builder* builder) {
                      spa_pod_builder_string(builder, "seout_gain_q10");
                      spa_pod_builder_string(builder, "loud");
                      spa_pod_builder_string(builder, "mmfx_rear_rejection_db");
                      spa_pod_builder_int(builder, 12);
                  }),
              -EINVAL);
    EXPECT_NE(plugin.log().find("seout_gain_q10"), std::string::npos) << plugin.log();
    EXPECT_EQ(std::count(plugin.log().begin(), plugin.log().end(), '\n'), 1);
    runBlocks();
    EXPECT_EQ(value(plugin, "mmfx_rear_rejection_db"), "12");
}

TEST_F(PipeWireParameters, SetFromWhatIsNoStructIsRefused) {
    const struct {
        spa_pod pod;
        int32_t value;
        int32_t padding;
    } number{{sizeof(int32_t), SPA_TYPE_Int}, 5, 0};
    EXPECT_EQ(plugin.methods().set_params(plugin.object(), &number.pod), -EINVAL);
    EXPECT_EQ(plugin.methods().set_params(plugin.object(), nullptr), -EINVAL);
}

TEST_F(PipeWireParameters, AreSetFromADictionary) {
    const spa_dict_item items[] = {{"seout_gain_q10", "600"}, {"foreign", "1"}, {"seout_source", nullptr}};
    const spa_dict dict{0, 3, items};
    EXPECT_EQ(plugin.methods().set_props(plugin.object(), &dict), 0);
    runBlocks();
    EXPECT_EQ(value(plugin, "seout_gain_q10"), "600");
    EXPECT_EQ(plugin.log(), "");
}

}  // namespace
}  // namespace se_pipewire_test
