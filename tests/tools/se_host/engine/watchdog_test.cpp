// The watchdog over calls of the engine; its seconds are calls of tick.
#include "tools/se_host/engine/watchdog.h"

#include <gtest/gtest.h>

#include "host/engine/engine_stage.h"

namespace se_host {
namespace {

using Verdict = Watchdog::Verdict;

// The verdicts of so many seconds.
std::vector<Verdict> verdicts(Watchdog& watchdog, int seconds) {
    std::vector<Verdict> list;
    for (int i = 0; i < seconds; ++i) list.push_back(watchdog.tick());
    return list;
}

TEST(Watchdog, WarnsOnceOfACallThatDoesNotReturn) {
    Watchdog watchdog(0);
    const InStage call(EngineStage::kProcessing, 7);
    watchdog.tick();
    std::vector<Verdict> expected(20, Verdict::kGoesOn);
    expected[Watchdog::kWarnAfter - 1] = Verdict::kWarn;
    EXPECT_EQ(verdicts(watchdog, 20), expected);
}

TEST(Watchdog, EndsTheCallAfterTheTimeout) {
    Watchdog watchdog(2);
    const InStage call(EngineStage::kProcessing, 7);
    watchdog.tick();
    EXPECT_EQ(verdicts(watchdog, 2), (std::vector{Verdict::kGoesOn, Verdict::kEnd}));
    EXPECT_EQ(watchdog.seconds(), 2);
}

TEST(Watchdog, IsContentWithCallsThatReturn) {
    Watchdog watchdog(2);
    for (size_t block = 0; block < 20; ++block) {
        const InStage call(EngineStage::kProcessing, block);
        EXPECT_EQ(watchdog.tick(), Verdict::kGoesOn);
    }
}

TEST(Watchdog, DoesNotMindTheHostsOwnWork) {
    Watchdog watchdog(2);
    { const InStage call(EngineStage::kProcessing, 7); }
    EXPECT_EQ(verdicts(watchdog, 20), std::vector<Verdict>(20, Verdict::kGoesOn));
}

}  // namespace
}  // namespace se_host
