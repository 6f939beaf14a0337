// How the cycles of a block are divided: the parts are shown for each run, and they add up.
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

using Json = nlohmann::json;

class Cycles : public HostTest, public ::testing::WithParamInterface<const char*> {
  protected:
    Cycles() { writeSound(path("in.wav"), patternedSound(1600)); }

    HostRun processWith(std::vector<std::string> more) {
        more.insert(more.end(), {"--far-end-channel", "0", "--engine", GetParam()});
        return process(more);
    }
    Json json(std::vector<std::string> more) {
        more.push_back("--json");
        const HostRun result = processWith(more);
        expectDone(result);
        return Json::parse(result.out);
    }
};
INSTANTIATE_TEST_SUITE_P(EachBuild, Cycles, ::testing::Values("se_lib_beamv1.14", "se_lib_harborv006"));

void expectSharesOf(const Json& cycles, int blocks) {
    EXPECT_EQ(cycles["blocks"].get<int>() + cycles["interrupted"].get<int>(), blocks);
    double sum = cycles["deinterleave"].get<double>() + cycles["engine"].get<double>();
    for (const Json& hook : cycles["hooks"]) sum += hook["cycles"].get<double>();
    EXPECT_NEAR(sum, cycles["total"].get<double>(), 1e-6 * sum);
    EXPECT_GT(cycles["deinterleave"], 0);
    EXPECT_GT(cycles["engine"], 0);
}

TEST_P(Cycles, AddUpToTheBlocks) {
    expectSharesOf(json({"--cycles"})["cycles"], 10);
}

// In each block seven signals are interpolated, four times each, and one spectrum is transformed forward and back.
TEST_P(Cycles, CountTheCallsOfEachHook) {
    const Json hooks = json({"--cycles"})["cycles"]["hooks"];
    ASSERT_EQ(hooks.size(), 6u);
    EXPECT_EQ(hooks["Interp1toNCore"]["calls"], 28);
    EXPECT_EQ(hooks["FwdDft"]["calls"], 1);
    EXPECT_EQ(hooks["InvDft"]["calls"], 1);
    EXPECT_EQ(hooks["VCMul_i16"]["calls"], 1);
    EXPECT_GE(hooks["ComputeRFir"]["calls"], 7);
    EXPECT_GE(hooks["AecConvolution"]["calls"], 0);
}

TEST_P(Cycles, AreShownForBothRunsWhenRoutinesAreCompared) {
    const Json summary = json({"--cycles", "--compare-routines"});
    expectSharesOf(summary["cycles"], 10);
    expectSharesOf(summary["engine_routines"]["cycles"], 10);
}

TEST_P(Cycles, AreNotMeasuredUnlessAskedFor) {
    const Json summary = json({"--compare-routines"});
    EXPECT_TRUE(summary["cycles"].is_null());
    EXPECT_TRUE(summary["engine_routines"]["cycles"].is_null());
}

TEST_P(Cycles, DoNotChangeTheOutput) {
    expectDone(processWith({}));
    const std::vector<int16_t> untimed = readSound(path("out.wav")).samples;
    expectDone(processWith({"--cycles"}));
    EXPECT_EQ(readSound(path("out.wav")).samples, untimed);
}

TEST_P(Cycles, AreShownInATable) {
    const HostRun result = processWith({"--cycles", "--compare-routines"});
    expectDone(result);
    for (const char* text :
         {"\n  cycles    of the core a block", "this run", "engine's own\n", "\n    de-interleaving  ",
          "\n    the engine itself  ", "\n    FIR filters  ", "\n    echo convolutions  ",
          "\n    complex products  ", "\n    interpolations  ", "\n    forward DFTs  ",
          "\n    inverse DFTs  ", "\n    all  "}) {
        EXPECT_NE(result.out.find(text), std::string::npos) << text << "\n" << result.out;
    }
}

TEST_P(Cycles, OfABypassedEngineAreRefused) {
    noteFiles();
    expectRefused(processWith({"--cycles", "--bypass"}), kWrongUsage, "--bypass");
}

}  // namespace
}  // namespace se_host_test
