// The smallest host: loads the hostile engine, runs blocks and both passes over the diagnostics.
#include "common/properties.h"
#include "webrtc_common/se_wrapper.h"

namespace se = quill::media::se_wrapper;

int main() {
    const auto root = quill::PropertyNode::createRoot();
    quill::initStaticProperties(root);
    se::p_signal_essence_library.node()->set<std::string>("test_engines/hostile");
    se::initSignalEssence();
    se::versionSpecificSettings();
    const auto diags = quill::PropertyNode::createRoot();
    diags->getNode("transfer_large_arrays", true)->set<bool>(true);
    se::readSignalEssenceDiags(diags);
    int16_t input[8 * se::BLOCK_SIZE] = {}, output[se::BLOCK_SIZE];
    for (int block = 0; block < 100; ++block) {
        se::RcvIfProcessReceivePath(input, output);
        se::processBlock(8, input, se::BLOCK_SIZE, output, true);
    }
    if (const auto node = diags->getNode("diags/basic/int16", false)) node->set<int>(5);
    se::writeSignalEssenceDiags(diags);
    se::readSignalEssenceDiags(diags);
    se::NoiseTestResults results;
    se::getNoiseTestResults(&results);
}
