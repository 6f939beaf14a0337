// The engine interface table as one list: everything else about it is expanded from these rows, in this
// order, which is the order of resolution. Code that includes this file first defines
//
//     ENGINE_ROW(kind, variable, type, symbol names...)
//
// It is undefined at the end. Hosts include engine_table.h, which declares all of it. The kinds are those of
// EngineRowKind. A variable keeps the first name of its list, whichever of them the engine exports. Each row
// carries the thread on which a host may call the entry point (docs/threads.md).
//
// An entry point that returns a pointer may answer null. The wrapper takes a null name or label for the text
// "(null)", a null help or version for "", a null array for one without elements, a null record of a diagnostic
// for level 0 without help, and a null record of the noise test for no results. A host that calls the entry
// point itself has to expect null.

// clang-format off

// [setup][control] The engine looks for the talker by itself.
ENGINE_ROW(mandatory, MMIfSetAutoLocationSearch, void (*)(), "MMIfSetAutoLocationSearch")
// [setup] Brings the engine up; initSignalEssence calls it with 0. Not null: the engine is loaded.
ENGINE_ROW(mandatory, MMIfInit, void (*)(uint16_t), "MMIfInit")
// [audio] One far-end block, in: what was received, out: what is to be played.
ENGINE_ROW(mandatory, RcvIfProcessReceivePath, void (*)(const int16_t*, int16_t*),
           "RcvIfProcessReceivePath")
// [setup][control] Gain of the far-end path, Q10, 1024 = unity.
ENGINE_ROW(mandatory, MMIfSetReceivePathGainQ10, void (*)(int16_t), "MMIfSetReceivePathGainQ10")
// [control] out: the present look direction and its confidence.
ENGINE_ROW(mandatory, MMIfGetCurrentLocation, void (*)(uint16_t*, int16_t*), "MMIfGetCurrentLocation")
// [control] Fixes the look direction, with a confidence.
ENGINE_ROW(mandatory, MMIfSetManualLocation, void (*)(int32_t, int16_t), "MMIfSetManualLocation")
// [setup][control] Searches in all directions.
ENGINE_ROW(direction, MMIfLookInAllDirectionsIncludingRear_Optional, void (*)(),
           "MMIfLookInAllDirectionsIncludingRear")
// [control] Searches in front only.
ENGINE_ROW(direction, MMIfLookForwardRejectRearNoise_Optional, void (*)(float),
           "MMIfLookForwardRejectRearNoise")
// [control] Searches in a narrow sector in front only.
ENGINE_ROW(direction, MMIfLookNarrowForwardRejectRearNoise_Optional, void (*)(float),
           "MMIfLookNarrowForwardRejectRearNoise")
// [control] Looks in one direction only; the signature is the engine header's.
ENGINE_ROW(direction, MMIfLookInOneDirectionRejectRearNoise_Optional, void*,
           "MMIfLookInOneDirectionRejectRearNoise")
// [audio] One capture block; in: the centre microphone, the other microphones row after row; out: mono.
ENGINE_ROW(mandatory, MMIfProcessMicrophones, void (*)(int16_t*, int16_t*, int16_t*),
           "MMIfProcessMicrophones")
// [control] The version text, owned by the engine.
ENGINE_ROW(mandatory, MMIfGetVersionString, const char* (*)(), "MMIfGetVersionString")
// [control] Not 0: echo cancellation is bypassed.
ENGINE_ROW(mandatory, MMIfGetAecBypass, uint16_t (*)(), "MMIfGetAecBypass")
// [control] 1 bypasses echo cancellation, 0 engages it.
ENGINE_ROW(mandatory, MMIfSetAecBypass, void (*)(uint16_t), "MMIfSetAecBypass")
// [control] No arguments; the low 16 bits of the result are the flag. The signature is the engine header's.
ENGINE_ROW(optional, MMIfGetNoiseReductionBypass_Optional, void*, "MMIfGetNoiseReductionBypass")
// [control] 1 bypasses noise reduction, 0 engages it. The signature is the engine header's.
ENGINE_ROW(optional, MMIfSetNoiseReductionBypass_Optional, void*, "MMIfSetNoiseReductionBypass")
// [control] Starts the microphone noise test.
ENGINE_ROW(noise_test, MMIfStartNoiseTest_Optional, void (*)(), "MMIfStartNoiseTest")
// [control] The engine's own results record, valid as long as the engine; read it after the test has ended.
ENGINE_ROW(noise_test, MMIfGetNoiseTestResults_Optional, NoiseTestResults* (*)(),
           "MMIfGetNoiseTestResults")
