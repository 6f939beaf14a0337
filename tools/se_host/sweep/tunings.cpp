#include "tools/se_host/sweep/tunings.h"

#include <filesystem>
#include <set>

#include "host/diags/tuning.h"
#include "host/output/errors.h"
#include "tools/se_host/sweep/json_lines.h"

namespace se_host::sweep {
namespace {

using se_output::Failure;
using se_output::UsageError;

constexpr const char* kAdvice = "; 'se_host diags list' shows what can be set";

}  // namespace

TuningText tuningOfFile(const std::string& path, const DiagTree& tree) {
    const TuningEdits edits = editsOf(readTuning(path), tree);
    if (!edits.unknown.empty()) {
        throw Failure("'" + path + "': the engine has no diagnostic '" + edits.unknown.front() + "'" +
                      kAdvice);
    }
    for (const auto& [name, value] : edits.wanted) {
        if (const auto objection = tree.objection(name, value)) {
            throw Failure("'" + path + "': " + *objection + kAdvice);
        }
    }
    return {std::filesystem::path(path).stem().string(), textOf(path)};
}

TuningText tuningOfPoint(const Point& point, const Engine& engine, DiagTree& tree) {
    Tuning tuning;
    tuning.build = engine.build;
    tuning.version = engine.version;
    for (const auto& [name, text] : point.assignments) {
        if (const auto objection = tree.edit(name, text)) throw UsageError("--grid: " + *objection + kAdvice);
        if (isBypassSwitch(name)) {
            tuning.switches[name] = tree.valueOf(name);
            continue;
        }
        const DiagInfo& diag = *tree.find(name);
        tuning.diagnostics[diag.name] = {
            {"type", diag.typeText()}, {"writable", diag.writable}, {"value", tree.value(diag)}};
    }
    return {point.name, toJson(tuning).dump(2, ' ', true, Json::error_handler_t::replace) + "\n"};
}

void requireDistinctNames(const std::vector<TuningText>& tunings) {
    std::set<std::string> names;
    for (const TuningText& tuning : tunings) {
        if (names.insert(tuning.name).second) continue;
        throw UsageError("two tunings have the name '" + tuning.name + "'; rename a file");
    }
}

}  // namespace se_host::sweep
