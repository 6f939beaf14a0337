// From a simulated room to the talker's direction, with the commands of a user.
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class TalkerDirection : public HostTest, public ::testing::WithParamInterface<int> {};

TEST_P(TalkerDirection, IsFound) {
    expectDone(run({"scene", path("in.wav"), "--azimuth", std::to_string(GetParam()), "--seconds", "4"}));
    const HostRun result = process({"--json"});
    expectDone(result);
    const nlohmann::json talker = nlohmann::json::parse(result.out)["talker"];
    EXPECT_EQ(talker["azimuth_degrees"], GetParam());
    EXPECT_EQ(talker["location"], GetParam() / 30);
}

INSTANTIATE_TEST_SUITE_P(Host, TalkerDirection, ::testing::Values(0, 60, 150, 270));

}  // namespace
}  // namespace se_host_test
