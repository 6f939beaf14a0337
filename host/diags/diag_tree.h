// The engine's diagnostics in the property tree, and edits of them by text.
#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "common/property_node.h"
#include "host/diags/diag_info.h"

namespace se_host {

// The switches beside the diagnostics.
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

    // Copies the engine's values to the tree.
    void publish();

    // Applies the edits to the engine and reads its values back. Returns a sentence for each value that differs
    // from its edit.
    std::vector<std::string> apply();

    // Edits a diagnostic or a switch, found by name or path; apply sends it to the engine. A diagnostic takes a
    // number; an Enum also takes the number with its label.
    // fails: returns the reason (unknown, read-only, an array, invalid value) and changes nothing.
    std::optional<std::string> edit(const std::string& name, const std::string& text);

    // What edit would answer.
    std::optional<std::string> objection(const std::string& name, const std::string& text) const;

    const quill::PropertyNodePtr& root() const { return root_; }

    // The value in the tree: a number (null: not finite), a text for an Enum, an array of numbers, a bool for a
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

// A value as shown to the user: a text without quotes, a number with the fewest digits.
std::string toText(const nlohmann::ordered_json& value);

}  // namespace se_host
