#include "host/host.h"

#include <x86intrin.h>

#include <algorithm>
#include <utility>

#include "host/diags/tuning.h"
#include "host/engine/sample_rate.h"
#include "host/health/echo_lag.h"
#include "host/output/one_line.h"
#include "host/output/output_file.h"

namespace se_host {
namespace {

constexpr double kDeadBelow = 40;       // dB below the others' median
constexpr double kHeard = -60;          // dBFS of that median
constexpr uint64_t kLeastBlocks = 100;  // for times

double medianOf(std::vector<double> levels) {
    if (levels.empty()) return SignalWatch::kSilence;
    const auto middle = levels.begin() + static_cast<std::ptrdiff_t>(levels.size() / 2);
    std::nth_element(levels.begin(), middle, levels.end());
    return *middle;
}

std::string firstDifference(const std::string& path, const Tuning& tuning, const Engine& engine,
                            const Applied& applied) {
    if (applied.asAsked()) return {};
    const std::vector<std::string> lines = warnings(path, tuning, engine, applied);
    return lines[applied.other_version ? 1 : 0];
}

}  // namespace

Host::Host(const HostOptions& options)
    : engine_(startCheckedEngine(options.engine)),
      quantum_(options.quantum),
      wiring_(options.wiring),
      first_tick_(__rdtsc()),
      first_time_(Clock::now()) {}

std::string Host::tune(const std::string& path) {
    const Tuning tuning = readTuning(path);
    return firstDifference(path, tuning, engine_, applyTuning(tuning, engine_, tree_));
}

void Host::begin() {
    live_.emplace(tree_);
    audio_.emplace(wiring_, quantum_, live_->engine());
}

std::optional<Refusal> Host::refusalOf(const std::string& name, const std::string& value) const {
    if (name == "location" || name == "location_conf")
        return Refusal{Refusal::Kind::kValue, "'" + name + "' is read-only"};
    const auto objection = tree_.objection(name, value);
    if (!objection) return std::nullopt;
    const bool known = tree_.find(name) != nullptr || (isBypassSwitch(name) && tree_.root()->exists(name));
    return Refusal{known ? Refusal::Kind::kValue : Refusal::Kind::kUnknown, *objection};
}

std::optional<Refusal> Host::set(const std::string& name, const std::string& value) {
    const std::lock_guard lock(mutex_);
    if (auto refusal = refusalOf(name, value)) return refusal;
    if (live_->set(name, value) != LiveTree::Posted::kFull) return std::nullopt;
    return Refusal{Refusal::Kind::kFull, "no room for '" + name +
                                             "': " + std::to_string(LiveEngine::kMostEdits) +
                                             " edits wait for the next blocks; try again after some"};
}

std::optional<std::string> Host::get(const std::string& name) {
    const std::lock_guard lock(mutex_);
    live_->update(name);
    if (name == "location" || name == "location_conf")
        return tree_.root()->getNode(name, true)->value().toString();
    if (isBypassSwitch(name)) {
        if (!tree_.root()->exists(name)) return std::nullopt;
        return std::string(tree_.root()->getNode(name, false)->get<bool>() ? "1" : "0");
    }
    const DiagInfo* const diag = tree_.find(name);
    if (diag == nullptr) return std::nullopt;
    if (!diag->isArray()) return se_output::oneLine(toText(tree_.value(*diag)));
    const quill::PropertyNodePtr node = tree_.root()->getNode(diag->path, false);
    return node == nullptr || node->value().empty() ? "none" : node->get<std::string>();
}

// All edits are checked and counted before the first is posted.
Host::Loaded Host::loadTuning(const std::string& path) {
    const Tuning tuning = readTuning(path);
    const std::lock_guard lock(mutex_);
    live_->updateAll();
    const TuningEdits edits = editsOf(tuning, tree_);
    Applied applied;
    applied.unknown = edits.unknown;
    std::vector<std::pair<std::string, std::string>> wanted;
    for (const auto& [name, text] : edits.wanted) {
        if (const auto objection = tree_.objection(name, text)) {
            applied.refused.push_back(*objection);
        } else {
            wanted.emplace_back(name, text);
        }
    }
    if (wanted.size() > live_->room()) return {true, {}};
    for (const auto& [name, text] : wanted) live_->set(name, text);
    return {false, firstDifference(path, tuning, engine_, applied)};
}

void Host::saveTuning(const std::string& path) {
    se_output::OutputFile file(path);
    {
        const std::lock_guard lock(mutex_);
        live_->updateAll();
        writeTuning(file, tuningOf(engine_, tree_));
    }
    file.commit();
}

// The time-stamp counter runs at a constant rate, which the steady clock tells.
std::optional<Health::Times> Host::times() const {
    const BlockTimes::Result ticks = audio_->times().result();
    if (ticks.blocks < kLeastBlocks) return std::nullopt;
    const std::chrono::duration<double, std::micro> passed = Clock::now() - first_time_;
    const double us = passed.count() / static_cast<double>(__rdtsc() - first_tick_);
    return Health::Times{ticks.mean * us, ticks.p999 * us, ticks.worst * us};
}

std::optional<Health::Levels> Host::levels() const {
    const SignalWatch& signals = audio_->signals();
    if (!signals.hasLevels()) return std::nullopt;
    std::vector<double> wired;
    for (size_t i = 0; i < kMicrophones; ++i) {
        if (wiring_.microphones[i] != Wiring::kNone) wired.push_back(signals.microphoneDbfs(i));
    }
    const double median = medianOf(wired);
    Health::Levels levels{signals.farEndDbfs(), {}};
    for (size_t i = 0; i < kMicrophones; ++i) {
        const double dbfs = signals.microphoneDbfs(i);
        levels.microphones[i] = {dbfs,
                                 signals.isConstant(i) || (median > kHeard && dbfs < median - kDeadBelow)};
    }
    return levels;
}

std::optional<Health::EchoDelay> Host::echoDelay() const {
    const SignalWatch::Sound sound = audio_->signals().lastSeconds();
    const std::optional<EchoLags> lags = echoLags(sound.far_end, sound.microphone);
    if (!lags) return std::nullopt;
    return Health::EchoDelay{1000.0 * lags->median / kEngineSampleRate, lags->agreement};
}

Health Host::health() {
    const std::lock_guard lock(mutex_);
    const SignalWatch& signals = audio_->signals();
    const ClockWatch& clock = audio_->clockWatch();
    Health health;
    health.frames = audio_->frames();
    health.blocks = audio_->blocks();
    health.bypassed_blocks = audio_->bypassed();
    health.failed_blocks = audio_->failed();
    health.edits_applied = live_->engine().applied();
    health.edits_dropped = live_->engine().dropped();
    health.far_end_silent_seconds = signals.farEndSilentSeconds();
    for (size_t i = 0; i < kMicrophones; ++i) {
        health.clipped[i] = signals.clipped(i);
        health.wired[i] = wiring_.microphones[i] != Wiring::kNone;
    }
    if (clock.isUsed()) health.clock = Health::Clock{clock.missing(), clock.late()};
    health.levels = levels();
    health.echo_delay = echoDelay();
    health.times = times();
    return health;
}

}  // namespace se_host
