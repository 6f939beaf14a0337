// Recordings: any bytes as a sound file. They are refused with a reason, or read, brought to the engine's rate and
// processed block by block by an engine that follows a script.
#include <string>

#include "common/logging.h"
#include "host/output/errors.h"
#include "tests/engines/test_engine.h"
#include "tests/fuzz/support/entry.h"
#include "tests/fuzz/support/input.h"
#include "tests/fuzz/support/require.h"
#include "tests/fuzz/support/scratch_file.h"
#include "tools/se_host/engine/processing.h"
#include "tools/se_host/sound/recording.h"
#include "tools/se_host/sound/resample.h"
#include "webrtc_common/se_wrapper/engine/load.h"

namespace quill::fuzz {
namespace {

constexpr size_t kBlock = 160;

void requireReason(const std::string& reason, const std::string& path) {
    require(reason.find(path) != std::string::npos, "a refusal that does not name the file");
    require(reason.find('\n') == std::string::npos, "a refusal of several lines");
}

void requireWhole(const se_host::Recording& recording) {
    require(recording.frames > 0, "a recording without sound");
    require(recording.microphones.channels >= 8, "too few channels");
    require(recording.microphones.sample_rate == se_host::kEngineSampleRate,
            "another rate than the engine's");
    require(recording.microphones.frames() % kBlock == 0, "a block that is not whole");
    require(recording.far_end.size() == recording.microphones.frames(), "a far end of another length");
    require(recording.blocks() == (recording.frames + kBlock - 1) / kBlock, "another number of blocks");
}

// The first byte chooses the options, the others are the file.
void readAndProcess(uint8_t choice, const std::string& path) {
    se_host::RecordingOptions options;
    options.input = path;
    if ((choice & 1) != 0) options.far_end_channel = choice >> 4;
    if ((choice & 2) != 0) options.far_end_file = path;
    const se_host::Recording recording = se_host::readRecording(options);
    requireWhole(recording);
    const bool bypass = (choice & 4) != 0;
    const se_host::Processed processed = se_host::process(recording, {bypass, {}, false});
    require(processed.output.size() == recording.frames, "an output of another length");
    require(processed.directions.size() == (bypass ? 0 : recording.blocks()), "another number of directions");
    if (!bypass) return;
    for (size_t frame = 0; frame < recording.frames; ++frame) {
        const size_t at = frame * static_cast<size_t>(recording.microphones.channels) + 7;
        require(processed.output[frame] == recording.microphones.samples[at], "bypassed, but not channel 7");
    }
}

}  // namespace
}  // namespace quill::fuzz

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    quill::setLogThreshold(1);
    static const quill::test::TestEngine engine("test_engines/full");
    engine->set_recording(false);
    quill::media::se_wrapper::openSignalEssenceDynamicLibrary("test_engines/full");
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static quill::fuzz::ScratchFile file;
    quill::fuzz::Input input(data, size);
    const auto choice = input.number<uint8_t>();
    const std::string& path = file.holding(input.rest());
    try {
        quill::fuzz::readAndProcess(choice, path);
    } catch (const se_output::Failure& failure) {
        quill::fuzz::requireReason(failure.what(), path);
    } catch (const se_output::UsageError& error) {
        quill::fuzz::requireReason(error.what(), path);
    }
    return 0;
}
