// An engine with more settings than module-echo-cancel has room for, which would end the process.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/engines/test_engine.h"
#include "tests/pipewire/plugin_under_test.h"
#include "tests/pipewire/pods.h"
#include "tests/pipewire/sound.h"

namespace se_pipewire_test {
namespace {

enum Type { kInt16 = 1, kFloat32 = 7 };
enum Access { kRead = 1, kReadWrite = 3 };
enum Level { kBasic, kIntermediate, kAdvanced, kDebug };

// `count` settings whose names begin with `name`.
void add(quill::test::TestEngine& engine, const std::string& name, int count, int level) {
    for (int i = 0; i < count; ++i) {
        engine->add_diag((name + std::to_string(i)).c_str(), kInt16, 1, kReadWrite, level, "help");
    }
}

std::vector<std::string> names(const Plugin& plugin) {
    std::vector<std::string> all;
    for (int i = 0; i < descriptionCount(plugin); ++i) all.push_back(description(plugin, i).name);
    return all;
}

int count(const std::vector<std::string>& names, const std::string& beginning) {
    int found = 0;
    for (const std::string& name : names) found += name.rfind(beginning, 0) == 0 ? 1 : 0;
    return found;
}

class PipeWireManySettings : public testing::Test {
  protected:
    PipeWireManySettings() {
        engine->set_recording(false);
        add(engine, "debug_", 20, kDebug);
        add(engine, "advanced_", 300, kAdvanced);
        engine->add_diag("RcvGainQ10", kInt16, 1, kReadWrite, kBasic, "help");
        engine->add_diag("senr_echo_safety_factor", kInt16, 1, kReadWrite, kBasic, "help");
        engine->add_diag("level", kInt16, 1, kRead, kBasic, "help");
        engine->add_diag("array", kInt16, 5, kReadWrite, kBasic, "help");
        gain = engine->add_diag("factor", kFloat32, 1, kReadWrite, kBasic, "help");
        add(engine, "intermediate_", 300, kIntermediate);
        add(engine, "basic_", 20, kBasic);
    }

    void open() {
        const std::string folder = quill::test::enginePath("test_engines");
        EXPECT_EQ(plugin.init({{"se.folder", folder.c_str()}, {"se.engine", "full"}}), 0) << plugin.log();
    }

    quill::test::TestEngine engine;
    int gain;
    Plugin plugin;
};

TEST_F(PipeWireManySettings, Are500Parameters) {
    open();
    EXPECT_EQ(descriptionCount(plugin), 500);
    EXPECT_LE(values(plugin).size(), 502U);
}

TEST_F(PipeWireManySettings, BeginWithTheBasicOnes) {
    open();
    const std::vector<std::string> all = names(plugin);
    EXPECT_EQ(count(all, "basic_"), 20);
    EXPECT_EQ(count(all, "RcvGainQ10"), 1);
    EXPECT_EQ(count(all, "intermediate_"), 300);
    EXPECT_GT(count(all, "advanced_"), 100);
    EXPECT_EQ(count(all, "debug_"), 0);
    EXPECT_EQ(count({all.begin(), all.begin() + 20}, "intermediate_"), 0);
}

TEST_F(PipeWireManySettings, ShowNoArraysAndNothingReadOnly) {
    open();
    const std::vector<std::string> all = names(plugin);
    EXPECT_EQ(count(all, "array"), 0);
    EXPECT_EQ(count(all, "level"), 0);
}

TEST_F(PipeWireManySettings, WhatIsNotShownCanBeSetByName) {
    open();
    EXPECT_EQ(set(plugin,
                  [](spa_pod_builder* builder) {
                      spa_pod_builder_string(builder, "debug_7");
                      spa_pod_builder_int(builder, 12);
                  }),
              0);
    const Planes captured = noise(8, 1600);
    Planes output(8, std::vector<float>(1600));
    auto in = pointers(captured, 0);
    auto out = pointers(output, 0);
    plugin.methods().run(plugin.object(), in.data(), in.data(), out.data(), 1600);
    EXPECT_EQ(engine->integer(7), 12);
}

TEST_F(PipeWireManySettings, FloatsKeepTheirValue) {
    engine->set_real(gain, 0.75F);
    open();
    const Description factor = description(plugin, "factor");
    EXPECT_EQ(factor.type, static_cast<uint32_t>(SPA_TYPE_Float));
    EXPECT_EQ(factor.numbers[0], 0.75);
    EXPECT_EQ(value(plugin, "factor"), "0.75");
    EXPECT_EQ(value(plugin, "array"), "none");
}

}  // namespace
}  // namespace se_pipewire_test
