#include "tools/se_host/engine/echo_estimate.h"

#include <cmath>

#include "host/engine/engine_stage.h"
#include "tools/se_host/sound/resample.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

constexpr int kFloat = 7;         // type of a diagnostic
constexpr double kLeastJump = 1;  // ms between two blocks; drift moves the delay by less

int indexOf(const char* name) {
    return callEngine(EngineStage::kReadingDiags, [&] {
        const int index = se::SEDiagGetIndex(name);
        return index >= 0 && static_cast<int>(se::SEDiagGetType(index)) == kFloat ? index : -1;
    });
}

double valueOf(int index, size_t block) {
    const auto call = [&] { return double{se::SEDiagGetFloat32(index)}; };
    return callEngine(EngineStage::kReadingDiags, call, block);
}

double secondsAfter(size_t block) {
    return static_cast<double>((block + 1) * se::BLOCK_SIZE) / kEngineSampleRate;
}

}  // namespace

EchoEstimator::EchoEstimator() : delay_(indexOf("seaec_delay_ms")), drift_(indexOf("seaec_drift_ppm")) {}

void EchoEstimator::afterBlock(size_t block) {
    if (delay_ < 0 || drift_ < 0) return;
    EchoEstimate now{valueOf(delay_, block), valueOf(drift_, block), secondsAfter(block)};
    const bool jumped =
        estimates_.empty() || std::abs(now.delay_ms - estimates_.back().delay_ms) >= kLeastJump;
    if (!jumped) now.found_s = estimates_.back().found_s;
    estimates_.push_back(now);
}

}  // namespace se_host
