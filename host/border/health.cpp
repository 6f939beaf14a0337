#include "host/border/health.h"

#include <algorithm>
#include <iterator>

namespace se_host {
namespace {

void showClock(const Health& health, se_host_health_t* shown) {
    if (!health.clock) return;
    shown->valid |= SE_HOST_HAS_CLOCK;
    shown->missing_frames = health.clock->missing_frames;
    shown->late_calls = health.clock->late_calls;
}

void showLevels(const Health& health, se_host_health_t* shown) {
    if (!health.levels) return;
    shown->valid |= SE_HOST_HAS_LEVELS;
    shown->far_end_dbfs = health.levels->far_end_dbfs;
    for (size_t i = 0; i < SE_HOST_MICROPHONES; ++i) {
        shown->microphone_dbfs[i] = health.levels->microphones[i].dbfs;
        shown->microphone_dead[i] = health.levels->microphones[i].dead ? 1 : 0;
    }
}

void showEchoDelay(const Health& health, se_host_health_t* shown) {
    if (!health.echo_delay) return;
    shown->valid |= SE_HOST_HAS_ECHO_DELAY;
    shown->echo_delay_ms = health.echo_delay->ms;
    shown->echo_delay_confidence = health.echo_delay->confidence;
}

void showTimes(const Health& health, se_host_health_t* shown) {
    if (!health.times) return;
    shown->valid |= SE_HOST_HAS_BLOCK_TIMES;
    shown->block_mean_us = health.times->mean;
    shown->block_999_us = health.times->p999;
    shown->block_worst_us = health.times->worst;
}

}  // namespace

se_host_health_t shownOf(const Health& health) {
    se_host_health_t shown{};
    shown.frames = health.frames;
    shown.blocks = health.blocks;
    shown.bypassed_blocks = health.bypassed_blocks;
    shown.failed_blocks = health.failed_blocks;
    shown.edits_applied = health.edits_applied;
    shown.edits_dropped = health.edits_dropped;
    shown.far_end_silent_seconds = health.far_end_silent_seconds;
    std::copy(health.clipped.begin(), health.clipped.end(), shown.microphone_clipped);
    showClock(health, &shown);
    showLevels(health, &shown);
    showEchoDelay(health, &shown);
    showTimes(health, &shown);
    return shown;
}

}  // namespace se_host
