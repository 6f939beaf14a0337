// Tuning files: any bytes are refused with a reason or read; what was read is applied to a scripted engine, compared
// and written again.
#include <string>

#include "common/assertion.h"
#include "common/logging.h"
#include "host/diags/diag_tree.h"
#include "host/diags/tuning.h"
#include "host/output/errors.h"
#include "tests/fuzz/host/scripted_engine.h"
#include "tests/fuzz/support/entry.h"
#include "tests/fuzz/support/require.h"
#include "tests/fuzz/support/scratch_file.h"

namespace quill::fuzz {
namespace {

using Json = nlohmann::ordered_json;

// The diagnostics of the corpus.
ScriptedEngine tunedEngine() {
    ScriptedEngine engine;
    for (int32_t type = 0; type <= 9; ++type) {
        ScriptedDiag diag;
        diag.name = "d" + std::to_string(type);
        diag.label = "label";
        diag.type = type;
        diag.integer = type;
        engine.diags.push_back(diag);
    }
    engine.diags[2].rw = 1;
    engine.diags[3].length = 4;
    engine.diags[3].elements = {1, 2, 3, 4};
    engine.diags[4].ignores_edits = true;
    engine.reported_count = static_cast<int32_t>(engine.diags.size());
    return engine;
}

void requireReason(const std::string& reason, const std::string& path) {
    require(reason.find(path) != std::string::npos, "a refusal that does not name the file");
    require(reason.find('\n') == std::string::npos, "a refusal of several lines");
}

bool isText(const std::string& text) {
    try {
        static_cast<void>(Json(text).dump());
        return true;
    } catch (const Json::exception&) {
        return false;
    }
}

void requireSame(const se_host::Tuning& a, const se_host::Tuning& b) {
    requireEqual(a.build, b.build, "the build");
    requireEqual(a.version, b.version, "the version");
    for (const std::string& line : differences("a", a, "b", b)) fail("written and read again: " + line);
}

void apply(const se_host::Tuning& tuning) {
    g_engine = tunedEngine();
    const se_host::Engine engine{nullptr, "scripted", "scripted_1.0"};
    se_host::DiagTree tree;
    const se_host::Applied applied = applyTuning(tuning, engine, tree);
    warnings("a.json", tuning, engine, applied);
    requireEqual(2LL, g_engine.diags[2].integer, "a read-only diagnostic");
    requireEqual(4LL, g_engine.diags[4].integer, "a diagnostic that ignores edits");
    const size_t entries = tuning.diagnostics.size() + tuning.switches.size();
    require(applied.changed.size() <= entries, "more changes than entries");
    // The engine holds what the first pass gave it.
    const se_host::Applied again = applyTuning(tuning, engine, tree);
    require(again.changed.empty(), "the second pass of one tuning changed something");
}

void readAndApply(const std::string& path, ScratchFile& other) {
    const se_host::Tuning tuning = se_host::readTuning(path);
    const std::string written = toJson(tuning).dump(2, ' ', false, Json::error_handler_t::replace);
    require(isText(tuning.build + tuning.version), "a text that is not UTF-8 was read");
    requireSame(tuning, se_host::readTuning(other.holding(written)));
    apply(tuning);
}

}  // namespace
}  // namespace quill::fuzz

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    quill::setAssertionHandler([](const quill::AssertionRecord&) { return false; });
    quill::setLogThreshold(1);
    quill::fuzz::installScriptedEngine();
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static quill::fuzz::ScratchFile file, other;
    const std::string& path = file.holding(std::string(reinterpret_cast<const char*>(data), size));
    try {
        quill::fuzz::readAndApply(path, other);
    } catch (const se_output::Failure& failure) {
        quill::fuzz::requireReason(failure.what(), path);
    }
    return 0;
}
