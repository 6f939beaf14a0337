// The engine's own implementations of the routines that the wrapper replaces, for a test harness that runs
// one beside the other; the wrapper never calls them.
// Threads: written by initSignalEssenceOptimForTests, [setup]; [any] after that. Null before.
#pragma once

#include "webrtc_common/export.h"
#include "webrtc_common/se_wrapper/table/engine_types.h"

namespace quill::media::se_wrapper {

extern SE_WRAPPER_EXPORT Interp1toNCoreRoutine interp1toNCore_SE;
extern SE_WRAPPER_EXPORT AecConvolutionRoutine aecConvolution_SE;
extern SE_WRAPPER_EXPORT ComputeRFirRoutine computeRFir_SE;
extern SE_WRAPPER_EXPORT VCMulRoutine vcmul_i16_SE;

}  // namespace quill::media::se_wrapper
