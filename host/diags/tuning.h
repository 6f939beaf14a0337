// A tuning: the values of all diagnostics of an engine, in a JSON file.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "host/diags/diag_tree.h"
#include "host/engine/engine.h"
#include "host/output/output_file.h"

namespace se_host {

struct Tuning {
    std::string build;
    std::string version;
    // By name: {"type", "writable", "value"}, in the order of the catalogue.
    nlohmann::ordered_json diagnostics = nlohmann::ordered_json::object();
    // By name: bool, or null when the engine does not have it.
    nlohmann::ordered_json switches = nlohmann::ordered_json::object();
};

Tuning tuningOf(const Engine& engine, const DiagTree& tree);

nlohmann::ordered_json toJson(const Tuning& tuning);

// As the content of the output; the caller commits. fails: Failure.
void writeTuning(se_output::OutputFile& file, const Tuning& tuning);

// "-" is standard input. fails: Failure, naming what is wrong with the file.
Tuning readTuning(const std::string& path);

struct Applied {
    std::vector<std::string> changed;  // "gain_q10: 1024 -> 900"
    std::vector<std::string> unknown;  // names that the engine does not have
    std::vector<std::string> refused;  // the reason, or the value that the engine holds instead
    size_t kept = 0;                   // entries for the record only: read-only, arrays, no value
    bool other_version = false;

    bool asAsked() const { return unknown.empty() && refused.empty(); }
};

// What a tuning asks for that the tree does not hold, in the order of the file. Whether it can be set is not checked.
struct TuningEdits {
    std::vector<std::pair<std::string, std::string>> wanted;  // name and value
    std::vector<std::string> unknown;
    size_t kept = 0;
};

TuningEdits editsOf(const Tuning& tuning, const DiagTree& tree);

// Applies all writable values in one pass.
Applied applyTuning(const Tuning& tuning, const Engine& engine, DiagTree& tree);

// Lines about entries that were not applied as in the file.
std::vector<std::string> warnings(const std::string& path, const Tuning& tuning, const Engine& engine,
                                  const Applied& applied);

// What differs, a line each: "gain_q10: 1024 -> 900", "only in a.json: x".
std::vector<std::string> differences(const std::string& path_a, const Tuning& a, const std::string& path_b,
                                     const Tuning& b);

}  // namespace se_host
