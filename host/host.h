// An engine with everything that a host needs around it, behind the C interface.
// Threads: as se_host.h says of the functions of the same names.
#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "host/audio/audio_path.h"
#include "host/diags/diag_tree.h"
#include "host/engine/engine.h"
#include "host/health/health.h"
#include "host/live/live_tree.h"

namespace se_host {

struct HostOptions {
    EngineOptions engine;
    std::string tuning;  // file; empty: none
    uint32_t quantum = 0;
    Wiring wiring;
};

// Why a setting was not taken.
struct Refusal {
    enum class Kind { kUnknown, kValue, kFull };
    Kind kind;
    std::string why;
};

class Host {
  public:
    // Starts the engine. fails: UsageError, Failure.
    explicit Host(const HostOptions& options);

    // Applies a tuning file before the first block. result: the first difference; empty: there is none. fails: Failure.
    std::string tune(const std::string& path);

    // Makes it ready for blocks. needs: called once, after the last tune.
    void begin();

    uint32_t quantum() const { return quantum_; }
    const Wiring& wiring() const { return wiring_; }
    const Engine& engine() const { return engine_; }
    const std::vector<DiagInfo>& diags() const { return tree_.diags(); }
    AudioPath& audio() { return *audio_; }

    std::optional<Refusal> set(const std::string& name, const std::string& value);
    std::optional<std::string> get(const std::string& name);

    struct Loaded {
        bool full = false;
        std::string difference;  // the first; empty: there is none
    };
    Loaded loadTuning(const std::string& path);
    void saveTuning(const std::string& path);

    Health health();

  private:
    using Clock = std::chrono::steady_clock;

    std::optional<Refusal> refusalOf(const std::string& name, const std::string& value) const;
    std::optional<Health::Times> times() const;
    std::optional<Health::Levels> levels() const;
    std::optional<Health::EchoDelay> echoDelay() const;

    Engine engine_;
    uint32_t quantum_;
    Wiring wiring_;
    DiagTree tree_;
    std::optional<LiveTree> live_;
    std::optional<AudioPath> audio_;
    uint64_t first_tick_;
    Clock::time_point first_time_;
    std::mutex mutex_;  // of the control functions
};

}  // namespace se_host
