// Talkers in the room pass unchanged, with an active far end and with a silent one.
#include <cmath>

#include "tests/reference_engine/echo_scene.h"

using namespace reference_engine_test;

namespace {

// Power of the difference.
double distanceBetween(const Samples& a, const Samples& b) {
    double sum = 0;
    for (size_t i = 0; i < a.size(); ++i) sum += std::pow(double{1} * a[i] - b[i], 2);
    return sum / static_cast<double>(a.size());
}

// Speaks from the fourth second to the seventh, as loud as the echo.
se_scene::SceneOptions doubleTalk(Build build) {
    se_scene::SceneOptions options = echoOptions(build, 9);
    options.talker_level_dbfs = -26;
    options.talker_start_s = 4;
    options.talker_end_s = 7;
    return options;
}

class EchoDoubleTalk : public EchoTest {};
INSTANTIATE_FOR_EACH_BUILD(EchoDoubleTalk);

}  // namespace

TEST_P(EchoDoubleTalk, KeepsTheTalkerWithin3Decibels) {
    const se_scene::Scene scene = makeScene(doubleTalk(GetParam()));
    const Samples out = between(cancelled(scene), 4.2, 7);
    const Samples talker = between(talkerAlone(scene), 4.2, 7);
    EXPECT_NEAR(decibels(powerOf(out) / powerOf(talker)), 0, 3);
    // The rest of the output is far below the talker.
    EXPECT_GT(decibels(powerOf(talker) / distanceBetween(out, talker)), 10);
}

TEST_P(EchoDoubleTalk, KeepsItsEchoPath) {
    const se_scene::Scene scene = makeScene(doubleTalk(GetParam()));
    const Samples talker = talkerAlone(scene);
    const double left = distanceBetween(between(cancelled(scene), 7, 8), between(talker, 7, 8));
    const double echo = distanceBetween(between(bypassed(scene), 7, 8), between(talker, 7, 8));
    EXPECT_GT(decibels(echo / left), 15);
}

TEST_P(EchoDoubleTalk, AFarEndThatDoesNotReachTheRoomChangesNothing) {
    se_scene::Scene scene = makeScene(doubleTalk(GetParam()));
    scene.echo.assign(kMicrophones, std::vector<float>(scene.frames));
    const Samples out = between(cancelled(scene), 4, 7);
    const Samples talker = between(bypassed(scene), 4, 7);
    EXPECT_GT(decibels(powerOf(talker) / distanceBetween(out, talker)), 20);
}

TEST_P(EchoDoubleTalk, ATalkerWithoutFarEndIsLeftAloneToTheBit) {
    se_scene::Scene scene = makeScene(doubleTalk(GetParam()));
    scene.echo.assign(kMicrophones, std::vector<float>(scene.frames));
    scene.far_end.assign(scene.frames, 0.0f);
    EXPECT_EQ(cancelled(scene), bypassed(scene));
}

// The loudspeaker is between locations 6 and 7. A beam in its direction would turn to the talker too late.
TEST_P(EchoDoubleTalk, TheLoudspeakerDoesNotDrawTheBeam) {
    const se_scene::Scene scene = makeScene(echoOptions(GetParam(), 4));
    engine.MMIfInit(0);
    process(se_scene::toInt16(scene.far_end), scene.mixture());
    uint16_t location = 0;
    int16_t confidence = 0;
    engine.MMIfGetCurrentLocation(&location, &confidence);
    EXPECT_NE(location, 6);
    EXPECT_NE(location, 7);
}
