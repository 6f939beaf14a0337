# The exports of the engine, grouped by whether a build may leave them out.

# In every build, under one name.
set(test_engine_mandatory
  MMIfSetAutoLocationSearch MMIfInit RcvIfProcessReceivePath MMIfSetReceivePathGainQ10
  MMIfGetCurrentLocation MMIfSetManualLocation MMIfProcessMicrophones MMIfGetVersionString
  MMIfGetAecBypass MMIfSetAecBypass
  SEDiagGetInt16 SEDiagGetUInt16 SEDiagGetInt32 SEDiagGetUInt32 SEDiagGetFloat32
  SEDiagSetInt16 SEDiagSetUInt16 SEDiagSetInt32 SEDiagSetUInt32 SEDiagSetFloat32
  SEDiagGetInt16Array SEDiagGetUInt16Array SEDiagGetInt32Array SEDiagGetUInt32Array
  SEDiagGetFloat32Array
  SEDiagGet SEDiagGetEnumAsInt SEDiagGetEnumAsString SEDiagGetIndex SEDiagGetNumDiags
  SEDiagSetEnumAsInt SEDiagGetType SEDiagGetLen SEDiagGetRW SEDiagGetName)

# In every build, under the first name or under the second.
set(test_engine_first_names
  SEDiagGetInt40 SEDiagGetUInt40 SEDiagSetInt40 SEDiagSetUInt40 SEDiagGetInt40Array
  SEDiagGetUInt40Array ComputeRFir AecConvolution VCMul_i16 Interp1toNCore)
set(test_engine_second_names
  SEDiagGetInt64 SEDiagGetUInt64 SEDiagSetInt64 SEDiagSetUInt64 SEDiagGetInt64Array
  SEDiagGetUInt64Array ComputeRFirFcnHook AecConvolutionFcnHook VCMul_i16_FcnHook
  Interp1toNCoreFcnHook)

# Optional, each by itself.
set(test_engine_optional
  MMIfGetNoiseReductionBypass MMIfSetNoiseReductionBypass SEDiagGetHelp SEDiagGetLevel)

# Optional, all of a group or none.
set(test_engine_direction
  MMIfLookInAllDirectionsIncludingRear MMIfLookForwardRejectRearNoise
  MMIfLookNarrowForwardRejectRearNoise MMIfLookInOneDirectionRejectRearNoise)
set(test_engine_noise_test
  MMIfStartNoiseTest MMIfGetNoiseTestResults MMIfNoiseTestIsRunning)
set(test_engine_dft_hook
  InitDftFcnHook FwdDftFcnHook InvDftFcnHook)

set(test_engine_groups
  ${test_engine_direction} ${test_engine_noise_test} ${test_engine_dft_hook})
set(test_engine_full
  ${test_engine_mandatory} ${test_engine_first_names} ${test_engine_optional} ${test_engine_groups})
