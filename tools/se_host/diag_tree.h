// The engine's diagnostics in the property tree, and edits of them by text: the way that a user's change takes
// from the command line to the engine.
// Threads: one.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "common/property_node.h"
#include "tools/se_host/diag_info.h"

namespace se_host {

// The switches that stand beside the diagnostics.
inline constexpr const char* kBypassSwitches[] = {"aec_bypass", "noise_reduction_bypass"};

class DiagTree {
  public:
    // Publishes once, arrays of any length included. needs: a started engine.
    DiagTree();

    const std::vector<DiagInfo>& diags() const { return diags_; }
    // By name or path; null when the engine has none.
    const DiagInfo* find(const std::string& name) const;

    // The engine's values go to the tree.
    void publish();

    // The edits go to the engine, and what it made of them comes back.
    void apply();

    // Edits a diagnostic or a switch, found by name or path; the engine hears of it in apply.
    // fails: why not: unknown, read-only, an array, no such value. Nothing is changed then.
    std::optional<std::string> edit(const std::string& name, const std::string& text);

    // What the tree holds: a number (null: not finite), a text for an Enum, an array of numbers, a bool for a
    // switch; null when there is no value.
    nlohmann::ordered_json value(const DiagInfo& diag) const;
    nlohmann::ordered_json value(const char* bypass_switch) const;
    // By name or path. fails: UsageError when there is none.
    nlohmann::ordered_json valueOf(const std::string& name) const;

  private:
    std::vector<DiagInfo> diags_;
    std::unordered_map<std::string, size_t> places_;  // in diags_, by name and by path
    quill::PropertyNodePtr root_;
};

// A value as people read it: a text without quotes, a number with no digit too many.
std::string toText(const nlohmann::ordered_json& value);

}  // namespace se_host
