// Scenes with a loudspeaker beside the array, sent through both paths of an engine, and what is left of the
// echo. The look is fixed, so that the engine's output differs from run to run by the echo alone.
#pragma once

#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"
#include "tools/scene/scene.h"

namespace reference_engine_test {

// A room of 0.3 s, echo as loud as the far end, quiet microphones, nobody in the room.
se_scene::SceneOptions echoOptions(Build build, double seconds);

// The part of the samples between two moments.
Samples between(const Samples& samples, double begin_s, double end_s);

// Without noise reduction, unless a test switches it on: what is measured is the canceller alone.
class EchoTest : public EngineTest {
  protected:
    EchoTest() { start(); }

    // The first state, look and noise reduction fixed.
    void start() const;

    // Far end and microphones block by block, the far end first. The engine keeps its state.
    Samples process(const Samples& far_end, const se_scene::MicrophoneRows& rows) const;
    Samples process(const Samples& far_end, const std::vector<Samples>& rows) const;

    // From the first state: the output, with the echo cancelled or not.
    Samples cancelled(const se_scene::Scene& scene) const;
    Samples bypassed(const se_scene::Scene& scene) const;

    // From the first state: what the talker alone would be at the output.
    Samples talkerAlone(const se_scene::Scene& scene) const;

    // Decibels by which the canceller lowers the output of an echo-only scene.
    double enhancement(const se_scene::Scene& scene, double begin_s, double end_s) const;
};

}  // namespace reference_engine_test
