#include "common/string_printf.h"
#include "host/engine/sample_rate.h"
#include "host/health/health.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using Sentences = std::vector<std::string>;

constexpr double kLongSilence = 10;     // seconds of digital silence
constexpr double kLateFarEnd = -2;      // ms; the engine needs the far end before its echo
constexpr double kLongEchoDelay = 500;  // ms
constexpr double kBlockUs = 1e4;        // the sound of a block
constexpr double kFirm = 0.5;           // confidence in a delay

double secondsOf(uint64_t frames) {
    return static_cast<double>(frames) / kEngineSampleRate;
}

unsigned long long shown(uint64_t count) {
    return count;
}

void adviseOnFrames(const Health& health, Sentences* sentences) {
    if (health.frames == 0) {
        sentences->push_back(
            "no sound has come; start the capture device, and call the process function for each of its "
            "buffers");
    }
    if (health.failed_blocks > 0) {
        sentences->push_back(stringPrintf(
            "the engine threw an exception in %llu blocks, which are silent; choose another engine build",
            shown(health.failed_blocks)));
    }
    if (health.blocks == 0 && health.bypassed_blocks > 0) {
        sentences->push_back("the engine is bypassed; the output is the sound of microphone 7");
    }
    if (health.clock && health.clock->missing_frames > 0) {
        sentences->push_back(
            stringPrintf("%llu frames (%.2f s) did not come; raise the buffer of the capture device, or its "
                         "thread's priority",
                         shown(health.clock->missing_frames), secondsOf(health.clock->missing_frames)));
    }
}

void adviseOnFarEnd(const Health& health, Sentences* sentences) {
    if (health.far_end_silent_seconds >= kLongSilence) {
        sentences->push_back(
            stringPrintf("the far end has been silent for %.0f s; if the loudspeaker plays, hand what it "
                         "plays to the far end",
                         health.far_end_silent_seconds));
    }
    if (!health.echo_delay || health.echo_delay->confidence < kFirm) return;
    const double delay = health.echo_delay->ms;
    if (delay < kLateFarEnd) {
        sentences->push_back(
            stringPrintf("the far end comes %.0f ms after its echo, which cannot be cancelled so; delay the "
                         "microphones, or take the far end earlier",
                         -delay));
    }
    if (delay > kLongEchoDelay) {
        sentences->push_back(
            stringPrintf("the echo follows %.0f ms after the far end, more than most engines cancel; take "
                         "the far end closer to the loudspeaker",
                         delay));
    }
}

bool isDead(const Health& health, size_t microphone) {
    return health.wired[microphone] && health.levels && health.levels->microphones[microphone].dead;
}

// Whether there is none that hears something.
bool areAllDead(const Health& health) {
    for (size_t microphone = 0; microphone < kMicrophones; ++microphone) {
        if (health.wired[microphone] && !isDead(health, microphone)) return false;
    }
    return health.levels.has_value();
}

void adviseOnMicrophones(const Health& health, Sentences* sentences) {
    const bool all = areAllDead(health);
    if (all) {
        sentences->push_back(
            "no microphone hears anything; switch the capture device on, and check the channel map");
    }
    for (size_t microphone = 0; microphone < kMicrophones; ++microphone) {
        const auto number = static_cast<int>(microphone + 1);
        if (!all && isDead(health, microphone)) {
            sentences->push_back(stringPrintf(
                "microphone %d hears nothing of what the others hear; check it, and the channel map",
                number));
        }
        if (health.clipped[microphone] > 0) {
            sentences->push_back(stringPrintf("microphone %d clips (%llu samples); lower its gain", number,
                                              shown(health.clipped[microphone])));
        }
    }
}

void adviseOnTimes(const Health& health, Sentences* sentences) {
    if (!health.times || health.times->p999 < kBlockUs) return;
    sentences->push_back(
        stringPrintf("one block in a thousand takes %.1f ms or more, longer than its sound of 10 ms; use a "
                     "faster core, or free this one",
                     health.times->p999 / 1000));
}

void adviseOnEdits(const Health& health, Sentences* sentences) {
    if (health.edits_dropped == 0) return;
    sentences->push_back(stringPrintf(
        "%llu edits were dropped, because the engine had changed the same values; read them and try again",
        shown(health.edits_dropped)));
}

}  // namespace

std::vector<std::string> adviceOn(const Health& health) {
    Sentences sentences;
    adviseOnFrames(health, &sentences);
    adviseOnFarEnd(health, &sentences);
    adviseOnMicrophones(health, &sentences);
    adviseOnTimes(health, &sentences);
    adviseOnEdits(health, &sentences);
    return sentences;
}

}  // namespace se_host
