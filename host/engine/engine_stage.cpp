#include "host/engine/engine_stage.h"

#include <sys/mman.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <new>

namespace se_host {
namespace {

struct Shared {
    std::atomic<EngineStage> stage{EngineStage::kNone};
    std::atomic<uint64_t> block{0};
    std::atomic<uint64_t> changes{0};
    std::atomic<uint32_t> end{0};
};

// Distinguishes a noted end from what an engine may have written there by mistake.
constexpr uint32_t kEndMark = 0x9A6E5100;
constexpr uint32_t kStatusMask = 0xFF;

Shared g_own;
Shared* g_shared = &g_own;

void enter(EngineStage stage, size_t block) {
    g_shared->block = block;
    g_shared->stage = stage;
    ++g_shared->changes;
}

}  // namespace

EngineStage engineStage() {
    return g_shared->stage;
}

std::string stageText() {
    const std::string block = std::to_string(g_shared->block);
    switch (g_shared->stage) {
        case EngineStage::kNone:
            return "before the engine was loaded";
        case EngineStage::kLoading:
            return "while loading the engine";
        case EngineStage::kStarting:
            return "while starting the engine";
        case EngineStage::kReadingDiags:
            return "while reading the engine's diagnostics";
        case EngineStage::kSettingDiags:
            return "while setting the engine's diagnostics";
        case EngineStage::kProcessing:
            return "while processing block " + block;
        case EngineStage::kNoiseTest:
            return "while running the noise test, at block " + block;
        case EngineStage::kNoiseResults:
            return "while reading the results of the noise test";
        case EngineStage::kIdle:
            return "between two calls of the engine";
        case EngineStage::kEnding:
            return "while unloading the engine";
    }
    return "at an unknown stage";
}

uint64_t stageChanges() {
    return g_shared->changes;
}

InStage::InStage(EngineStage stage, size_t block) {
    enter(stage, block);
}

InStage::~InStage() {
    enter(EngineStage::kIdle, 0);
}

void failOnException(const char* text) {
    throw EngineFailure("an exception (" + std::string(text) + ") left the engine " + stageText() +
                        "; choose another engine build");
}

void noteEnd(int status) {
    if (engineStage() != EngineStage::kNone) enter(EngineStage::kEnding, 0);
    g_shared->end = kEndMark | (static_cast<uint32_t>(status) & kStatusMask);
}

int notedEnd() {
    const uint32_t end = g_shared->end;
    return (end & ~kStatusMask) == kEndMark ? static_cast<int>(end & kStatusMask) : -1;
}

void shareStage() {
    void* const memory =
        ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw se_output::Failure(std::string("no memory: ") + std::strerror(errno));
    g_shared = new (memory) Shared;
}

}  // namespace se_host
