#include "tools/se_host/engine/noise_test_run.h"

#include "common/string_printf.h"
#include "host/engine/engine_stage.h"
#include "host/output/errors.h"
#include "tools/se_host/engine/processing.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

// The interface table keeps this entry point untyped; the signature is the engine's.
bool isRunning(size_t block) {
    const auto call = [] {
        return reinterpret_cast<int32_t (*)()>(se::MMIfNoiseTestIsRunning_Optional)() != 0;
    };
    return callEngine(EngineStage::kNoiseTest, call, block);
}

se_output::Failure failure(const char* what) {
    return se_output::Failure("engine '" + se::p_signal_essence_library.get() + "' " + what +
                              "; choose another build");
}

}  // namespace

size_t runNoiseTest(const Recording& recording) {
    if (!se::g_has_noise_tests) throw failure("has no noise test");
    const size_t blocks = recording.frames / se::BLOCK_SIZE;  // the padding has no noise
    size_t block = 0;
    callEngine(EngineStage::kNoiseTest, [] { se::MMIfStartNoiseTest_Optional(); });
    while (isRunning(block)) {
        if (block == blocks) {
            throw se_output::Failure(quill::stringPrintf(
                "the noise test was still running at the end of the sound, after %.2f s; give it more",
                recording.seconds()));
        }
        int16_t output[se::BLOCK_SIZE];
        processOneBlock(recording, block++, false, output);
    }
    return block;
}

se::NoiseTestResults noiseTestResults() {
    se::NoiseTestResults results{};
    const auto call = [&] { return se::getNoiseTestResults(&results); };
    if (!callEngine(EngineStage::kNoiseResults, call)) throw failure("gives no results of the noise test");
    return results;
}

}  // namespace se_host
