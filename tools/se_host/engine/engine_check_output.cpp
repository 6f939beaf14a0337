// The two forms of `se_host check-engine`'s answer.
#include <cstring>

#include "common/string_printf.h"
#include "tools/se_host/engine/engine_check_output.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using Json = nlohmann::ordered_json;
using Kind = quill::media::se_wrapper::EngineRowKind;

struct KindText {
    const char* name;        // in JSON
    const char* if_missing;  // in text
};

KindText textOf(Kind kind) {
    if (quill::media::se_wrapper::isRequired(kind)) return {"mandatory", "MISSING"};
    switch (kind) {
        case Kind::direction:
            return {"look directions", "not there, look directions"};
        case Kind::noise_test:
            return {"noise test", "not there, noise test"};
        case Kind::dft_hook:
            return {"DFT hooks", "not there, DFT hooks"};
        case Kind::defaulted:
            return {"optional", "missing, the wrapper's own is used"};
        default:
            return {"optional", "not there, optional"};
    }
}

std::string rowText(size_t number, const CheckedRow& checked) {
    const char* const found = checked.found_as;
    const std::string answer = found == nullptr ? textOf(checked.row->kind).if_missing
                               : std::strcmp(found, checked.row->variable) == 0
                                   ? std::string("found")
                                   : std::string("found as ") + found;
    return stringPrintf("  %2zu  %-46s %s\n", number, checked.row->variable, answer.c_str());
}

std::string groupText(const CheckedGroup& group) {
    const char* const state = group.whole() ? "whole" : group.torn() ? "TORN" : "absent";
    return stringPrintf("  %-16s %d of %d, %s\n", group.name, group.found, group.size, state);
}

Json rowJson(const CheckedRow& checked) {
    return {{"name", checked.row->variable},
            {"kind", textOf(checked.row->kind).name},
            {"found_as", checked.found_as == nullptr ? Json(nullptr) : Json(checked.found_as)}};
}

Json groupJson(const CheckedGroup& group) {
    return {{"found", group.found}, {"size", group.size}, {"whole", group.whole()}, {"torn", group.torn()}};
}

}  // namespace

std::string toText(const EngineCheck& check) {
    std::string text = check.path + "\n\nentry points, in the order in which they are looked up\n";
    size_t number = 0;
    for (const CheckedRow& row : check.rows) text += rowText(++number, row);
    text += "\ngroups, of which an engine has all or none\n";
    for (const CheckedGroup& group : check.groups) text += groupText(group);
    text += "\ncapabilities\n";
    for (const CheckedGroup& group : check.groups) {
        if (group.capability == nullptr) continue;
        text += stringPrintf("  %-16s %s\n", group.capability, group.whole() ? "yes" : "no");
    }
    return text +
           "\nverdict: " + (check.objection.empty() ? "can be used" : "cannot be used: " + check.objection) +
           "\n";
}

Json toJson(const EngineCheck& check) {
    Json rows = Json::array(), groups = Json::object(), capabilities = Json::object();
    for (const CheckedRow& row : check.rows) rows.push_back(rowJson(row));
    for (const CheckedGroup& group : check.groups) {
        groups[group.name] = groupJson(group);
        if (group.capability != nullptr) capabilities[group.capability] = group.whole();
    }
    return {{"path", check.path},
            {"usable", check.objection.empty()},
            {"objection", check.objection.empty() ? Json(nullptr) : Json(check.objection)},
            {"entry_points", rows},
            {"groups", groups},
            {"capabilities", capabilities}};
}

}  // namespace se_host
