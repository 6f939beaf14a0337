// The types of the interface table's slots, in the plain types of a C header. Nothing runs: a slot of another
// type does not compile.
#include <type_traits>

#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper {

#define EXPECT_SLOT(variable, ...) static_assert(std::is_same_v<decltype(variable), __VA_ARGS__>)

EXPECT_SLOT(MMIfSetAutoLocationSearch, void (*)());
EXPECT_SLOT(MMIfInit, void (*)(unsigned short));
EXPECT_SLOT(RcvIfProcessReceivePath, void (*)(const short*, short*));
EXPECT_SLOT(MMIfSetReceivePathGainQ10, void (*)(short));
EXPECT_SLOT(MMIfGetCurrentLocation, void (*)(unsigned short*, short*));
EXPECT_SLOT(MMIfSetManualLocation, void (*)(int, short));
EXPECT_SLOT(MMIfLookInAllDirectionsIncludingRear_Optional, void (*)());
EXPECT_SLOT(MMIfLookForwardRejectRearNoise_Optional, void (*)(float));
EXPECT_SLOT(MMIfLookNarrowForwardRejectRearNoise_Optional, void (*)(float));
EXPECT_SLOT(MMIfLookInOneDirectionRejectRearNoise_Optional, void*);
EXPECT_SLOT(MMIfProcessMicrophones, void (*)(short*, short*, short*));
EXPECT_SLOT(MMIfGetVersionString, const char* (*)());
EXPECT_SLOT(MMIfGetAecBypass, unsigned short (*)());
EXPECT_SLOT(MMIfSetAecBypass, void (*)(unsigned short));
EXPECT_SLOT(MMIfGetNoiseReductionBypass_Optional, void*);
EXPECT_SLOT(MMIfSetNoiseReductionBypass_Optional, void*);
EXPECT_SLOT(MMIfStartNoiseTest_Optional, void (*)());
EXPECT_SLOT(MMIfGetNoiseTestResults_Optional, NoiseTestResults* (*)());
EXPECT_SLOT(MMIfNoiseTestIsRunning_Optional, void*);
EXPECT_SLOT(SEDiagGetInt16, short (*)(int));
EXPECT_SLOT(SEDiagGetUInt16, unsigned short (*)(int));
EXPECT_SLOT(SEDiagGetInt32, int (*)(int));
EXPECT_SLOT(SEDiagGetUInt32, unsigned int (*)(int));
EXPECT_SLOT(SEDiagGetInt40, long long (*)(int));
EXPECT_SLOT(SEDiagGetUInt40, unsigned long long (*)(int));
EXPECT_SLOT(SEDiagGetFloat32, float (*)(int));
EXPECT_SLOT(SEDiagSetInt16, void (*)(int, short));
EXPECT_SLOT(SEDiagSetUInt16, void (*)(int, unsigned short));
EXPECT_SLOT(SEDiagSetInt32, void (*)(int, int));
EXPECT_SLOT(SEDiagSetUInt32, void (*)(int, unsigned int));
EXPECT_SLOT(SEDiagSetInt40, void (*)(int, long long));
EXPECT_SLOT(SEDiagSetUInt40, void (*)(int, unsigned long long));
EXPECT_SLOT(SEDiagSetFloat32, void (*)(int, float));
EXPECT_SLOT(SEDiagGetInt16Array, short* (*)(int));
EXPECT_SLOT(SEDiagGetUInt16Array, unsigned short* (*)(int));
EXPECT_SLOT(SEDiagGetInt32Array, int* (*)(int));
EXPECT_SLOT(SEDiagGetUInt32Array, unsigned int* (*)(int));
EXPECT_SLOT(SEDiagGetInt40Array, long long* (*)(int));
EXPECT_SLOT(SEDiagGetUInt40Array, unsigned long long* (*)(int));
EXPECT_SLOT(SEDiagGetFloat32Array, float* (*)(int));
EXPECT_SLOT(SEDiagGet, SEDiag_t* (*)(int));
EXPECT_SLOT(SEDiagGetEnumAsInt, int (*)(int));
EXPECT_SLOT(SEDiagGetEnumAsString, const char* (*)(int));
EXPECT_SLOT(SEDiagGetIndex, int (*)(const char*));
EXPECT_SLOT(SEDiagGetNumDiags, int (*)());
EXPECT_SLOT(SEDiagSetEnumAsInt, void (*)(int, int));
EXPECT_SLOT(ComputeRFir_FcnHook,
            void (**)(short*, short*, short*, unsigned short, unsigned short, unsigned short));
EXPECT_SLOT(AecConvolution_FcnHook, void (**)(short*, short*, int*, int, int, int, int));
EXPECT_SLOT(VCMul_i16_FcnHook, void (**)(short*, short*, short*, unsigned short));
EXPECT_SLOT(Interp1toNCore_FcnHook,
            void (**)(unsigned short, unsigned short, short**, short*, short*, unsigned short));
EXPECT_SLOT(InitDft_FcnHook, void (**)(DftObj_t*, unsigned short, unsigned short));
EXPECT_SLOT(FwdDft_FcnHook,
            void (**)(DftObj_t*, short*, unsigned short, unsigned short, short*, unsigned short));
EXPECT_SLOT(InvDft_FcnHook,
            unsigned short (**)(DftObj_t*, short*, unsigned short, unsigned short, short*, unsigned short));
EXPECT_SLOT(SEDiagGetType, SEDiagType_t (*)(int));
EXPECT_SLOT(SEDiagGetLen, int (*)(int));
EXPECT_SLOT(SEDiagGetHelp, const char* (*)(int));
EXPECT_SLOT(SEDiagGetRW, SEDiagRW_t (*)(int));
EXPECT_SLOT(SEDiagGetLevel, int (*)(int));
EXPECT_SLOT(SEDiagGetName, const char* (*)(int));
EXPECT_SLOT(g_has_beam_forming, bool);
EXPECT_SLOT(g_has_noise_tests, bool);

}  // namespace quill::media::se_wrapper
