// A static property that is used before it is bound ends the process with a message.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>

#include "common/config.h"
#include "common/properties.h"

namespace quill {
namespace {

const char* const kMessage =
    "^Tried to use a static property \\(media/x/y\\) before the property system is initialized\\.$";

TEST(UsedTooEarlyDeathTest, ReadingNamesThePathAndTraps) {
    const StaticProperty<std::string> property("media/x/y", "", nullptr);
    EXPECT_EXIT(property.get(), testing::KilledBySignal(SIGTRAP), kMessage);
}

TEST(UsedTooEarlyDeathTest, AskingForTheNodeTrapsToo) {
    const StaticProperty<bool> property("media/x/y", false, nullptr);
    EXPECT_EXIT(property.node(), testing::KilledBySignal(SIGTRAP), kMessage);
}

TEST(UsedTooEarlyDeathTest, TheMessageReachesABufferedStandardErrorAfterWhatWasPrintedBefore) {
    const StaticProperty<bool> property("media/x/y", false, nullptr);
    EXPECT_EXIT(
        {
            std::setvbuf(stderr, nullptr, _IOFBF, 1 << 16);
            std::fputs("Before. ", stderr);
            property.get();
        },
        testing::KilledBySignal(SIGTRAP), "^Before\\. Tried to use a static property \\(media/x/y\\) before");
}

TEST(UsedTooEarlyDeathTest, HoldsForTheSupportLibrarysOwnProperty) {
    EXPECT_EXIT(p_config_is_harbor.get(), testing::KilledBySignal(SIGTRAP), "\\(config/is_harbor\\)");
}

StaticProperty<int>::Data* g_unbound = nullptr;
const StaticProperty<int>* g_bound = nullptr;

TEST(UsedTooEarly, ReadsTheNodeThatIsBoundWhenTheTrapIsResumed) {
    const StaticProperty<int> property("media/x/y", 1, nullptr);
    const StaticProperty<int> stand_in("media/x/z", 5, nullptr);
    stand_in.data()->initialize(StaticPropertyInitArgs{PropertyNode::createRoot()});
    g_unbound = property.data().get();
    g_bound = &stand_in;
    std::signal(SIGTRAP, [](int) { g_unbound->wrapper = g_bound->data()->wrapper; });
    EXPECT_EQ(property.get(), 5);
    std::signal(SIGTRAP, SIG_DFL);
}

}  // namespace
}  // namespace quill
