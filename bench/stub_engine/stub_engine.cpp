#include "bench/stub_engine/stub_engine.h"

#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace bench {

StubEngine& stubEngine() {
    static StubEngine the_engine;
    return the_engine;
}

void fillStubCatalogue(std::size_t count, int length) {
    stubEngine() = {};
    stubEngine().length = length;
    for (std::size_t i = 0; i < count; ++i) {
        stubEngine().names.push_back("senr_diagnostic_" + std::to_string(i));
    }
}

void fillInterfaceTable() {
    using namespace quill::media::se_wrapper;
    SEDiagGetNumDiags = [] { return static_cast<int32_t>(stubEngine().names.size()); };
    SEDiagGetName = [](int32_t index) { return stubEngine().names[static_cast<std::size_t>(index)].c_str(); };
    SEDiagGetLevel = [](int32_t index) { return index % kStubLevels; };
    SEDiagGetHelp = [](int32_t) { return "what the diagnostic does, in a line or two of text"; };
    SEDiagGetRW = [](int32_t) { return SE_DIAG_RW_WRITABLE; };
    SEDiagGetLen = [](int32_t) { return stubEngine().length; };
    SEDiagGetType = [](int32_t) { return SE_DIAG_TYPE_INT32; };
    SEDiagGetInt32 = [](int32_t) { return stubEngine().value; };
    SEDiagSetInt32 = [](int32_t, int32_t) {};
    SEDiagGetInt32Array = [](int32_t) { return stubEngine().elements; };
    MMIfGetCurrentLocation = [](uint16_t*, int16_t*) {};
    MMIfGetAecBypass = []() -> uint16_t { return 0; };
    MMIfSetAecBypass = [](uint16_t) {};
    MMIfProcessMicrophones = [](int16_t*, int16_t*, int16_t*) {};
}

}  // namespace bench
