#include "host/engine/engine_check.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;
using Kind = se::EngineRowKind;

struct GroupRule {
    const char* name;
    Kind kind;
    const char* capability;
};

// In the order in which the wrapper checks them, after the last row.
constexpr GroupRule kGroups[] = {
    {"look directions", Kind::direction, "beam_forming"},
    {"noise test", Kind::noise_test, "noise_tests"},
    {"DFT hooks", Kind::dft_hook, nullptr},
};

const char* symbolOf(const se::EngineRow& row, quill::DynLibHandle engine) {
    for (const char* const symbol : row.symbols) {
        if (symbol != nullptr && quill::getSymbolAddress(engine, symbol) != nullptr) return symbol;
    }
    return nullptr;
}

CheckedGroup countGroup(const GroupRule& rule, const std::vector<CheckedRow>& rows) {
    CheckedGroup group{rule.name, rule.capability, 0, 0};
    for (const CheckedRow& checked : rows) {
        if (checked.row->kind != rule.kind) continue;
        ++group.size;
        if (checked.found_as != nullptr) ++group.found;
    }
    return group;
}

std::string objectionTo(const CheckedRow& checked) {
    if (checked.found_as != nullptr || !se::isRequired(checked.row->kind)) return {};
    const char* const other = checked.row->symbols[1];
    const std::string name = checked.row->symbols[0];
    return other == nullptr ? "symbol " + name + " is missing"
                            : "symbol " + name + " is missing, and " + other + " too";
}

std::string objectionTo(const CheckedGroup& group) {
    if (!group.torn()) return {};
    return "only " + std::to_string(group.found) + " of " + std::to_string(group.size) +
           " entry points of the group '" + group.name + "' are there; it takes all or none";
}

template <typename Items>
std::string firstObjection(const Items& items) {
    for (const auto& item : items) {
        const std::string objection = objectionTo(item);
        if (!objection.empty()) return objection;
    }
    return {};
}

}  // namespace

EngineCheck checkEngine(const std::string& path, quill::DynLibHandle engine) {
    EngineCheck check;
    check.path = path;
    for (const se::EngineRow& row : se::kEngineRows) check.rows.push_back({&row, symbolOf(row, engine)});
    for (const GroupRule& rule : kGroups) check.groups.push_back(countGroup(rule, check.rows));
    check.objection = firstObjection(check.rows);
    if (check.objection.empty()) check.objection = firstObjection(check.groups);
    if (check.objection.empty()) check.objection = se::whyNotUsable(engine);
    return check;
}

}  // namespace se_host
