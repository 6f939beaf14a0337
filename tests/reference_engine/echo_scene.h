// Scenes with a loudspeaker beside the array, sent through both paths of an engine, and the echo in its
// output. The look direction is fixed, so that the output differs from run to run by the echo alone.
#pragma once

#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"
#include "tools/scene/scene.h"

namespace reference_engine_test {

// A room of 0.3 s, echo as loud as the far end, quiet microphones, no talker.
se_scene::SceneOptions echoOptions(Build build, double seconds);

// The part of the samples between two moments.
Samples between(const Samples& samples, double begin_s, double end_s);

// Without noise reduction, unless a test switches it on, so that the canceller alone is measured.
class EchoTest : public EngineTest {
  protected:
    EchoTest() { start(); }

    // Initial state; look direction and noise reduction fixed.
    void start() const;

    // Far end and microphones block by block, the far end first. The engine keeps its state.
    Samples process(const Samples& far_end, const se_scene::MicrophoneRows& rows) const;
    Samples process(const Samples& far_end, const std::vector<Samples>& rows) const;

    // From the initial state: the output, with the echo cancelled or not.
    Samples cancelled(const se_scene::Scene& scene) const;
    Samples bypassed(const se_scene::Scene& scene) const;
    Samples bypassedWithRobustBeams(const se_scene::Scene& scene) const;

    // From the initial state: the output of the talker alone.
    Samples talkerAlone(const se_scene::Scene& scene) const;

    // Echo attenuation at the output in an echo-only scene, decibels: against an echo that goes through robust beams, as
    // residual echo does. Sharp ones, which a bypassed canceller lets through, would lower what it is compared with.
    double enhancement(const se_scene::Scene& scene, double begin_s, double end_s) const;
};

}  // namespace reference_engine_test