// [control] Tells whether the test is still running; the signature is the engine header's.
ENGINE_ROW(noise_test, MMIfNoiseTestIsRunning_Optional, void*, "MMIfNoiseTestIsRunning")

// [control] The value of the diagnostic with an index from 0 to SEDiagGetNumDiags() - 1.
ENGINE_ROW(mandatory, SEDiagGetInt16, int16_t (*)(int32_t), "SEDiagGetInt16")
// [control] As SEDiagGetInt16.
ENGINE_ROW(mandatory, SEDiagGetUInt16, uint16_t (*)(int32_t), "SEDiagGetUInt16")
// [control] As SEDiagGetInt16.
ENGINE_ROW(mandatory, SEDiagGetInt32, int32_t (*)(int32_t), "SEDiagGetInt32")
// [control] As SEDiagGetInt16.
ENGINE_ROW(mandatory, SEDiagGetUInt32, uint32_t (*)(int32_t), "SEDiagGetUInt32")
// [control] As SEDiagGetInt16; a 40-bit quantity.
ENGINE_ROW(alternatives, SEDiagGetInt40, long long (*)(int32_t), "SEDiagGetInt40", "SEDiagGetInt64")
// [control] As SEDiagGetInt16; a 40-bit quantity.
ENGINE_ROW(alternatives, SEDiagGetUInt40, unsigned long long (*)(int32_t),
           "SEDiagGetUInt40", "SEDiagGetUInt64")
// [control] As SEDiagGetInt16.
ENGINE_ROW(mandatory, SEDiagGetFloat32, float (*)(int32_t), "SEDiagGetFloat32")

// [control] Gives the diagnostic with this index a new value.
ENGINE_ROW(mandatory, SEDiagSetInt16, void (*)(int32_t, int16_t), "SEDiagSetInt16")
// [control] As SEDiagSetInt16.
ENGINE_ROW(mandatory, SEDiagSetUInt16, void (*)(int32_t, uint16_t), "SEDiagSetUInt16")
// [control] As SEDiagSetInt16.
ENGINE_ROW(mandatory, SEDiagSetInt32, void (*)(int32_t, int32_t), "SEDiagSetInt32")
// [control] As SEDiagSetInt16.
ENGINE_ROW(mandatory, SEDiagSetUInt32, void (*)(int32_t, uint32_t), "SEDiagSetUInt32")
// [control] As SEDiagSetInt16; a 40-bit quantity.
ENGINE_ROW(alternatives, SEDiagSetInt40, void (*)(int32_t, long long), "SEDiagSetInt40", "SEDiagSetInt64")
// [control] As SEDiagSetInt16; a 40-bit quantity.
ENGINE_ROW(alternatives, SEDiagSetUInt40, void (*)(int32_t, unsigned long long),
           "SEDiagSetUInt40", "SEDiagSetUInt64")
// [control] As SEDiagSetInt16.
ENGINE_ROW(mandatory, SEDiagSetFloat32, void (*)(int32_t, float), "SEDiagSetFloat32")

// [control] The elements of an array diagnostic, SEDiagGetLen of them, owned by the engine.
ENGINE_ROW(mandatory, SEDiagGetInt16Array, int16_t* (*)(int32_t), "SEDiagGetInt16Array")
// [control] As SEDiagGetInt16Array.
ENGINE_ROW(mandatory, SEDiagGetUInt16Array, uint16_t* (*)(int32_t), "SEDiagGetUInt16Array")
// [control] As SEDiagGetInt16Array.
ENGINE_ROW(mandatory, SEDiagGetInt32Array, int32_t* (*)(int32_t), "SEDiagGetInt32Array")
// [control] As SEDiagGetInt16Array.
ENGINE_ROW(mandatory, SEDiagGetUInt32Array, uint32_t* (*)(int32_t), "SEDiagGetUInt32Array")
// [control] As SEDiagGetInt16Array; 40-bit quantities.
ENGINE_ROW(alternatives, SEDiagGetInt40Array, long long* (*)(int32_t),
           "SEDiagGetInt40Array", "SEDiagGetInt64Array")
