#include "host/diags/diag_tree.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <sstream>

#include "common/string_printf.h"
#include "host/engine/engine_stage.h"
#include "host/output/errors.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;
using Json = nlohmann::ordered_json;
using quill::PropertyNodePtr;

// The double with the fewest digits that converts to this float.
Json shortest(float value) {
    if (!std::isfinite(value)) return nullptr;
    char text[64];
    *std::to_chars(text, text + sizeof(text) - 1, value).ptr = '\0';
    return std::strtod(text, nullptr);
}

// A number without a fraction when `kind` has none; the whole text must be used up.
std::optional<double> numberIn(const std::string& text, const DiagKind& kind) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc{} || result.ptr != end || !std::isfinite(number)) return std::nullopt;
    if (!kind.is_real && number != std::floor(number)) return std::nullopt;
    return number;
}

// The tree accepts 0 and 1.
std::string switchText(const std::string& text) {
    return text == "true" ? "1" : text == "false" ? "0" : text;
}

// In the words of the tree.
std::optional<std::string> objectionToSwitch(const std::string& name, const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    const size_t last = text.find_last_not_of(" \t");
    const std::string bare =
        first == std::string::npos ? "" : switchText(text.substr(first, last - first + 1));
    if (bare == "0" || bare == "1") return std::nullopt;
    return '"' + name + "\" takes 0 or 1, not \"" + text + '"';
}

// "2" of "2 - Narrow".
std::string numberPart(const std::string& text) {
    return text.substr(0, text.find(' '));
}

std::string numberText(const DiagInfo& diag, const std::string& text) {
    return diag.isEnum() ? numberPart(text) : text;
}

// In the form of the tree: a whole number without a fraction or exponent.
std::string treeText(const DiagInfo& diag, const std::string& text) {
    const std::string number = numberText(diag, text);
    if (diag.kind->is_real) return number;
    return quill::stringPrintf("%.0f", numberIn(number, *diag.kind).value_or(0));
}

// An edited Enum has no label yet.
bool isSame(const Json& edit, const Json& held) {
    if (!edit.is_string() || !held.is_string()) return edit == held;
    return numberPart(edit.get<std::string>()) == numberPart(held.get<std::string>());
}

// "[ 1, -2, 3 ]"; what is not finite is null.
Json elementsIn(const std::string& text) {
    Json elements = Json::array();
    std::istringstream list(text.substr(1, text.size() - 2));
    for (std::string element; std::getline(list, element, ',');) {
        Json value = Json::parse(element, nullptr, false);
        elements.push_back(value.is_number() ? std::move(value) : Json(nullptr));
    }
    return elements;
}

std::optional<std::string> objectionTo(const DiagInfo& diag, const std::string& text) {
    if (diag.isArray()) return "'" + diag.name + "' is an array; arrays can only be read";
    if (diag.kind->type == SE_DIAG_TYPE_NONE) return "'" + diag.name + "' has no value that could be set";
    if (!diag.writable) return "'" + diag.name + "' is read-only";
    const auto number = numberIn(numberText(diag, text), *diag.kind);
    if (!number) {
        return "'" + text + "' is not a value for '" + diag.name + "', which takes " +
               (diag.kind->is_real ? "a number" : "a whole number");
    }
    if (*number < diag.kind->lowest || *number > diag.kind->highest) {
        return quill::stringPrintf("'%s' is out of range for '%s', which takes %.10g to %.10g", text.c_str(),
                                   diag.name.c_str(), diag.kind->lowest, diag.kind->highest);
    }
    return std::nullopt;
}

}  // namespace

bool isBypassSwitch(const std::string& name) {
    return std::find(std::begin(kBypassSwitches), std::end(kBypassSwitches), name) !=
           std::end(kBypassSwitches);
}

DiagTree::DiagTree()
    : diags_(callEngine(EngineStage::kReadingDiags, allDiags)), root_(quill::PropertyNode::createRoot()) {
    for (size_t place = 0; place < diags_.size(); ++place) {
        places_.emplace(diags_[place].name, place);
        places_.emplace(diags_[place].path, place);
    }
    root_->getNode("transfer_large_arrays", true)->set<bool>(true);
    publish();
    for (const char* const name : kBypassSwitches) {
        if (root_->exists(name)) switches_.emplace_back(name);
    }
}

