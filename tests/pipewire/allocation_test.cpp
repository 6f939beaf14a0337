// The data thread of PipeWire is a real-time thread.
#include <gtest/gtest.h>

#include "tests/common/property_node/allocation_count.h"
#include "tests/pipewire/plugin_under_test.h"
#include "tests/pipewire/sound.h"

namespace se_pipewire_test {
namespace {

TEST(PipeWireRealTime, RunAllocatesAndReleasesNothing) {
    constexpr uint32_t kFrames = 2000;
    Plugin plugin;
    const auto stereo = format(2, {SPA_AUDIO_CHANNEL_FL, SPA_AUDIO_CHANNEL_FR});
    ASSERT_EQ(plugin.init2({}, format(8), format(2), stereo), 0);
    const Planes captured = noise(8, kFrames);
    const Planes played = noise(2, kFrames, 7);
    Planes output(2, std::vector<float>(kFrames));
    auto in = pointers(captured, 0);
    auto far = pointers(played, 0);
    auto out = pointers(output, 0);
    const auto work = [&] {
        for (int i = 0; i < 20; ++i)
            plugin.methods().run(plugin.object(), in.data(), far.data(), out.data(), kFrames);
    };
    const size_t released = quill::test::releaseCount();
    EXPECT_EQ(quill::test::allocationsOf(work), 0U);
    EXPECT_EQ(quill::test::releaseCount(), released);
}

}  // namespace
}  // namespace se_pipewire_test
