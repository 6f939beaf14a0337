// The routines in the engine's hooks do not change the output audibly. Only another Fourier transform changes
// it at all.
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class Routines : public HostTest, public ::testing::WithParamInterface<const char*> {
  protected:
    Routines() {
        expectDone(run({"scene", path("in.wav"), "--quiet", "--seconds", "3", "--echo", "-30",
                        "--reverberation", "0.2", "--sensor-noise", "-55"}));
    }

    HostRun processEcho(std::vector<std::string> more) {
        more.insert(more.end(), {"--far-end-channel", "0", "--engine", GetParam()});
        return process(more);
    }

    std::vector<int16_t> outputWith(const std::string& flag) {
        expectDone(processEcho({flag}));
        return readSound(path("out.wav")).samples;
    }
};
INSTANTIATE_TEST_SUITE_P(EachBuild, Routines, ::testing::Values("se_lib_beamv1.14", "se_lib_harborv006"));

TEST_P(Routines, TheExactOnesDoNotChangeABit) {
    EXPECT_EQ(outputWith("--engine-dft"), outputWith("--engine-routines"));
}

// Spectra are truncated, not rounded, so the outputs differ by a few steps of 16 bits, 60 dB below the
// output.
TEST_P(Routines, AnotherFourierTransformChangesTheOutputByLittle) {
    const HostRun result = processEcho({"--compare-routines", "--json"});
    expectDone(result);
    const auto own = nlohmann::json::parse(result.out)["engine_routines"];
    EXPECT_LE(own["largest_difference"], 8);
    EXPECT_TRUE(own["difference_db"].is_null() || own["difference_db"] < -60) << own;
    EXPECT_GT(own["real_time_factor"], 0);
}

TEST_P(Routines, AreComparedInTheSummary) {
    const HostRun result = processEcho({"--compare-routines"});
    expectDone(result);
    EXPECT_NE(result.out.find("\n  routines  the engine's own: "), std::string::npos) << result.out;
}

class RoutinesCompared : public HostTest {};

TEST_F(RoutinesCompared, AnEngineThatIsNotThereIsNamedOnce) {
    writeSound(path("in.wav"), patternedSound(320));
    noteFiles();
    expectRefused(process({"--compare-routines", "--engine", "nowhere"}), kWrongUsage, "nowhere");
}

}  // namespace
}  // namespace se_host_test
