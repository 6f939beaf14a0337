// apply_tuning FILE.json: a host that starts its engine with a tuning. The tuning guide shows the part between
// the includes and main().
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

#include "common/properties.h"
#include "webrtc_common/se_wrapper.h"

namespace se = quill::media::se_wrapper;
using Json = nlohmann::ordered_json;

// The text for setFromText: a string such as an Enum's "2 - Narrow forward" unchanged, numbers as digits.
std::string textOf(const Json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

void edit(const quill::PropertyNodePtr& node, const Json& value) {
    std::string error;
    if (!node->setFromText(textOf(value), &error)) std::cerr << node->name() << ": " << error << '\n';
}

// [control] Writable scalars are applied. The rest of a tuning is for the record.
void applyTuning(const Json& tuning, const quill::PropertyNodePtr& root) {
    const Json& diagnostics = tuning.at("diagnostics");
    se::readSignalEssenceDiags(root);  // makes the nodes: diags/<level>/<name>
    for (const auto& level : root->getNode("diags", true)->children()) {
        for (const auto& node : level->children()) {
            const auto found = diagnostics.find(node->name());
            if (found == diagnostics.end() || !found->at("writable")) continue;
            if (!found->at("value").is_array()) edit(node, found->at("value"));
        }
    }
    for (const auto& [name, bypassed] : tuning.at("switches").items()) {
        if (bypassed.is_boolean()) root->getNode(name, true)->set<bool>(bypassed);
    }
    se::writeSignalEssenceDiags(root);  // sends the edits to the engine
}

int main(int argc, char** argv) {
    std::ifstream file(argc == 2 ? argv[1] : "");
    const Json tuning = Json::parse(file, nullptr, false);
    if (tuning.is_discarded()) {
        std::cerr << "apply_tuning: give the path of a tuning\n";
        return 2;
    }
    const auto root = quill::PropertyNode::createRoot();
    quill::initStaticProperties(root);
    se::initSignalEssence();
    se::versionSpecificSettings();
    applyTuning(tuning, root);

    se::readSignalEssenceDiags(root);
    const auto weight = root->getNode("diags/advanced/senr_nf_weight_factor_q10", false);
    std::cout << "senr_nf_weight_factor_q10 is " << weight->get<int>() << '\n';
    return 0;
}
