// Blocks on the audio thread while other threads edit the tree, write records, and run filters, transforms and
// kernels of their own.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <vector>

#include "common/logging.h"
#include "common/property_node.h"
#include "tests/common/property_node/threads.h"
#include "tests/webrtc_common/dsp/dft_objects.h"
#include "webrtc_common/se_wrapper.h"

namespace quill::media::se_wrapper {
namespace {

constexpr int kRounds = 300;
constexpr uint32_t kChannels = 8;
constexpr int kDftSize = 320;

using Block = std::vector<int16_t>;

Block ramp(size_t count) {
    Block block(count);
    for (size_t i = 0; i < count; ++i) block[i] = static_cast<int16_t>(i * 37);
    return block;
}

// The calls of hooks that an engine makes inside a block, with objects and buffers of its own.
class Routines {
  public:
    Routines() : dft_(test::newDftObject(kDftSize)), high_pass_(kHighPass600Hz) {}

    Block run() {
        Block in = ramp(kDftSize);
        Block taps = ramp(64);
        Block out(kDftSize + 2);
        Block result;
        const auto keep = [&] { result.insert(result.end(), out.begin(), out.end()); };
        fwdFFT(dft_, in.data(), 0, 1024, out.data(), kDftSize + 2);
        keep();
        invFFT(dft_, out.data(), 4, 1024, in.data(), 0);
        computeRFir(in.data(), taps.data(), out.data(), 63, 160, 1);
        keep();
        vcmul_i16(in.data(), taps.data(), out.data(), 32);
        keep();
        int16_t* signal = in.data();
        interp1ToNCore(80, 2, &signal, out.data(), taps.data(), 32);
        keep();
        std::array<int32_t, 80> echo{};
        aecConvolution(taps.data(), in.data(), echo.data(), 1, 80, 64, 2);
        std::transform(echo.begin(), echo.end(), out.begin(),
                       [](int32_t x) { return static_cast<int16_t>(x); });
        keep();
        high_pass_.filterBlock(in.data(), out.data(), 1.0F);
        keep();
        return result;
    }

  private:
    DftObj_t* dft_;
    Filter high_pass_;
};

void processMicrophones(int16_t* first, int16_t* others, int16_t* out) {
    static Routines engine;
    const Block result = engine.run();
    for (uint32_t i = 0; i < BLOCK_SIZE; ++i) out[i] = static_cast<int16_t>(first[i] ^ others[i] ^ result[i]);
}

void processBlocks(const Block& expected) {
    const Block interleaved = ramp(BLOCK_SIZE * kChannels);
    Block output(BLOCK_SIZE);
    for (int i = 0; i < kRounds; ++i) {
        processBlock(kChannels, interleaved.data(), BLOCK_SIZE, output.data(), true);
        ASSERT_EQ(output, expected);
        processBlock(kChannels, interleaved.data(), BLOCK_SIZE, output.data(), false);
    }
}

void editTree(const PropertyNodePtr& root, int i) {
    root->getNode("diags/basic/x" + std::to_string(i % 50), true)->set(i);
    for (const PropertyNodePtr& child : root->getNode("diags/basic", true)->children()) child->get<int>();
    QUILL_LOG(4, "threads") << "edit " << i;
}

void runRoutines(Routines& routines, int i) {
    static const Block expected = Routines().run();
    // The high-pass has a history: its first block differs from the later ones, the rest does not.
    const Block result = routines.run();
    ASSERT_TRUE(std::equal(result.begin(), result.end() - (kDftSize + 2), expected.begin()));
    std::vector<float> spectrum;
    simpleFFT(ramp(80).data(), 64 + 2 * (i % 3), &spectrum);
    ASSERT_NE(selectedConvolveVariant(), nullptr);
}

TEST(ThreadsAudio, BlocksWhileOthersWork) {
    setLogSink([](const LogRecord&) {});
    MMIfProcessMicrophones = processMicrophones;
    const Block interleaved = ramp(BLOCK_SIZE * kChannels);
    Block first(BLOCK_SIZE);
    processBlock(kChannels, interleaved.data(), BLOCK_SIZE, first.data(), true);

    const PropertyNodePtr root = PropertyNode::createRoot();
    std::vector<Routines> routines(4);
    std::atomic<bool> running{true};
    test::together(4, [&](int t) {
        if (t == 0) {
            processBlocks(first);
            running = false;
        }
        for (int i = 0; running; ++i) {
            if (t == 1) editTree(root, i);
            if (t > 1) runRoutines(routines[size_t(t)], i);
        }
    });
    setLogSink({});
}

}  // namespace
}  // namespace quill::media::se_wrapper