const DiagInfo* DiagTree::find(const std::string& name) const {
    const auto found = places_.find(name);
    return found == places_.end() ? nullptr : &diags_[found->second];
}

std::vector<DiagInfo> DiagTree::matching(const std::string& pattern) const {
    std::vector<DiagInfo> found;
    std::copy_if(diags_.begin(), diags_.end(), std::back_inserter(found),
                 [&](const DiagInfo& diag) { return matches(diag, pattern); });
    if (found.empty()) {
        throw se_output::UsageError("no diagnostic matches '" + pattern +
                                    "'; 'se_host diags list' shows them");
    }
    return found;
}

void DiagTree::publish() {
    callEngine(EngineStage::kReadingDiags, [&] { se::readSignalEssenceDiags(root_); });
}

std::vector<std::string> DiagTree::apply() {
    // A switch that the engine does not have keeps its initial value.
    for (const char* const name : kBypassSwitches) {
        bool bypassed = false;
        root_->getNode(name, true)->get<bool>(bypassed, false);
    }
    callEngine(EngineStage::kSettingDiags, [&] { se::writeSignalEssenceDiags(root_); });
    publish();
    std::vector<std::string> differences;
    for (const auto& [name, edit] : edits_) {
        const Json held = valueOf(name);
        if (isSame(edit, held)) continue;
        differences.push_back("'" + name + "' was set to '" + toText(edit) + "', but the engine holds '" +
                              toText(held) + "'");
    }
    edits_.clear();
    return differences;
}

std::optional<std::string> DiagTree::objection(const std::string& name, const std::string& text) const {
    if (isBypassSwitch(name)) {
        if (!hasSwitch(name)) return "the engine has no switch '" + name + "'";
        return objectionToSwitch(name, text);
    }
    const DiagInfo* const diag = find(name);
    if (diag == nullptr) return "the engine has no diagnostic '" + name + "'";
    return objectionTo(*diag, text);
}

std::optional<std::string> DiagTree::edit(const std::string& name, const std::string& text) {
    if (auto why = objection(name, text)) return why;
    if (isBypassSwitch(name)) return setNode(name, name, switchText(text));
    const DiagInfo* const diag = find(name);
    return setNode(diag->name, diag->path, treeText(*diag, text));
}

std::optional<std::string> DiagTree::setNode(const std::string& name, const std::string& path,
                                             const std::string& text) {
    std::string error;
    if (!root_->getNode(path, true)->setFromText(text, &error)) return error;
    edits_[name] = valueOf(name);
    return std::nullopt;
}

bool DiagTree::hasSwitch(const std::string& name) const {
    return std::find(switches_.begin(), switches_.end(), name) != switches_.end();
}

Json DiagTree::value(const DiagInfo& diag) const {
    const PropertyNodePtr node = root_->getNode(diag.path, false);
    if (!node || node->value().empty()) return nullptr;
    if (diag.isArray()) return elementsIn(node->get<std::string>());
    if (diag.isEnum()) return node->get<std::string>();
    if (diag.kind->is_real) return shortest(node->get<float>());
    return node->get<long>();
}

Json DiagTree::value(const char* bypass_switch) const {
    if (!hasSwitch(bypass_switch)) return nullptr;
    return root_->getNode(bypass_switch, false)->get<bool>();
}

Json DiagTree::valueOf(const std::string& name) const {
    if (isBypassSwitch(name)) return value(name.c_str());
    const DiagInfo* const diag = find(name);
    if (diag == nullptr) {
        throw se_output::UsageError("the engine has no diagnostic '" + name +
                                    "'; 'se_host diags list' shows them");
    }
    return value(*diag);
}

std::string toText(const Json& value) {
    if (value.is_null()) return "none";
    if (value.is_string()) return value.get<std::string>();
    return value.dump();
}

}  // namespace se_host
