#include "tools/se_host/engine/watchdog.h"

#include "host/engine/engine_stage.h"

namespace se_host {
namespace {

bool isInEngine() {
    return engineStage() != EngineStage::kNone && engineStage() != EngineStage::kIdle;
}

}  // namespace

Watchdog::Verdict Watchdog::tick() {
    const uint64_t changes = stageChanges();
    const bool moves = changes != changes_ || !isInEngine();
    changes_ = changes;
    seconds_ = moves ? 0 : seconds_ + 1;
    if (timeout_ > 0 && seconds_ >= timeout_) return Verdict::kEnd;
    return seconds_ == kWarnAfter ? Verdict::kWarn : Verdict::kGoesOn;
}

}  // namespace se_host
