#include "webrtc_common/se_wrapper/table/engine_symbols.h"

#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper {
namespace {

// The name under which the engine exports the row; null: under none.
const char* exportedName(DynLibHandle engine, const EngineRow& row) {
    for (const char* const name : row.symbols) {
        if (name != nullptr && getSymbolAddress(engine, name) != nullptr) return name;
    }
    return nullptr;
}

bool isHook(EngineRowKind kind) {
    return kind == EngineRowKind::hook || kind == EngineRowKind::dft_hook;
}

std::string objectionTo(const void* symbol, EngineRowKind kind) {
    return isHook(kind) ? whyNotVariable(symbol, sizeof(void (*)())) : whyNotFunction(symbol);
}

}  // namespace

std::string whyNotUsable(DynLibHandle engine) {
    std::string first;
    for (const EngineRow& row : kEngineRows) {
        const char* const name = exportedName(engine, row);
        if (name == nullptr && isRequired(row.kind)) return {};
        if (name == nullptr || !first.empty()) continue;
        const std::string objection = objectionTo(getSymbolAddress(engine, name), row.kind);
        if (!objection.empty()) first = std::string("symbol ") + name + " " + objection;
    }
    return first;
}

}  // namespace quill::media::se_wrapper
