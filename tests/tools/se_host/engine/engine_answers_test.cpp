// The summary shows what the engine answers.
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class EngineAnswers : public HostTest {
  protected:
    EngineAnswers() { writeSound(path("in.wav"), patternedSound(1000)); }
};

TEST_F(EngineAnswers, DirectionsAreThoseOfTheEngineBlockByBlock) {
    const HostRun result = process({"--engine", "test_engines/host_probe", "--json"});
    const nlohmann::json summary = nlohmann::json::parse(result.out);
    ASSERT_EQ(summary["directions"].size(), 7u);
    EXPECT_EQ(summary["directions"][0], (nlohmann::json{{"location", 1}, {"confidence", 1000}}));
    EXPECT_EQ(summary["directions"][6], (nlohmann::json{{"location", 7}, {"confidence", 7000}}));
    EXPECT_EQ(summary["talker"]["azimuth_degrees"], 210);
}

TEST_F(EngineAnswers, ACapabilityThatTheEngineLacksIsNotClaimed) {
    const HostRun result = process({"--engine", "test_engines/host_probe", "--json"});
    const nlohmann::json engine = nlohmann::json::parse(result.out)["engine"];
    EXPECT_EQ(engine["capabilities"], (nlohmann::json{{"beam_forming", false}, {"noise_tests", false}}));
    EXPECT_EQ(engine["version"], "probe engine");
}

}  // namespace
}  // namespace se_host_test
