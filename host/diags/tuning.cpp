#include "host/diags/tuning.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "host/diags/json_reader.h"
#include "host/output/errors.h"
#include "host/output/input_file.h"
#include "host/output/one_line.h"

namespace se_host {
namespace {

using Json = nlohmann::ordered_json;

[[noreturn]] void refuse(const std::string& path, const std::string& why) {
    throw se_output::Failure("'" + path + "' is not a tuning file: " + why +
                             "; 'se_host diags dump' writes one");
}

const Json& member(const Json& json, const char* name, const std::string& path) {
    if (!json.is_object() || !json.contains(name)) refuse(path, "'" + std::string(name) + "' is missing");
    return json.at(name);
}

std::string textMember(const Json& json, const char* name, const std::string& path) {
    const Json& value = member(json, name, path);
    if (!value.is_string()) refuse(path, "'" + std::string(name) + "' is not a text");
    return value.get<std::string>();
}

// A value that can be compared and applied: no nesting except the elements of an array.
bool isPlain(const Json& value) {
    return value.is_primitive() ||
           (value.is_array() && std::all_of(value.begin(), value.end(),
                                            [](const Json& element) { return element.is_primitive(); }));
}

void requirePlain(const std::string& name, const Json& value, const std::string& path) {
    if (isPlain(value)) return;
    refuse(path, "the value of '" + se_output::oneLine(name) + "' is not a number, a text or a list of them");
}

void requireDiagnostic(const std::string& name, const Json& diagnostic, const std::string& path) {
    if (!diagnostic.is_object() || !diagnostic.contains("value")) {
        refuse(path, "'" + se_output::oneLine(name) + "' has no 'value'");
    }
    requirePlain(name, diagnostic["value"], path);
}

constexpr se_output::InputKind kTuningFile{"give a tuning that 'se_host diags dump' wrote", size_t{64} << 20,
                                           [](std::string_view) { return true; }};

Json jsonIn(const std::string& path) {
    const se_output::Descriptor file = se_output::openInput(path, kTuningFile);
    const std::string text = se_output::contentOf(file.number());
    try {
        return readJson(text);
    } catch (const std::runtime_error& error) {
        refuse(path, error.what());
    }
}

std::string changeText(const std::string& name, const Json& before, const Json& after) {
    return se_output::oneLine(name + ": " + toText(before) + " -> " + toText(after));
}

bool isForTheRecord(const Json& value, const DiagInfo& diag) {
    return !diag.writable || diag.isArray() || value.is_null();
}

// A value that the engine already holds needs no edit, even if no edit could set it.
void want(const DiagTree& tree, const std::string& name, const Json& value, TuningEdits* edits) {
    if (tree.valueOf(name) != value) edits->wanted.emplace_back(name, toText(value));
}

void wantDiags(const Tuning& tuning, const DiagTree& tree, TuningEdits* edits) {
    for (const auto& [name, diagnostic] : tuning.diagnostics.items()) {
        const DiagInfo* const diag = tree.find(name);
        if (diag == nullptr) {
            edits->unknown.push_back(name);
        } else if (isForTheRecord(diagnostic["value"], *diag)) {
            ++edits->kept;
        } else {
            want(tree, name, diagnostic["value"], edits);
        }
    }
}

void wantSwitches(const Tuning& tuning, const DiagTree& tree, TuningEdits* edits) {
    for (const auto& [name, value] : tuning.switches.items()) {
        if (!isBypassSwitch(name)) {
            edits->unknown.push_back(name);
        } else if (!value.is_null()) {
            want(tree, name, value, edits);
        }
    }
}

using Values = std::vector<std::pair<std::string, Json>>;

Values switchesOf(const Tuning& tuning) {
    Values values;
    for (const auto& [name, value] : tuning.switches.items()) values.emplace_back(name, value);
    return values;
}

Values diagnosticsOf(const Tuning& tuning) {
    Values values;
    for (const auto& [name, diagnostic] : tuning.diagnostics.items()) {
        values.emplace_back(name, diagnostic["value"]);
    }
    return values;
}

std::unordered_map<std::string, const Json*> byName(const Values& values) {
    std::unordered_map<std::string, const Json*> places;
    for (const auto& [name, value] : values) places.emplace(name, &value);
    return places;
}

void compare(const std::string& path_a, const Values& a, const std::string& path_b, const Values& b,
             std::vector<std::string>* lines) {
    const auto in_a = byName(a), in_b = byName(b);
    for (const auto& [name, value] : a) {
        const auto other = in_b.find(name);
        if (other == in_b.end()) {
            lines->push_back(se_output::oneLine("only in " + path_a + ": " + name));
        } else if (*other->second != value) {
            lines->push_back(changeText(name, value, *other->second));
        }
    }
    for (const auto& [name, value] : b) {
        if (in_a.count(name) == 0) lines->push_back(se_output::oneLine("only in " + path_b + ": " + name));
    }
}

}  // namespace

Tuning tuningOf(const Engine& engine, const DiagTree& tree) {
    Tuning tuning{engine.build, engine.version, Json::object(), Json::object()};
    for (const DiagInfo& diag : tree.diags()) {
        if (tree.find(diag.name) != &diag) continue;  // the name of an earlier one
        append(tuning.diagnostics, diag.name,
               {{"type", diag.typeText()}, {"writable", diag.writable}, {"value", tree.value(diag)}});
    }
    for (const char* const name : kBypassSwitches) tuning.switches[name] = tree.value(name);
    return tuning;
}

Json toJson(const Tuning& tuning) {
    return {{"engine", {{"build", tuning.build}, {"version", tuning.version}}},
            {"switches", tuning.switches},
            {"diagnostics", tuning.diagnostics}};
}

void writeTuning(se_output::OutputFile& file, const Tuning& tuning) {
    file.write(toJson(tuning).dump(2, ' ', true, Json::error_handler_t::replace) + '\n');
}

Tuning readTuning(const std::string& path) {
    const Json json = jsonIn(path);
    Tuning tuning;
    const Json& engine = member(json, "engine", path);
    tuning.build = textMember(engine, "build", path);
    tuning.version = textMember(engine, "version", path);
    tuning.diagnostics = member(json, "diagnostics", path);
    if (!tuning.diagnostics.is_object()) refuse(path, "'diagnostics' holds no names");
    for (const auto& [name, diagnostic] : tuning.diagnostics.items()) {
        requireDiagnostic(name, diagnostic, path);
    }
    tuning.switches = json.value("switches", Json::object());
    if (!tuning.switches.is_object()) refuse(path, "'switches' holds no names");
    for (const auto& [name, value] : tuning.switches.items()) requirePlain(name, value, path);
    return tuning;
}

TuningEdits editsOf(const Tuning& tuning, const DiagTree& tree) {
    TuningEdits edits;
    wantDiags(tuning, tree, &edits);
    wantSwitches(tuning, tree, &edits);
    return edits;
}

Applied applyTuning(const Tuning& tuning, const Engine& engine, DiagTree& tree) {
    Applied applied;
    applied.other_version = tuning.version != engine.version;
    const Tuning before = tuningOf(engine, tree);
    TuningEdits edits = editsOf(tuning, tree);
    applied.unknown = std::move(edits.unknown);
    applied.kept = edits.kept;
    for (const auto& [name, text] : edits.wanted) {
        if (const auto objection = tree.edit(name, text)) applied.refused.push_back(*objection);
    }
    for (std::string& difference : tree.apply()) applied.refused.push_back(std::move(difference));
    applied.changed = differences({}, before, {}, tuningOf(engine, tree));
    return applied;
}

std::vector<std::string> warnings(const std::string& path, const Tuning& tuning, const Engine& engine,
                                  const Applied& applied) {
    std::vector<std::string> lines;
    if (applied.other_version) {
        lines.push_back("'" + path + "' was made with engine version '" + tuning.version + "', this is '" +
                        engine.version + "'");
    }
    for (const std::string& name : applied.unknown) {
        lines.push_back("'" + path + "': the engine has no diagnostic '" + name + "'");
    }
    for (const std::string& why : applied.refused) lines.push_back("'" + path + "': " + why);
    return lines;
}

std::vector<std::string> differences(const std::string& path_a, const Tuning& a, const std::string& path_b,
                                     const Tuning& b) {
    std::vector<std::string> lines;
    if (a.version != b.version) lines.push_back(changeText("engine version", a.version, b.version));
    // Apart, as a diagnostic may have the name of a switch.
    compare(path_a, switchesOf(a), path_b, switchesOf(b), &lines);
    compare(path_a, diagnosticsOf(a), path_b, diagnosticsOf(b), &lines);
    return lines;
}

}  // namespace se_host
