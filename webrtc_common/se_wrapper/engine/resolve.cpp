#include "webrtc_common/se_wrapper/engine/resolve.h"

#include "webrtc_common/se_wrapper/diags/catalogue.h"
#include "webrtc_common/se_wrapper/records.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper {

void resolveEngineTable(DynLibHandle lib) {
// One statement for each kind of row.
#define RESOLVE_mandatory(slot, symbol) getSymbolOrDie(&slot, lib, symbol)
#define RESOLVE_alternatives(slot, ...) getSymbolOrDie(&slot, lib, std::vector<const char*>{__VA_ARGS__})
#define RESOLVE_hook RESOLVE_alternatives
#define RESOLVE_optional(slot, symbol) getSymbol(&slot, lib, symbol)
#define RESOLVE_direction RESOLVE_optional
#define RESOLVE_noise_test RESOLVE_optional
#define RESOLVE_dft_hook RESOLVE_optional
#define RESOLVE_defaulted(slot, symbol) \
    getSymbol(&slot, lib, symbol);      \
    if (slot == nullptr) slot = default##slot

#define ENGINE_ROW(kind, variable, type, ...) RESOLVE_##kind(variable, __VA_ARGS__);
#include "webrtc_common/se_wrapper/table/engine_table_rows.h"
}

void applyEngineGroupRules() {
    const int mmifdirs = countPresentEngineRows(EngineRowKind::direction);
    QUILL_CHECK_AT(SE_WRAPPER_HERE, mmifdirs == 4 || mmifdirs == 0);
    g_has_beam_forming = mmifdirs == 4;

    const int mmifnoise = countPresentEngineRows(EngineRowKind::noise_test);
    QUILL_CHECK_AT(SE_WRAPPER_HERE, mmifnoise == 3 || mmifnoise == 0);
    g_has_noise_tests = mmifnoise == 3;

    const int fcnhook = countPresentEngineRows(EngineRowKind::dft_hook);
    QUILL_CHECK_AT(SE_WRAPPER_HERE, fcnhook == 3 || fcnhook == 0);
}

}  // namespace quill::media::se_wrapper
