// The engine's diagnostics in the property tree, and edits of them by text.
#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "common/property_node.h"
#include "tools/se_host/diags/diag_info.h"

namespace se_host {

// The switches that stand beside the diagnostics.
inline constexpr const char* kBypassSwitches[] = {"aec_bypass", "noise_reduction_bypass"};

bool isBypassSwitch(const std::string& name);

class DiagTree {
  public:
    // Publishes once, arrays of any length included. needs: a started engine.
    DiagTree();

    const std::vector<DiagInfo>& diags() const { return diags_; }
    // By name or path; null when the engine has none.
    const DiagInfo* find(const std::string& name) const;
    // Those whose name or path matches, in the order of the catalogue. fails: UsageError when there are none.
    std::vector<DiagInfo> matching(const std::string& pattern) const;

    // The engine's values go to the tree.
    void publish();

    // The edits go to the engine, and what it holds then comes back. Returns where that is not what the edits
    // say, a sentence each.
    std::vector<std::string> apply();

    // Edits a diagnostic or a switch, found by name or path; apply hands it to the engine. A diagnostic
    // takes a number, an Enum also what stands behind the number in its values.
    // fails: why not: unknown, read-only, an array, no such value. Nothing is changed then.
    std::optional<std::string> edit(const std::string& name, const std::string& text);

    // What the tree holds: a number (null: not finite), a text for an Enum, an array of numbers, a bool for a
    // switch; null when there is no value, or the engine has no such switch.
    nlohmann::ordered_json value(const DiagInfo& diag) const;
    nlohmann::ordered_json value(const char* bypass_switch) const;
    // By name or path. fails: UsageError when there is none.
    nlohmann::ordered_json valueOf(const std::string& name) const;

  private:
    bool hasSwitch(const std::string& name) const;
    std::optional<std::string> setNode(const std::string& name, const std::string& path,
                                       const std::string& text);

    std::vector<DiagInfo> diags_;
    std::unordered_map<std::string, size_t> places_;  // in diags_, by name and by path
    quill::PropertyNodePtr root_;
    std::vector<std::string> switches_;                    // those that the engine has
    std::map<std::string, nlohmann::ordered_json> edits_;  // by name, not applied yet
};

// A value for reading: a text without quotes, a number with as few digits as it takes.
std::string toText(const nlohmann::ordered_json& value);

}  // namespace se_host
