#include "tools/se_host/sweep/task.h"

#include <optional>
#include <sstream>

#include "host/diags/tuning.h"
#include "host/output/errors.h"
#include "tools/se_host/engine/processing.h"
#include "tools/se_host/measures/analysis.h"
#include "tools/se_host/measures/measures.h"
#include "tools/se_host/sound/scene_parts.h"
#include "tools/se_host/sweep/row.h"

namespace se_host::sweep {
namespace {

void requireUnchanged(const Order& order) {
    FileHashes files;
    if (keyOf(order, files) == order.key) return;
    throw se_output::Failure(
        "the recording, the tuning, the engine or the program has changed since the plan was made; run "
        "'se_host "
        "sweep plan' again");
}

Engine startOf(const EngineFile& file) {
    EngineOptions options;
    options.file = file.path;
    options.device_model = file.device_model;
    options.array = file.array;
    return startEngine(options);
}

// The engine has to hold every value: a row is about its tuning.
void tune(const Order& order, const Engine& engine) {
    if (order.tuning_file.empty()) return;
    const Tuning tuning = readTuning(order.tuning_file);
    DiagTree tree;
    const Applied applied = applyTuning(tuning, engine, tree);
    if (applied.asAsked()) return;
    throw se_output::Failure("tuning " + warnings(order.tuning, tuning, engine, applied).back());
}

void writeSeconds(const Order& order, const Analysis& analysis) {
    if (order.over_time.empty()) return;
    std::ostringstream text;
    writeOverTime(text, analysis);
    se_output::OutputFile file(order.over_time);
    file.write(text.str());
    file.commit();
}

}  // namespace

Json doTask(const Order& order) {
    requireUnchanged(order);
    const Recording recording = readRecording(order.entry.recording);
    std::optional<SceneParts> parts;
    if (!order.entry.parts.empty()) parts = readSceneParts(order.entry.parts, recording);
    const Engine engine = startOf(order.engine);
    tune(order, engine);
    const Processed processed = process(recording, {});
    const Analysis analysis(recording, processed, parts);
    writeSeconds(order, analysis);
    return doneRow(order, measure(analysis), processed.output);
}

}  // namespace se_host::sweep
