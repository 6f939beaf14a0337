#include "tests/reliability/support/running_engine.h"

#include "common/properties.h"
#include "tests/engines/test_engine.h"
#include "webrtc_common/se_wrapper.h"

namespace reliability {

namespace se = quill::media::se_wrapper;

namespace {

// A scripted engine has no diagnostics of its own.
void addDiagsTo(const std::string& build) {
    constexpr int kInt16 = 1, kInt32 = 2, kFloat32 = 7, kEnum = 8;
    constexpr int kReadWrite = 3;
    const quill::test::TestEngine engine(build);
    engine->set_recording(false);
    engine->add_diag("RcvGainQ10", kInt16, 1, kReadWrite, 0, "");
    engine->add_diag("senr_echo_safety_factor", kInt16, 1, kReadWrite, 0, "");
    engine->add_diag("seout_gain_q10", kInt32, 1, kReadWrite, 0, "");
    engine->add_diag("mmfx_look_mode", kEnum, 1, kReadWrite, 0, "");
    engine->add_diag("levels", kFloat32, 30, kReadWrite, 0, "");
}

}  // namespace

RunningEngine::RunningEngine(const std::string& build) : root_(quill::PropertyNode::createRoot()) {
    quill::initStaticProperties(root_);
    if (build.rfind("test_engines/", 0) == 0) addDiagsTo(build);
    se::p_signal_essence_library.node()->set<std::string>(build);
    se::initSignalEssence();
    se::versionSpecificSettings();
    se::readSignalEssenceDiags(root_);
}

void RunningEngine::edit(uint64_t round) {
    const int step = static_cast<int>(round % 16);
    root_->getNode("aec_bypass", true)->set<bool>(step % 4 == 1);
    root_->getNode("noise_reduction_bypass", true)->set<bool>(step % 4 == 2);
    set("diags/basic/RcvGainQ10", 512 + 64 * step);
    set("diags/basic/sercv_gain_q10", 512 + 64 * step);
    set("diags/basic/seout_gain_q10", 768 + 32 * step);
    set("diags/basic/mmfx_look_mode", step % 4);
    root_->getNode("transfer_large_arrays", true)->set<bool>(step % 8 == 7);
    se::writeSignalEssenceDiags(root_);
    se::readSignalEssenceDiags(root_);
}

void RunningEngine::set(const std::string& path, int value) {
    if (root_->exists(path)) root_->getNode(path, false)->set<int>(value);
}

}  // namespace reliability
