// The smallest host: binds the properties, loads the engine from selibs/ beside it, and sends one
// second of silence through it.
#include <cstdio>
#include <vector>

#include "common/properties.h"
#include "webrtc_common/se_wrapper.h"

namespace se = quill::media::se_wrapper;

int main() {
    const auto root = quill::PropertyNode::createRoot();
    quill::initStaticProperties(root);
    se::initSignalEssenceOptimForTests();
    se::MMIfInit(0);

    constexpr uint32_t kChannels = 8;
    const std::vector<int16_t> block(se::BLOCK_SIZE * kChannels);
    std::vector<int16_t> output(se::BLOCK_SIZE, 1);
    for (int i = 0; i < 100; ++i)
        se::processBlock(kChannels, block.data(), se::BLOCK_SIZE, output.data(), true);
    for (const int16_t sample : output) {
        if (sample != 0) return 1;
    }
    std::printf("%s\n", se::p_signal_essence_library.get().c_str());
    return 0;
}