// [control] As SEDiagGetInt16Array; 40-bit quantities.
ENGINE_ROW(alternatives, SEDiagGetUInt40Array, unsigned long long* (*)(int32_t),
           "SEDiagGetUInt40Array", "SEDiagGetUInt64Array")
// [control] As SEDiagGetInt16Array.
ENGINE_ROW(mandatory, SEDiagGetFloat32Array, float* (*)(int32_t), "SEDiagGetFloat32Array")

// [control] The engine's record of a diagnostic, owned and kept alive by the engine.
ENGINE_ROW(mandatory, SEDiagGet, SEDiag_t* (*)(int32_t), "SEDiagGet")
// [control] The value of an enumerated diagnostic.
ENGINE_ROW(mandatory, SEDiagGetEnumAsInt, int32_t (*)(int32_t), "SEDiagGetEnumAsInt")
// [control] The label of an enumerated diagnostic's value, owned by the engine.
ENGINE_ROW(mandatory, SEDiagGetEnumAsString, const char* (*)(int32_t), "SEDiagGetEnumAsString")
// [setup][control] The index of the diagnostic of this name. fails: a negative number, when it is unknown.
ENGINE_ROW(mandatory, SEDiagGetIndex, int32_t (*)(const char*), "SEDiagGetIndex")
// [control] The number of diagnostics.
ENGINE_ROW(mandatory, SEDiagGetNumDiags, int32_t (*)(), "SEDiagGetNumDiags")
// [control] As SEDiagSetInt16, for an enumerated diagnostic.
ENGINE_ROW(mandatory, SEDiagSetEnumAsInt, void (*)(int32_t, int32_t), "SEDiagSetEnumAsInt")

// [setup] The engine's variable through which it calls its FIR filter.
ENGINE_ROW(hook, ComputeRFir_FcnHook, ComputeRFirRoutine*, "ComputeRFir", "ComputeRFirFcnHook")
// [setup] The engine's variable through which it calls its echo canceller's convolution.
ENGINE_ROW(hook, AecConvolution_FcnHook, AecConvolutionRoutine*,
           "AecConvolution", "AecConvolutionFcnHook")
// [setup] The engine's variable through which it calls its complex multiplication.
ENGINE_ROW(hook, VCMul_i16_FcnHook, VCMulRoutine*, "VCMul_i16", "VCMul_i16_FcnHook")
// [setup] The engine's variable through which it calls its interpolation.
ENGINE_ROW(hook, Interp1toNCore_FcnHook, Interp1toNCoreRoutine*,
           "Interp1toNCore", "Interp1toNCoreFcnHook")
// [setup] The engine's variable through which it sets up a DFT object.
ENGINE_ROW(dft_hook, InitDft_FcnHook, InitDftRoutine*, "InitDftFcnHook")
// [setup] The engine's variable through which it calls its forward DFT.
ENGINE_ROW(dft_hook, FwdDft_FcnHook, FwdDftRoutine*, "FwdDftFcnHook")
// [setup] The engine's variable through which it calls its inverse DFT.
ENGINE_ROW(dft_hook, InvDft_FcnHook, InvDftRoutine*, "InvDftFcnHook")

// [setup][control] The value type of a diagnostic.
ENGINE_ROW(mandatory, SEDiagGetType, SEDiagType_t (*)(int32_t), "SEDiagGetType")
// [control] The number of elements; 1 or less is a single value.
ENGINE_ROW(mandatory, SEDiagGetLen, int32_t (*)(int32_t), "SEDiagGetLen")
// [control] The help text of a diagnostic, owned by the engine.
ENGINE_ROW(defaulted, SEDiagGetHelp, const char* (*)(int32_t), "SEDiagGetHelp")
// [control] The access bits of a diagnostic.
ENGINE_ROW(mandatory, SEDiagGetRW, SEDiagRW_t (*)(int32_t), "SEDiagGetRW")
// [control] The level of a diagnostic, 0 basic to 3 debug; other numbers may come.
ENGINE_ROW(defaulted, SEDiagGetLevel, int32_t (*)(int32_t), "SEDiagGetLevel")
// [control] The name of a diagnostic, owned by the engine.
ENGINE_ROW(mandatory, SEDiagGetName, const char* (*)(int32_t), "SEDiagGetName")

// clang-format on
#undef ENGINE_ROW
